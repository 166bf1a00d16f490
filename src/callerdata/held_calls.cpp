#include "callerdata/held_calls.h"

#include <algorithm>
#include <functional>
#include <numeric>
#include <span>

#include "base/text.h"
#include "callerdata/log_slices.h"

namespace lineweir {
namespace {

// What fits into a slice of a few milliseconds.

// Some fields of a call are of fixed length, so blanks behind a text mean nothing.
template <class Texts>
std::size_t hash_of(const Texts& texts, std::string& joined) {
  joined.clear();
  for (const std::string_view text : texts) {
    joined += trimmed_right(text);
    joined += '\n';
  }
  return std::hash<std::string_view>()(joined);
}

}  // namespace

void HeldCalls::begin(platform::Recordset& log) {
  log_ = &log;
  stage_ = Stage::Looking;
  rows_ = log.count();
  behind_.reset();
  calls_.clear();
}

int HeldCalls::percent() const {
  if (stage_ != Stage::Looking || rows_ <= 0) return 100;
  const auto looked_at = static_cast<std::int64_t>(calls_.size());
  return static_cast<int>(std::clamp<std::int64_t>(looked_at * 100 / rows_, 0, 100));
}

void HeldCalls::work() {
  if (stage_ == Stage::Looking) {
    std::vector<int> columns(log_->fields().size());
    std::iota(columns.begin(), columns.end(), 0);
    std::string joined;
    const int visited = log_->scan({false, behind_, log_rows_a_slice, columns},
                                   [&](platform::RowId row, auto values) {
                                     behind_ = row;
                                     calls_.push_back({hash_of(values, joined), row});
                                   });
    if (visited == log_rows_a_slice) return;
    stage_ = Stage::Sorting;
    sort_.start(std::move(calls_));
  } else if (stage_ == Stage::Sorting) {
    const auto before = [](const Call& a, const Call& b) {
      return a.hash != b.hash ? a.hash < b.hash : a.row < b.row;
    };
    if (!sort_.work(log_rows_sorted_a_slice, before)) return;
    calls_ = std::move(sort_.items());
    sort_.start({});
    stage_ = Stage::Done;
    put_back();
  }
}

bool HeldCalls::take(const std::vector<std::string>& texts) {
  std::string joined;
  const std::size_t hash = hash_of(texts, joined);
  const auto begin = std::ranges::lower_bound(calls_, hash, {}, &Call::hash);
  const auto end = std::ranges::upper_bound(calls_, hash, {}, &Call::hash);
  if (begin == end) return false;
  std::uint32_t& taken = taken_[static_cast<std::size_t>(begin - calls_.begin())];
  const auto first = begin + taken;
  const auto found =
      std::find_if(first, end, [&](const Call& call) { return same(call.row, texts); });
  if (found == end) return false;
  std::iter_swap(first, found);
  ++taken;
  return true;
}

void HeldCalls::put_back() { taken_.assign(calls_.size(), 0); }

bool HeldCalls::same(platform::RowId row, const std::vector<std::string>& texts) {
  const auto values = log_->row(row);
  return values && std::ranges::equal(*values, texts, {}, trimmed_right, trimmed_right);
}

void HeldCalls::forget() { *this = {}; }

}  // namespace lineweir

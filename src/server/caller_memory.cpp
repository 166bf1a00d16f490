#include "server/caller_memory.h"

#include <utility>

#include "base/iso_date.h"

namespace lineweir::server {
namespace {

constexpr std::size_t shown_digits = 4;

// The audit outlives what is known of callers, so that it doesn't hold their numbers.
std::string audited(const platform::FlaggedCaller& caller) {
  const std::string& key = caller.key;
  const std::string end = key.size() > shown_digits ? key.substr(key.size() - shown_digits) : key;
  std::string text = "..." + end + ", " + std::string(name_of(caller.flag));
  const bool has_end = caller.flag != CallerFlag::None && !caller.until.empty();
  if (has_end) text += " until " + caller.until;
  return text;
}

// In a store that somebody has written into: no console takes a last day that is none, and what is
// noted counts all the same.
platform::FlaggedCaller with_day_or_none(platform::FlaggedCaller caller) {
  if (!iso_date_of(caller.until)) caller.until.clear();
  return caller;
}

}  // namespace

void CallerMemory::take_over(const std::vector<platform::FlaggedCaller>& callers) {
  Flagged former;
  for (const platform::FlaggedCaller& caller : callers)
    former[caller.key] = with_day_or_none(caller);
  std::swap(former, flagged_);
  for (const auto& [key, caller] : former) {
    if (!flagged_.contains(key) && on_change) on_change(key);
  }
  for (const auto& [key, caller] : flagged_) {
    const auto known = former.find(key);
    const bool is_same = known != former.end() && known->second == caller;
    if (!is_same && on_change) on_change(key);
  }
}

void CallerMemory::take(const platform::FlaggedCaller& caller) { change(with_day_or_none(caller)); }

const platform::FlaggedCaller* CallerMemory::find(std::string_view key) const {
  const auto caller = flagged_.find(key);
  if (caller == flagged_.end() || has_passed(caller->second)) return nullptr;
  return &caller->second;
}

void CallerMemory::note(platform::FlaggedCaller caller) {
  caller.at = clock_.now();
  audit_.note(caller.by, "caller flagged", audited(caller));
  outbox_.put(caller);
  change(caller);
}

std::size_t CallerMemory::forget_passed() {
  std::vector<platform::FlaggedCaller> passed;
  for (const auto& [key, caller] : flagged_) {
    if (has_passed(caller)) passed.push_back(caller);
  }
  for (platform::FlaggedCaller& caller : passed) {
    caller.flag = CallerFlag::None;
    outbox_.put(caller);
    change(caller);
  }
  return passed.size();
}

// The last day itself still counts.
bool CallerMemory::has_passed(const platform::FlaggedCaller& caller) const {
  return !caller.until.empty() && caller.until < iso_date_text(clock_.local(clock_.now()));
}

void CallerMemory::change(const platform::FlaggedCaller& caller) {
  if (caller.flag == CallerFlag::None) {
    if (flagged_.erase(caller.key) == 0) return;
  } else {
    platform::FlaggedCaller& held = flagged_[caller.key];
    if (held == caller) return;
    held = caller;
  }
  if (on_change) on_change(caller.key);
}

}  // namespace lineweir::server

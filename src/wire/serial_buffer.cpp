#include "wire/serial_buffer.h"

#include "base/text.h"

#include <algorithm>

namespace lineweir {
namespace {

constexpr std::size_t longest_token = 3;

}  // namespace

void SerialBuffer::append(std::string_view characters) {
  const std::size_t former = text_.size();
  text_ += characters;
  // A token may have begun in the last characters that were there before.
  note_tokens(former - std::min(former, longest_token - 1));
}

void SerialBuffer::note_tokens(std::size_t from) {
  for (std::size_t i = from; i + 1 < text_.size(); ++i) {
    if (text_[i] != '0' || !is_digit(text_[i + 1])) continue;
    last_place_[static_cast<std::size_t>(text_[i + 1] - '0')] = i;
    if (text_[i + 1] == '1' && i + 2 < text_.size() && is_digit(text_[i + 2])) {
      last_place_[static_cast<std::size_t>(10 + text_[i + 2] - '0')] = i;
    }
  }
}

StatusScan SerialBuffer::scan(int line_count) const {
  StatusScan result;
  // Places count from 1 here, as the rule for what is consumed does.
  std::size_t last_end = 0;
  const std::size_t end = std::min(tokens, static_cast<std::size_t>(std::max(0, line_count)));
  for (std::size_t token = 0; token < end; ++token) {
    if (!last_place_[token] || *last_place_[token] == 0) continue;
    const std::size_t place = *last_place_[token] + 1;
    result.items.push_back({text_[place - 2], text_[place] - '0'});
    if (place > last_end) last_end = place + 2;
  }
  if (last_end > 0) result.consumed = last_end - 1;
  return result;
}

void SerialBuffer::drop(std::size_t count) {
  count = std::min(count, text_.size());
  text_.erase(0, count);
  for (auto& place : last_place_) {
    if (!place) continue;
    if (*place < count) {
      place.reset();
    } else {
      *place -= count;
    }
  }
}

void SerialBuffer::assign(std::string_view text) {
  text_ = text;
  last_place_ = {};
  note_tokens(0);
}

}  // namespace lineweir

#include "wire/caller_known.h"

#include <algorithm>
#include <array>
#include <charconv>

#include "base/iso_date.h"
#include "base/text.h"
#include "wire/server_packet_codec.h"

namespace lineweir {
namespace {

void append_field(std::string& buffer, std::string_view text) {
  std::string carried(text);
  // A control character would part the field, or end the frame.
  std::ranges::replace_if(
      carried, [](char c) { return code_of(c) < ' '; }, ' ');
  buffer += trimmed(carried);
}

template <std::size_t count>
std::string joined(const std::array<std::string, count>& fields) {
  std::string buffer;
  for (std::size_t i = 0; i < count; ++i) {
    if (i > 0) buffer += item_end;
    append_field(buffer, fields[i]);
  }
  return buffer;
}

// The first fields of the buffer; nothing where there are fewer.
template <std::size_t count>
std::optional<std::array<std::string, count>> parted(std::string_view buffer) {
  std::array<std::string, count> fields;
  for (std::size_t i = 0; i < count; ++i) {
    const std::size_t end = buffer.find(item_end);
    if (end == std::string_view::npos && i + 1 < count) return std::nullopt;
    fields[i] = trimmed(buffer.substr(0, end));
    buffer.remove_prefix(std::min(buffer.size(), end == std::string_view::npos ? end : end + 1));
  }
  return fields;
}

std::optional<int> count_of(std::string_view text) {
  int count = 0;
  const char* end = text.data() + text.size();
  const auto [rest, error] = std::from_chars(text.data(), end, count);
  if (error != std::errc{} || rest != end || count < 0) return std::nullopt;
  return count;
}

bool is_date_or_empty(std::string_view text) { return text.empty() || iso_date_of(text); }
bool is_minute_or_empty(std::string_view text) { return text.empty() || iso_minute_of(text); }

}  // namespace

std::string encode_caller_known(const CallerKnown& known) {
  return joined<9>({known.number, std::to_string(known.calls), std::to_string(known.on_air),
                    known.last_on_air, known.name, known.city, known.reason, known.until,
                    known.flagged_by});
}

std::optional<CallerKnown> decode_caller_known(std::uint8_t alt_info, std::string_view buffer) {
  const auto flag = caller_flag_of(alt_info);
  auto fields = parted<9>(buffer);
  if (!flag || !fields) return std::nullopt;
  auto& [number, calls_text, on_air_text, last_on_air, name, city, reason, until, flagged_by] =
      *fields;
  const auto calls = count_of(calls_text);
  const auto on_air = count_of(on_air_text);
  if (!calls || !on_air || !is_minute_or_empty(last_on_air) || !is_date_or_empty(until)) {
    return std::nullopt;
  }
  return CallerKnown{*flag, number, *calls, *on_air, last_on_air,
                     name,  city,   reason, until,   flagged_by};
}

std::string encode_caller_flagging(const CallerFlagging& flagging) {
  return joined<3>({flagging.number,
                    std::string(left_part(trimmed(flagging.reason), flag_reason_length)),
                    flagging.until});
}

std::optional<CallerFlagging> decode_caller_flagging(std::uint8_t alt_info,
                                                     std::string_view buffer) {
  const auto flag = caller_flag_of(alt_info);
  auto fields = parted<3>(buffer);
  if (!flag || !fields) return std::nullopt;
  auto& [number, reason, until] = *fields;
  if (number.empty() || reason.size() > flag_reason_length || !is_date_or_empty(until)) {
    return std::nullopt;
  }
  return CallerFlagging{*flag, number, reason, until};
}

}  // namespace lineweir

#include "wire/studio_texts.h"

#include "base/text.h"
#include "wire/server_packet_codec.h"

namespace lineweir {
namespace {

constexpr std::string_view exists = "True";
constexpr std::string_view is_missing = "False";
constexpr std::size_t longest_item_without_clock = 2;
constexpr std::string_view item_without_clock = "0";
constexpr std::size_t time_length = 11;

}  // namespace

std::optional<StudioParts> decode_studio_parts(std::string_view text) {
  if (text == no_studio_status) return std::nullopt;
  StudioParts studio;
  for (const std::string& item : decode_list(text)) {
    if (item == exists || item == is_missing) {
      studio.parts.push_back(item == exists);
    } else {
      studio.lines.push_back(leading_number(item) != 0);
    }
  }
  return studio;
}

std::string encode_studio_parts(const StudioParts& studio) {
  std::vector<std::string> items;
  for (const bool part : studio.parts) items.emplace_back(part ? exists : is_missing);
  for (std::size_t line = 0; line < studio.lines.size(); ++line) {
    items.push_back(std::to_string(studio.lines[line] ? line + 1 : 0));
  }
  return encode_list(items);
}

std::optional<CallTimes> decode_call_times(std::string_view text) {
  CallTimes times{decode_list(text), {}};
  if (times.began.empty()) return std::nullopt;
  times.server_now = std::move(times.began.back());
  times.began.pop_back();
  return times;
}

std::string encode_call_times(const CallTimes& times) {
  std::vector<std::string> items;
  for (const std::string& began : times.began) {
    items.push_back(clock_runs(began) ? began : std::string(item_without_clock));
  }
  items.push_back(times.server_now);
  return encode_list(items);
}

bool clock_runs(std::string_view began) { return began.size() > longest_item_without_clock; }

ServerTimeText split_server_time(std::string_view text) {
  const std::string_view time = right_part(text, time_length);
  return {trimmed(text.substr(0, text.size() - time.size())), trimmed(time)};
}

}  // namespace lineweir

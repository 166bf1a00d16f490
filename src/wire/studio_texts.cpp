#include "wire/studio_texts.h"

#include "base/text.h"
#include "wire/server_packet_codec.h"

namespace lineweir {
namespace {

constexpr std::string_view no_status = "ERROR";
constexpr std::string_view exists = "True";
constexpr std::string_view is_missing = "False";
constexpr std::size_t longest_item_without_clock = 2;
constexpr std::size_t time_length = 11;

}  // namespace

std::optional<StudioParts> decode_studio_parts(std::string_view text) {
  if (text == no_status) return std::nullopt;
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

std::optional<CallTimes> decode_call_times(std::string_view text) {
  CallTimes times{decode_list(text), {}};
  if (times.began.empty()) return std::nullopt;
  times.server_now = std::move(times.began.back());
  times.began.pop_back();
  return times;
}

bool clock_runs(std::string_view began) { return began.size() > longest_item_without_clock; }

ServerTimeText split_server_time(std::string_view text) {
  const std::string_view time = right_part(text, time_length);
  return {trimmed(text.substr(0, text.size() - time.size())), trimmed(time)};
}

}  // namespace lineweir

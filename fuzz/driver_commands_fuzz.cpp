// A driver that is given lines of any bytes. Each has one reply, of one line of printable ASCII, or
// none; nothing may crash, and nothing may run without end.
//
// The input is the lines as a script holds them. Each input has a workstation and a console of its
// own.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "driver/interpreter.h"

using namespace lineweir;

namespace {

// Letting time pass is what takes long, and adds nothing from line to line.
constexpr int most_advances = 8;
constexpr std::size_t most_digits_of_advance = 5;

bool is_printable(std::string_view text) {
  return std::ranges::all_of(text, [](char c) { return c >= ' ' && c <= '~'; });
}

bool is_reply(std::string_view line) {
  return line == "ok" || line.starts_with("= ") || line.starts_with("error ");
}

class Patience {
 public:
  bool allows(std::string_view line) {
    const std::size_t place = line.find("advance");
    if (place == std::string_view::npos) return true;
    const auto digits = std::ranges::count_if(line, [](char c) { return c >= '0' && c <= '9'; });
    const bool has_exponent = line.find_first_of("eE", place + 7) != std::string_view::npos;
    return !has_exponent && digits <= static_cast<std::ptrdiff_t>(most_digits_of_advance) &&
           ++advances_ <= most_advances;
  }

 private:
  int advances_ = 0;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  std::string_view rest(reinterpret_cast<const char*>(data), size);
  platform::MemoryFiles files;
  driver::Session session(files);
  driver::carry_out(session, "launch \"D\"");
  Patience time_left;
  while (!rest.empty()) {
    const std::size_t end = std::min(rest.find('\n'), rest.size());
    const std::string_view line = rest.substr(0, end);
    rest.remove_prefix(std::min(end + 1, rest.size()));
    if (!time_left.allows(line)) continue;
    const auto reply = driver::carry_out(session, line);
    if (reply && (!is_reply(reply->line) || !is_printable(reply->line))) std::abort();
  }
  return 0;
}

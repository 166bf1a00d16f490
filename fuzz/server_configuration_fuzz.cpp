// The server's configuration file: whatever it holds, it is taken or refused in one line.

#include <cstdint>
#include <cstdlib>
#include <sstream>
#include <string>
#include <string_view>

#include "serverd/configuration.h"
#include "serverd/configuration_summary.h"

using namespace lineweir::serverd;

namespace {

bool is_one_line(const std::string& text) {
  for (const char c : text) {
    if (static_cast<unsigned char>(c) < 0x20) return false;
  }
  return text.size() > std::string_view("server.toml:1: : expected ").size() && text.size() < 2000;
}

void check_taken(const Configuration& configuration) {
  const auto& server = configuration.server;
  if (configuration.listen.empty() || server.groups.empty()) std::abort();
  int last = 0;
  for (const auto& group : server.groups) {
    if (group.number <= last || group.number > 250) std::abort();
    last = group.number;
    if (group.lines != 10 && group.lines != 20) std::abort();
    if (group.line_names.size() > static_cast<std::size_t>(group.lines)) std::abort();
    if (!(group.calls_per_minute >= 0)) std::abort();
  }
  std::ostringstream text;
  describe(configuration, text);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  try {
    check_taken(read_configuration(text, "/etc/lineweir/server.toml"));
  } catch (const ConfigurationError& error) {
    if (!is_one_line(error.what())) std::abort();
  }
  return 0;
}

#include <doctest/doctest.h>
#include <signal.h>

#include <string>
#include <vector>

#include "serverd/started_server.h"

using namespace lineweir;
using lineweir::test::StartedServer;
using lineweir::test::write_configuration;

namespace {

// The keys that the lines of the log put off until the next start.
std::vector<std::string> later_keys(const std::string& log) {
  const std::string begin = "warning: what has changed in ";
  const std::string end = " waits for the next start\n";
  std::vector<std::string> keys;
  for (auto at = log.find(begin); at != std::string::npos; at = log.find(begin, at + 1)) {
    const auto key = at + begin.size();
    keys.push_back(log.substr(key, log.find(end, key) - key));
  }
  return keys;
}

}  // namespace

TEST_CASE("What only a new start can change is named, key by key, and nothing else is") {
  const std::string a_group = "[[group]]\nnumber = 1\n";
  const std::string a_port = "shutdown_seconds = 0\nlisten = \"127.0.0.1:0\"\n";
  struct Changed {
    std::string configuration;
    std::vector<std::string> keys;
    std::string of_group = {};
  };
  const std::vector<Changed> changes = {
      {"shutdown_seconds = 0\nlisten = \"127.0.0.1:1\"\n", {"listen"}},
      {a_port + "store = \"sqlite:other.db\"\n", {"store"}},
      {a_port + "store = \"postgresql://host/studio\"\n", {"store"}},
      {a_port + "store = \"postgresql://host/studio\"\nstandby = true\n", {"store", "standby"}},
      {a_port + "admin_socket = \"other.sock\"\n", {"admin_socket"}},
      {a_port + "metrics = \"127.0.0.1:0\"\n", {"metrics"}},
      {a_port + "plain_text_network = true\n", {"plain_text_network"}},
      {a_port + "character_set = \"windows-1250\"\n", {"character_set"}},
      {a_port + "remote_objects = \"session\"\n", {"remote_objects"}},
      {a_port + "[tls]\n", {"[tls]"}},
      {"shutdown_seconds = 1\nlisten = \"127.0.0.1:0\"\n", {}},
      {a_port, {"lines of group 1"}, "lines = 20\n"},
      {a_port,
       {"lines of group 1", "kind of group 1", "calls_per_minute of group 1"},
       "lines = 20\nkind = 4\ncalls_per_minute = 5\n"},
      {a_port, {"exchange of group 1"}, "exchange = \"box:/dev/ttyUSB0\"\n"},
      {a_port, {}, "[[group]]\nnumber = 2\nkind = 2\n"},
      {a_port, {"kind of group 2"}, "[[group]]\nnumber = 2\nkind = 3\n"},
      {a_port, {}, "[[group]]\nnumber = 2\nkind = 2\n"},
      {a_port, {}, "name = \"A\"\nmissing_lines = [3]\n"},
  };
  const TemporaryDirectory folder;
  StartedServer server(folder, a_port + a_group);
  REQUIRE(server.wait_until_ready() > 0);
  std::size_t from = 0;
  for (const Changed& changed : changes) {
    CAPTURE(changed.configuration);
    CAPTURE(changed.of_group);
    write_configuration(folder, changed.configuration + a_group + changed.of_group);
    server.signal(SIGHUP);
    const std::string& log = server.wait_for_log("read the configuration anew\n", from);
    CHECK(later_keys(log.substr(from)) == changed.keys);
    from = log.size();
  }
}

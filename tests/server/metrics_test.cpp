#include "server/metrics.h"

#include <doctest/doctest.h>

#include <map>
#include <regex>
#include <set>
#include <sstream>

#include "server/server_room.h"
#include "wire/server_packet_commands.h"

namespace lineweir::server {
namespace {

using namespace std::chrono_literals;

TEST_CASE("refusals are named in the order in which they are counted, each by its own name") {
  std::set<std::string_view> names;
  for (std::size_t i = 0; i < refusal_names.size(); ++i) {
    CHECK(static_cast<std::size_t>(refusal_names[i].refusal) == i);
    CHECK(name_of(refusal_names[i].refusal) == refusal_names[i].name);
    CHECK(names.insert(refusal_names[i].name).second);
  }
  CHECK(static_cast<std::size_t>(Refusal::TooMany) + 1 == refusal_names.size());
}

// By the rules of the text form: a help line and a type line stand in front of the values of a
// name, each value has a line of its own, and none comes twice.
TEST_CASE("the figures have the text form that Prometheus reads") {
  ServerRoom room;
  auto host = room.seat("host");
  room.wait(3s);
  std::istringstream text(room.server->metrics());
  const std::regex help("# HELP (lineweir_[a-z_]+) [A-Z0-9].*\\.");
  const std::regex type("# TYPE (lineweir_[a-z_]+) (gauge|counter)");
  const std::regex value(
      "(lineweir_[a-z_]+)(\\{[a-z]+=\"[^\"\\\\]*\"(,[a-z]+=\"[^\"\\\\]*\")*\\})? "
      "([0-9]+(\\.[0-9]+)?)");
  std::string name;
  std::string kind;
  std::set<std::string> names;
  std::set<std::string> values;
  for (std::string line; std::getline(text, line);) {
    CAPTURE(line);
    std::smatch found;
    if (std::regex_match(line, found, help)) {
      name = found[1];
      CHECK(names.insert(name).second);
      kind.clear();
    } else if (std::regex_match(line, found, type)) {
      CHECK(found[1] == name);
      kind = found[2];
      CHECK((kind == "counter") == name.ends_with("_total"));
    } else {
      REQUIRE(std::regex_match(line, found, value));
      CHECK(found[1] == name);
      CHECK(!kind.empty());
      CHECK(values.insert(line.substr(0, line.rfind(' '))).second);
    }
  }
  for (const auto& row : client_commands) {
    const std::string label = "{code=\"" + std::to_string(static_cast<int>(row.command)) +
                              "\",name=\"" + std::string(row.name) + "\"}";
    CHECK(values.contains("lineweir_frames_in_total" + label));
  }
  for (const auto& row : server_commands) {
    const std::string label = "{code=\"" + std::to_string(static_cast<int>(row.command)) +
                              "\",name=\"" + std::string(row.name) + "\"}";
    CHECK(values.contains("lineweir_frames_out_total" + label));
  }
  for (const char* told :
       {"seats{group=\"1\"}", "seats{group=\"2\"}", "seats_let_in", "connections",
        "connections_total", "logins_total", "seats_dropped_total{reason=\"slow\"}",
        "seats_dropped_total{reason=\"silent\"}", "line_changes_total", "calls",
        "exchange_reached{group=\"1\"}", "queued_bytes", "longest_queue_bytes", "logins_waiting",
        "loop_late_seconds", "loop_worst_late_seconds", "store_waiting", "store_lost_total",
        "store_reached"}) {
    CAPTURE(told);
    CHECK(values.contains(std::string("lineweir_") + told));
  }
  for (const RefusalName& row : refusal_names) {
    CHECK(values.contains("lineweir_refusals_total{reason=\"" + std::string(row.name) + "\"}"));
  }
}

TEST_CASE("the figures tell what there is and what has happened") {
  ServerRoom room;
  auto host = room.seat("host");
  auto other = room.seat("screener", 2);
  auto stranger = room.connect();
  room.exchange().arrive(1, {});
  room.exchange().arrive(2, {});
  host->word('N', 1, 0, 0);
  CHECK(room.figure("seats{group=\"1\"}") == 1);
  CHECK(room.figure("seats{group=\"2\"}") == 1);
  CHECK(room.figure("seats_let_in") == 2);
  CHECK(room.figure("connections") == 3);
  CHECK(room.figure("connections_total") == 3);
  CHECK(room.figure("logins_total") == 2);
  CHECK(room.figure("calls") == 2);
  CHECK(room.figure("line_changes_total") == 3);
  CHECK(room.figure("exchange_reached{group=\"1\"}") == 1);
  CHECK(room.figure("frames_in_total{code=\"4\",name=\"CmdLineCommand\"}") == 1);
  CHECK(room.figure("frames_out_total{code=\"134\",name=\"SrvLineStatus\"}") == 3);
  CHECK(room.figure("store_reached") == 1);
  room.store.fail(true);
  room.exchange().arrive(3, {});
  room.wait(3s);
  CHECK(room.figure("store_reached") == 0);
  CHECK(room.figure("store_waiting") > 0);
  room.store.fail(false);
  room.wait(3s);
  CHECK(room.figure("store_reached") == 1);
  CHECK(room.figure("store_waiting") == 0);
  host->hang_up();
  room.wait(1s);
  CHECK(room.figure("seats_let_in") == 1);
  CHECK(room.figure("connections") == 2);
  CHECK(room.figure("connections_total") == 3);
}

TEST_CASE("a server that has just begun is not late") {
  ServerRoom room;
  for (int i = 0; i < 20; ++i) {
    room.wait(250ms);
    CHECK(room.figure("loop_late_seconds") == 0);
    CHECK(room.figure("loop_worst_late_seconds") == 0);
  }
}

TEST_CASE("a loop that stood still tells how late it was") {
  ServerRoom room;
  room.wait(3s);
  CHECK(room.figure("loop_worst_late_seconds") == 0);
  room.server_loop.stop_for(2500ms);
  room.wait(1s);
  CHECK(room.figure("loop_late_seconds") == 2.5);
  room.wait(1s);
  CHECK(room.figure("loop_late_seconds") == 0);
  CHECK(room.figure("loop_worst_late_seconds") == 2.5);
}

}  // namespace
}  // namespace lineweir::server

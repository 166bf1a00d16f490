// Who logs in while the database is away.

#include <doctest/doctest.h>

#include <string>

#include "platform/postgres/postgres_cluster.h"
#include "serverd/console_at_server.h"

using namespace lineweir;
using lineweir::test::ConsoleAtServer;
using lineweir::test::PostgresCluster;
using lineweir::test::Studio;

namespace {

std::string configuration_on(const std::string& store) {
  return "listen = \"127.0.0.1:0\"\nstore = \"" + store +
         "\"\nadmin_socket = \"admin.sock\"\nshutdown_seconds = 0\n[[group]]\nnumber = 1\n";
}

// A database that is away, and back for the next test in any case.
class AwayDatabase {
 public:
  AwayDatabase() { PostgresCluster::the().kill(); }
  ~AwayDatabase() { come_back(); }
  AwayDatabase(const AwayDatabase&) = delete;
  AwayDatabase& operator=(const AwayDatabase&) = delete;

  void come_back() {
    if (!std::exchange(is_away_, false)) return;
    PostgresCluster::the().start();
  }

 private:
  bool is_away_ = true;
};

bool logs(Studio& studio, const std::string& text) {
  return studio.server.wait_for_log(text).find(text) != std::string::npos;
}

// A seat without a window tries for a moment.
void try_to_log_in(const Studio& studio, const std::string& user, const std::string& password) {
  const std::string command = "echo '" + password +
                              "' | timeout 2 " LINEWEIR_SEAT " --host 127.0.0.1 --port " +
                              std::to_string(studio.port) + " --user " + user + " > '" +
                              (studio.folder.path() / "seat").string() + "' 2>&1";
  static_cast<void>(std::system(command.c_str()));  // NOLINT(concurrency-mt-unsafe)
}

}  // namespace

TEST_CASE("users log in while the database is away, with the right password alone") {
  platform::QtEventLoop loop;
  Studio studio(configuration_on(PostgresCluster::the().new_database()));
  REQUIRE(studio.port > 0);
  const ConsoleAtServer seen_before(loop, studio, "host");
  AwayDatabase database;
  REQUIRE(logs(studio, "error: the store: "));

  ConsoleAtServer again(loop, studio, "host");
  // One who has never been here is known as well.
  ConsoleAtServer first_time(loop, studio, "screener");
  REQUIRE(studio.admin("call 1 3"));
  CHECK(again.shows(2, 'R'));
  CHECK(first_time.shows(2, 'R'));
  try_to_log_in(studio, "host", "off air");
  CHECK(logs(studio, "login refused: user \"host\" from 127.0.0.1 (wrong_password)"));

  database.come_back();
  CHECK(logs(studio, "the store is well again"));
  CHECK(studio.admin("audit list | grep -q 'login refused'"));
  CHECK(studio.admin("audit verify"));
}

// Two servers of one studio on one database: one serves, the other stands by.

#define DOCTEST_CONFIG_IMPLEMENT
#include <doctest/doctest.h>
#include <signal.h>
#include <unistd.h>

#include <QCoreApplication>
#include <chrono>
#include <iostream>
#include <memory>

#include "platform/postgres/postgres_cluster.h"
#include "serverd/console_at_server.h"
#include "serverd/two_machines.h"

using namespace lineweir;
using lineweir::test::ConsoleAtServer;
using lineweir::test::Machine;
using lineweir::test::Pair;
using lineweir::test::PostgresCluster;
using lineweir::test::StartedServer;

namespace {

struct PairWithConsole : Pair {
  // Long enough for a heartbeat to be known.
  void watch_for_a_while() {
    const auto limit = std::chrono::steady_clock::now() + std::chrono::seconds(6);
    console.wait([&] { return std::chrono::steady_clock::now() > limit; });
  }
  // With the studio's lines on its screen.
  bool console_is_at(const Machine& machine) {
    REQUIRE(machine.admin("call 1 7"));
    return console.wait([&] {
      MainForm& form = console.console.Lineweir;
      return form.linked_to.get().starts_with("127.0.0.1, port " + std::to_string(machine.port)) &&
             console.console.lines.StatusLetter(6) == 'R' && !form.ServerSilence.visible;
    });
  }

  platform::QtEventLoop loop;
  ConsoleAtServer console{loop, address(), 2001, "host"};
};

}  // namespace

TEST_CASE_FIXTURE(PairWithConsole,
                  "the one that stands by takes nobody in until the other is killed") {
  CHECK_FALSE(second->takes_connections());
  CHECK_FALSE(second->admin("seats"));
  REQUIRE(console_is_at(first));
  watch_for_a_while();
  first.server->signal(SIGKILL);
  REQUIRE(second->serves());
  CHECK(console_is_at(*second));
  CHECK_MESSAGE(second->admin("audit verify"), second->trouble());
  // The killed one stands by when it is started again.
  first.start();
  CHECK(first.stands_by());
  CHECK_FALSE(first.takes_connections());
}

TEST_CASE_FIXTURE(PairWithConsole, "one that was stopped and goes on finds that the other serves") {
  REQUIRE(console_is_at(first));
  watch_for_a_while();
  first.server->signal(SIGSTOP);
  REQUIRE(second->serves());
  CHECK(console_is_at(*second));
  first.server->signal(SIGCONT);
  CHECK(first.logs("can't prove any more that it leads"));
  CHECK_FALSE(first.takes_connections());
  CHECK(second->takes_connections());
  CHECK(second->admin("call 1 3"));
  // It takes over in turn.
  watch_for_a_while();
  second->server->signal(SIGKILL);
  CHECK(first.logs("leads its groups, in epoch 3"));
  CHECK(console_is_at(first));
}

TEST_CASE_FIXTURE(Pair, "one that ends in good order is followed, and what it knew is known") {
  REQUIRE(first.admin("message 'Doors open at nine'"));
  first.server->signal(SIGTERM);
  CHECK(first.server->wait_for_end() == 0);
  REQUIRE(second->serves());
  CHECK(second->admin("user list --json | grep -q host"));
  CHECK_MESSAGE(second->admin("audit verify"), second->trouble());
}

TEST_CASE_FIXTURE(Pair, "without the database neither serves, and with it one does again") {
  PostgresCluster::the().kill();
  CHECK(first.logs("can't prove any more that it leads"));
  CHECK_FALSE(first.takes_connections());
  CHECK_FALSE(second->takes_connections());
  PostgresCluster::the().start();
  const auto one_serves = [&] { return first.takes_connections() || second->takes_connections(); };
  for (int waits = 0; waits < 100 && !one_serves(); ++waits) ::usleep(100'000);
  CHECK(first.takes_connections() != second->takes_connections());
}

TEST_CASE_FIXTURE(Pair, "groups that a reload adds wait, as nobody has asked who leads them") {
  test::write_configuration(first.folder, first.configuration() + "[[group]]\nnumber = 2\n");
  first.server->signal(SIGHUP);
  CHECK(first.logs("group 2 waits for the next start"));
  CHECK(first.admin("lines 1"));
  CHECK_FALSE(first.admin("lines 2"));
  // One that was its own at the start is so still when it comes back into the file.
  std::string other = first.configuration();
  other.replace(other.find("number = 1"), 10, "number = 3");
  test::write_configuration(first.folder, other);
  first.server->signal(SIGHUP);
  CHECK(first.logs("group 3 waits for the next start"));
  CHECK_FALSE(first.admin("lines 1"));
  test::write_configuration(first.folder, first.configuration());
  first.server->signal(SIGHUP);
  for (int waits = 0; waits < 100 && !first.admin("lines 1"); ++waits) ::usleep(100'000);
  CHECK(first.admin("lines 1"));
  // One that stands by reads its file anew too.
  second->server->signal(SIGHUP);
  CHECK(second->logs("read the configuration anew"));
}

TEST_CASE_FIXTURE(Pair, "a leader whose tables have become newer serves until its session ends") {
  PostgresCluster::run(store, "UPDATE lineweir.store_version SET version = 99");
  CHECK(second->logs("was written by a newer version"));
  CHECK(first.admin("call 1 3"));
  CHECK(first.admin("hangup 1 3"));
  bool is_kept = false;
  for (int waits = 0; waits < 100 && !is_kept; ++waits) {
    is_kept = first.admin("calls --json | grep -q line");
    if (!is_kept) ::usleep(100'000);
  }
  CHECK(is_kept);
  PostgresCluster::run(store,
                       "SELECT pg_terminate_backend(pid) FROM pg_stat_activity WHERE pid <> "
                       "pg_backend_pid() AND datname = current_database()");
  CHECK(first.logs("can't prove any more that it leads"));
  CHECK(first.logs("was written by a newer version"));
  CHECK_FALSE(first.takes_connections());
}

TEST_CASE_FIXTURE(Pair, "servers of different groups lead beside each other where none is common") {
  const auto begin = [this](const TemporaryDirectory& folder, const std::string& groups) {
    return std::make_unique<StartedServer>(
        folder, "listen = \"127.0.0.1:0\"\nstore = \"" + store + "\"\nstandby = true\n" + groups);
  };
  const TemporaryDirectory folder_of_both;
  const TemporaryDirectory folder_of_other;
  const auto both = begin(folder_of_both, "[[group]]\nnumber = 1\n[[group]]\nnumber = 2\n");
  const auto other = begin(folder_of_other, "[[group]]\nnumber = 2\n");
  CHECK(other->wait_until_ready() > 0);
  first.server->signal(SIGKILL);
  // The one that wants both doesn't take one of them.
  CHECK(second->serves());
  both->signal(SIGTERM);
  CHECK(both->wait_for_end() == 0);
  CHECK(both->wait_for_output().empty());
}

TEST_CASE("a standby needs a database") {
  const TemporaryDirectory folder;
  StartedServer server(folder,
                       "store = \"sqlite:server.db\"\nstandby = true\n[[group]]\nnumber = 1\n");
  CHECK(server.wait_for_end() == 2);
  CHECK(server.wait_for_log().find("server.toml:2: standby: expected a database as the store") !=
        std::string::npos);
}

int main(int argc, char** argv) {
  constexpr int skipped = 77;
  if (!PostgresCluster::can_be_made()) {
    std::cout << "skipped: PostgreSQL's programs are not on this machine\n";
    return skipped;
  }
  const QCoreApplication application(argc, argv);
  return doctest::Context(argc, argv).run();
}

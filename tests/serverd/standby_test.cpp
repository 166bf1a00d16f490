// Two servers of one studio on one database: one serves, the other stands by.

#define DOCTEST_CONFIG_IMPLEMENT
#include <arpa/inet.h>
#include <doctest/doctest.h>
#include <netinet/in.h>
#include <signal.h>
#include <sys/socket.h>
#include <unistd.h>

#include <QCoreApplication>
#include <chrono>
#include <cstdlib>
#include <iostream>
#include <memory>

#include "platform/postgres/postgres_cluster.h"
#include "serverd/console_at_server.h"

using namespace lineweir;
using lineweir::test::ConsoleAtServer;
using lineweir::test::PostgresCluster;
using lineweir::test::StartedServer;
using lineweir::test::studio_password;

namespace {

// One that nobody listens on.
int free_port() {
  const int probe = ::socket(AF_INET, SOCK_STREAM, 0);
  sockaddr_in here{};
  here.sin_family = AF_INET;
  here.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  socklen_t size = sizeof here;
  REQUIRE(::bind(probe, reinterpret_cast<const sockaddr*>(&here), size) == 0);
  REQUIRE(::getsockname(probe, reinterpret_cast<sockaddr*>(&here), &size) == 0);
  ::close(probe);
  return ntohs(here.sin_port);
}

// One of the two, in a folder of its own.
struct Machine {
  explicit Machine(std::string shared_store) : store(std::move(shared_store)) { start(); }

  void start() {
    server = nullptr;
    server = std::make_unique<StartedServer>(folder, configuration());
  }
  std::string configuration() const {
    return "listen = \"127.0.0.1:" + std::to_string(port) + "\"\nstore = \"" + store +
           "\"\nstandby = true\nadmin_socket = \"admin.sock\"\nshutdown_seconds = 0\n"
           "[[group]]\nnumber = 1\nname = \"Studio\"\n";
  }
  bool serves() { return server->wait_until_ready() == port; }
  bool stands_by() { return logs("stands by, until no other"); }
  bool logs(const std::string& text) {
    return server->wait_for_log(text).find(text) != std::string::npos;
  }
  bool admin(const std::string& words) const {
    const std::string command = "cd '" + folder.path().string() + "' && echo '" + studio_password +
                                "' > password && " LINEWEIR_ADMIN " --socket admin.sock " + words +
                                " > answer 2> trouble";
    return std::system(command.c_str()) == 0;  // NOLINT(concurrency-mt-unsafe)
  }
  bool takes_connections() const {
    const int probe = ::socket(AF_INET, SOCK_STREAM, 0);
    sockaddr_in there{};
    there.sin_family = AF_INET;
    there.sin_port = htons(static_cast<std::uint16_t>(port));
    there.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    const bool taken =
        ::connect(probe, reinterpret_cast<const sockaddr*>(&there), sizeof there) == 0;
    ::close(probe);
    return taken;
  }

  TemporaryDirectory folder;
  std::string store;
  int port = free_port();
  std::unique_ptr<StartedServer> server;
};

struct Pair {
  Pair() {
    REQUIRE(first.serves());
    REQUIRE(first.admin("user add host --template host --password-stdin < password"));
    second = std::make_unique<Machine>(store);
    REQUIRE(second->stands_by());
  }

  std::string store = PostgresCluster::the().new_database();
  Machine first{store};
  std::unique_ptr<Machine> second;
};

struct PairWithConsole : Pair {
  std::string address() const {
    return "127.0.0.1:" + std::to_string(first.port) +
           ", 127.0.0.1:" + std::to_string(second->port);
  }
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
  CHECK(second->admin("audit verify"));
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
  CHECK(second->admin("audit verify"));
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
  // One that stands by reads its file anew too.
  second->server->signal(SIGHUP);
  CHECK(second->logs("read the configuration anew"));
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

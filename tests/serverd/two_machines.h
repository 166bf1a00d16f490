#pragma once

#include <arpa/inet.h>
#include <doctest/doctest.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cstdlib>
#include <fstream>
#include <iterator>
#include <memory>
#include <string>

#include "platform/postgres/postgres_cluster.h"
#include "serverd/console_at_server.h"

namespace lineweir::test {

// One that nobody listens on.
inline int free_port() {
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
  explicit Machine(std::string shared_store, int notice = 0)
      : store(std::move(shared_store)), shutdown_seconds(notice) {
    start();
  }

  void start() {
    server = nullptr;
    server = std::make_unique<StartedServer>(folder, configuration());
  }
  std::string configuration() const {
    return "listen = \"127.0.0.1:" + std::to_string(port) + "\"\nstore = \"" + store +
           "\"\nstandby = true\nadmin_socket = \"admin.sock\"\nshutdown_seconds = " +
           std::to_string(shutdown_seconds) + "\n[[group]]\nnumber = 1\nname = \"Studio\"\n";
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
  // What the administrator's tool said when it failed.
  std::string trouble() const {
    std::ifstream file(folder.path() / "trouble");
    return {std::istreambuf_iterator<char>(file), {}};
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
  // How long seats are told before it ends.
  int shutdown_seconds;
  int port = free_port();
  std::unique_ptr<StartedServer> server;
};

// One that serves, and one that stands by.
struct Pair {
  explicit Pair(int notice = 0) : first(store, notice) {
    REQUIRE(first.serves());
    REQUIRE(first.admin("user add host --template host --password-stdin < password"));
    second = std::make_unique<Machine>(store, notice);
    REQUIRE(second->stands_by());
  }

  // As consoles are given it.
  std::string address() const {
    return "127.0.0.1:" + std::to_string(first.port) +
           ", 127.0.0.1:" + std::to_string(second->port);
  }

  std::string store = PostgresCluster::the().new_database();
  Machine first;
  std::unique_ptr<Machine> second;
};

}  // namespace lineweir::test

// The simulated people at their seats, by the programs themselves and over a real socket.

#include <doctest/doctest.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <nlohmann/json.hpp>
#include <string>
#include <thread>

#include "serverd/started_server.h"

using namespace lineweir;
using namespace std::chrono_literals;
using lineweir::test::StartedServer;
using nlohmann::json;

namespace {

constexpr const char* configuration =
    "listen = \"127.0.0.1:0\"\nshutdown_seconds = 0\n[[group]]\nnumber = 1\n";
constexpr const char* password = "on air";

class Studio {
 public:
  Studio() : server(folder, configuration), port(server.wait_until_ready()) {
    REQUIRE(port > 0);
    for (const std::string user : {"host", "screener"}) {
      REQUIRE(admin("user add " + user + " --template " + user + " --password-stdin"));
    }
  }

  bool admin(const std::string& words) const {
    const std::string command = "cd '" + folder.path().string() + "' && echo '" + password +
                                "' | " LINEWEIR_ADMIN " --socket admin.sock " + words + " > answer";
    return std::system(command.c_str()) == 0;  // NOLINT(concurrency-mt-unsafe)
  }
  json lines() const {
    REQUIRE(admin("--json lines 1"));
    return json::parse(folder.content("answer"));
  }

  TemporaryDirectory folder;
  StartedServer server;
  int port;
};

class Person {
 public:
  Person(const Studio& studio, const std::string& work) : process_(::fork()) {
    if (process_ != 0) return;
    const std::string command = "echo '" + std::string(password) +
                                "' | exec " LINEWEIR_SEAT " --host 127.0.0.1 --port " +
                                std::to_string(studio.port) + " --user " + work + " --as " + work;
    ::setpgid(0, 0);
    ::execl("/bin/sh", "sh", "-c", command.c_str(), nullptr);
    ::_exit(1);
  }
  ~Person() {
    ::setpgid(process_, process_);
    ::kill(-process_, SIGKILL);
    ::waitpid(process_, nullptr, 0);
  }
  Person(const Person&) = delete;
  Person& operator=(const Person&) = delete;

 private:
  pid_t process_;
};

bool has_named_caller(const json& lines, const std::string& letter) {
  return std::any_of(lines.begin(), lines.end(), [&](const json& line) {
    return line.at("letter") == letter && !line.at("caller").get<std::string>().empty();
  });
}

}  // namespace

TEST_CASE("a seat with a wrong password says so and ends before it locks its user") {
  Studio studio;
  const std::string said = (studio.folder.path() / "said").string();
  const std::string command = "echo wrong | timeout 60 " LINEWEIR_SEAT " --host 127.0.0.1 --port " +
                              std::to_string(studio.port) + " --user host 2> '" + said + "'";
  const int status = std::system(command.c_str());  // NOLINT(concurrency-mt-unsafe)
  REQUIRE(WIFEXITED(status));
  CHECK(WEXITSTATUS(status) == 1);
  CHECK(studio.folder.content("said") ==
        "the server refuses the user \"host\" with this password\n");
  const std::string log = studio.server.wait_for_log("login refused");
  const std::string refused = "login refused";
  int tries = 0;
  for (auto at = log.find(refused); at != std::string::npos; at = log.find(refused, at + 1)) {
    ++tries;
  }
  CHECK(tries <= 2);
}

TEST_CASE("a screener and a host without windows put callers with names on air") {
  const Studio studio;
  for (int line = 1; line <= 5; ++line) {
    REQUIRE(studio.admin("call 1 " + std::to_string(line)));
  }
  const Person screener(studio, "screener");
  const Person host(studio, "host");
  const auto limit = std::chrono::steady_clock::now() + 60s;
  json lines;
  do {
    REQUIRE(std::chrono::steady_clock::now() < limit);
    std::this_thread::sleep_for(500ms);
    lines = studio.lines();
  } while (!has_named_caller(lines, "N") || !has_named_caller(lines, "C"));
  CHECK(studio.admin("audit verify"));
}

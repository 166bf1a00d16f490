// How long a studio is without a server when the one that leads is killed, stopped or cut off from
// the database that it shares with the one that stands by: takeover [ROUNDS of each].

#include <signal.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <iomanip>
#include <iostream>
#include <memory>
#include <stdexcept>

#include "cut_line.h"
#include "platform/postgres/postgres_cluster.h"
#include "serverd/started_server.h"

namespace lineweir::bench {
namespace {

using test::PostgresCluster;
using test::StartedServer;
using Clock = std::chrono::steady_clock;
using Milliseconds = std::chrono::milliseconds;

// A machine with a server, and its line to the database.
struct Machine {
  explicit Machine(const std::string& store)
      : line(socket.path(), PostgresCluster::the().folder()),
        configuration("listen = \"127.0.0.1:0\"\nstore = \"" + through(store) +
                      "\"\nstandby = true\nadmin_socket = \"admin.sock\"\nshutdown_seconds = 0\n"
                      "[[group]]\nnumber = 1\n") {
    start();
  }

  std::string through(std::string store) const {
    const std::string there = PostgresCluster::the().folder().string();
    return store.replace(store.find(there), there.size(), socket.path().string());
  }
  void start() {
    server = nullptr;
    said = 0;
    server = std::make_unique<StartedServer>(folder, configuration);
    server->wait_for_log("stands by, until no other");
  }
  // Behind what it has said so far.
  void leads() {
    constexpr const char* told = "leads its groups, in epoch ";
    const std::string& log = server->wait_for_log(told, said);
    if (log.find(told, said) == std::string::npos) {
      throw std::runtime_error("nobody took over: " + log.substr(said));
    }
    said = log.size();
  }

  TemporaryDirectory folder;
  TemporaryDirectory socket;
  CutLine line;
  std::string configuration;
  std::unique_ptr<StartedServer> server;
  // How much of its log has been looked at.
  std::size_t said = 0;
};

struct Fault {
  const char* name;
  void (*begin)(Machine& machine);
  void (*end)(Machine& machine);
};

constexpr Fault faults[] = {
    {"killed", [](Machine& machine) { machine.server->signal(SIGKILL); },
     [](Machine& machine) { machine.start(); }},
    {"stopped", [](Machine& machine) { machine.server->signal(SIGSTOP); },
     [](Machine& machine) { machine.server->signal(SIGCONT); }},
    {"cut off",
     [](Machine& machine) { machine.line.carries_there = machine.line.carries_back = false; },
     [](Machine& machine) { machine.line.carries_there = machine.line.carries_back = true; }},
    {"not heard", [](Machine& machine) { machine.line.carries_there = false; },
     [](Machine& machine) { machine.line.carries_there = true; }},
    {"not hearing", [](Machine& machine) { machine.line.carries_back = false; },
     [](Machine& machine) { machine.line.carries_back = true; }},
};

void print(const char* name, std::vector<Milliseconds> took) {
  std::ranges::sort(took);
  const auto at = [&](double part) {
    return took[static_cast<std::size_t>(part * static_cast<double>(took.size() - 1))].count();
  };
  std::cout << std::left << std::setw(12) << name << std::right << std::setw(7) << took.size()
            << std::setw(9) << at(0) << std::setw(9) << at(0.5) << std::setw(9) << at(0.99)
            << std::setw(9) << at(1) << std::endl;
}

void measure(int rounds) {
  const std::string store = PostgresCluster::the().new_database();
  int leader = 0;
  Machine first(store);
  first.leads();
  Machine second(store);
  Machine* const machines[] = {&first, &second};
  std::cout << "takeover, ms  rounds    least   median      p99     most\n";
  for (const Fault& fault : faults) {
    std::vector<Milliseconds> took;
    for (int round = 0; round < rounds; ++round) {
      // The proofs come each quarter of a second; so all moments between two are met.
      std::this_thread::sleep_for(Milliseconds(300 + round * 37 % 250));
      Machine& former = *machines[leader];
      leader = 1 - leader;
      const auto begin = Clock::now();
      fault.begin(former);
      machines[leader]->leads();
      took.push_back(std::chrono::duration_cast<Milliseconds>(Clock::now() - begin));
      fault.end(former);
    }
    print(fault.name, std::move(took));
  }
}

}  // namespace
}  // namespace lineweir::bench

int main(int argc, char** argv) {
  constexpr int usual_rounds = 100;
  try {
    lineweir::bench::measure(argc > 1 ? std::atoi(argv[1]) : usual_rounds);
  } catch (const std::exception& error) {
    std::cerr << error.what() << '\n';
    return 1;
  }
}

// Two servers get a new program one after the other, while ten seats work.

#include <doctest/doctest.h>
#include <signal.h>

#include <algorithm>
#include <chrono>
#include <memory>
#include <vector>

#include "serverd/two_machines.h"

using namespace lineweir;
using lineweir::test::ConsoleAtServer;
using lineweir::test::Machine;
using lineweir::test::Pair;

namespace {

using Clock = std::chrono::steady_clock;

constexpr int seat_count = 10;
// As a configuration has it that says nothing of it.
constexpr int usual_notice = 1;
constexpr std::chrono::seconds longest_without_server{5};

struct StudioOfTen : Pair {
  StudioOfTen() : Pair(usual_notice) {
    for (int seat = 0; seat < seat_count; ++seat) {
      seats.push_back(std::make_unique<ConsoleAtServer>(loop, address(), 2001, "host"));
    }
    // Long enough for a heartbeat to be known.
    go_on_for(std::chrono::seconds(6));
  }

  template <class Condition>
  bool all(Condition condition) {
    return std::ranges::all_of(seats, [&](const auto& seat) { return condition(*seat); });
  }
  static bool has_server(ConsoleAtServer& seat) {
    return seat.console.Lineweir.Shape1.fill_color == color_green &&
           !seat.console.Lineweir.ServerSilence.visible;
  }
  static bool is_at(ConsoleAtServer& seat, const Machine& machine) {
    return has_server(seat) && seat.console.Lineweir.linked_to.get().starts_with(
                                   "127.0.0.1, port " + std::to_string(machine.port));
  }
  // Whether no seat is without a server meanwhile.
  bool go_on_for(std::chrono::seconds time) {
    const auto limit = Clock::now() + time;
    bool served = true;
    seats.front()->wait([&] {
      served = served && all(has_server);
      return Clock::now() > limit;
    });
    return served;
  }
  // A line rings, which all see, and whether none of the others is taken for busy.
  bool all_see_a_call_at(const Machine& machine, int line) {
    REQUIRE(machine.admin("call 1 " + std::to_string(line + 1)));
    return seats.front()->wait([&] {
      return all([&](ConsoleAtServer& seat) {
        for (int other = 0; other < 10; ++other) {
          const char letter = seat.console.lines.StatusLetter(other);
          if ((letter == 'R') != (other == line)) return false;
        }
        return is_at(seat, machine);
      });
    });
  }
  // The machine's server is ended, and begins again with another program.
  template <class End>
  static bool comes_back_to_stand_by(Machine& machine, End end) {
    end(machine);
    CHECK(machine.server->wait_for_end() == 0);
    machine.start();
    return machine.stands_by();
  }
  // From the moment in which the first seat has no server to the one in which all have.
  std::chrono::milliseconds time_without_server(const Machine& next) {
    REQUIRE(seats.front()->wait([&] { return !all(has_server); }));
    const auto began = Clock::now();
    REQUIRE(seats.front()->wait(
        [&] { return all([&](ConsoleAtServer& seat) { return is_at(seat, next); }); }));
    return std::chrono::duration_cast<std::chrono::milliseconds>(Clock::now() - began);
  }

  platform::QtEventLoop loop;
  std::vector<std::unique_ptr<ConsoleAtServer>> seats;
};

}  // namespace

TEST_CASE_FIXTURE(StudioOfTen,
                  "two servers are upgraded under ten seats, and nobody presses a key") {
  REQUIRE(all_see_a_call_at(first, 2));
  // No seat hears of the one that stands by.
  CHECK(comes_back_to_stand_by(*second, [](Machine& ended) { ended.server->signal(SIGTERM); }));
  CHECK(go_on_for(std::chrono::seconds(1)));

  const auto end_leader = [&](Machine& leader, Machine& next, const auto& end) {
    end(leader);
    const auto without = time_without_server(next);
    MESSAGE("ten seats were without a server for ", without.count(), " ms");
    CHECK(without < longest_without_server);
    CHECK(comes_back_to_stand_by(leader, [](Machine&) {}));
    CHECK(go_on_for(std::chrono::seconds(6)));
  };
  end_leader(first, *second, [](Machine& leader) { leader.server->signal(SIGTERM); });
  CHECK(all_see_a_call_at(*second, 6));
  end_leader(*second, first,
             [](Machine& leader) { REQUIRE(leader.admin("shutdown --seconds 7")); });
  CHECK(all_see_a_call_at(first, 4));
  for (const auto& seat : seats) CHECK_FALSE(seat->console.MyMsgbox.visible);
  CHECK(first.admin("audit verify"));
}

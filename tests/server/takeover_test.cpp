#include <doctest/doctest.h>

#include "server/call_history.h"
#include "server/group_desk.h"
#include "server/server_room.h"
#include "server/still_true.h"
#include "wire/server_packet_codec.h"

namespace lineweir::server {
namespace {

using namespace std::chrono_literals;
using platform::CallRecord;
using platform::Moment;

CallRecord stored_call(int line, std::vector<platform::CallStep> steps) {
  CallRecord call;
  call.id = line + 1;
  call.group = 1;
  call.line = line;
  call.began = steps.front().at;
  call.steps = std::move(steps);
  return call;
}

}  // namespace

TEST_SUITE("server/takeover") {
  TEST_CASE("the steps of a call tell who works it, since when, and when its clock began") {
    const CallRecord call = stored_call(3, {{1s, "", "ring"},
                                            {2s, "anna", "answer"},
                                            {3s, "anna", "data"},
                                            {4s, "bob", "air"},
                                            {5s, "bob", "lock"},
                                            {6s, "", "air"}});
    const CallHistory history = history_of(call, 1);
    CHECK(history.action == "air");
    CHECK(history.since == Moment{6s});
    CHECK(history.clock == Moment{4s});
    CHECK(history.worked_by == "bob");
    CHECK(history.last_by.empty());
    CHECK(clock_after(history, 'N', 1, Moment{9s}) == Moment{4s});
    CHECK(clock_after(history, 'H', 1, Moment{9s}) == Moment{9s});
    CHECK(clock_after(history, 'P', 1, Moment{9s}) == Moment{4s});
  }

  TEST_CASE("a server that takes over knows of a call what the one before knew") {
    ServerRoom room;
    const auto host = room.seat("host");
    room.exchange().arrive(3, "555 0100");
    room.wait(5s);
    host->word('P', 3);
    room.wait(10s);
    const auto times = [](FrameConsole& console) {
      console.take();
      console.send(console.packet(ClientCommand::CmdRequestTimes));
      return console.take_last(ServerCommand::SrvTimes).Buffer.substr(0, 14);
    };
    const std::string before = times(*host);
    const std::size_t steps = room.store.content().calls.begin()->second.steps.size();
    room.crash();
    room.wait(2s);
    room.start();
    const auto again = room.seat("host");
    CHECK(times(*again) == before);
    room.wait(1s);
    CHECK(room.store.content().calls.begin()->second.steps.size() == steps);

    SUBCASE("and his caller waits at the handset for who took him") {
      room.wait(30s);
      again->send(again->packet(ClientCommand::CmdTimeRequest));
      room.wait(30s);
      CHECK(room.exchange().letter(3) == 'P');
    }
    SUBCASE("whose callers go on hold where the seat vanishes then") {
      again->hang_up();
      room.wait(60s);
      CHECK(room.exchange().letter(3) == 'H');
    }
  }

  TEST_CASE("a caller at a handset goes on hold where nobody comes back for him") {
    ServerRoom room;
    {
      const auto host = room.seat("host");
      for (const int line : {0, 9}) {
        room.exchange().arrive(line, {});
        host->word('P', line, line == 0 ? 0 : 1);
      }
      room.wait(1s);
      room.crash();
    }
    room.start();
    const auto other = room.seat("screener");
    room.wait(30s);
    CHECK(room.exchange().letter(0) == 'P');
    CHECK(room.exchange().letter(9) == 'O');
    room.wait(10s);
    for (const int line : {0, 9}) CHECK(room.exchange().letter(line) == 'H');
  }

  TEST_CASE("a caller whom another seat makes ready meanwhile stays so") {
    ServerRoom room;
    {
      const auto host = room.seat("host");
      for (const int line : {3, 4}) room.exchange().arrive(line, {});
      host->word('P', 3);
      host->word('N', 4);
      room.wait(1s);
      room.crash();
    }
    room.start();
    const auto other = room.seat("screener", 1, 1);
    other->word('S', 3);
    CHECK(room.exchange().letter(3) == 'S');
    for (int i = 0; i < 6; ++i) {
      room.wait(10s);
      other->send(other->packet(ClientCommand::CmdTimeRequest));
    }
    CHECK(room.exchange().letter(3) == 'S');
    // Nor is anybody put on hold who was on air before.
    CHECK(room.exchange().letter(4) == 'N');
  }

  TEST_CASE("the number that an exchange told is known behind a restart too") {
    ServerRoom room;
    room.exchange().arrive(3, "5550100");
    room.wait(1s);
    room.crash();
    room.start();
    CHECK(room.seat("host")->take(ServerCommand::SrvCallerData).at(3).Buffer.find("5550100") !=
          std::string::npos);
  }

  TEST_CASE("the next call who rang when he was chosen still is it") {
    ServerRoom room;
    const auto host = room.seat("host");
    room.exchange().arrive(3, {});
    room.wait(5s);
    host->send(host->packet(ClientCommand::CmdSetNextCall, 3));
    room.wait(1s);
    room.crash();
    room.start();
    const auto again = room.connect();
    again->log_in("host", host_password);
    again->join(1);
    CHECK(again->take_last(ServerCommand::SrvNextCall).LineNo == 3);
  }

  TEST_CASE(
      "a choice that consoles have given up, as the exchange hadn't answered, is told again") {
    const platform::GroupMemory memory{1, 3, {}, {}};
    PartsDesk desk;
    desk.calls.remember({stored_call(3, {{1s, "", "ring"}})});
    auto made = std::make_unique<ManualExchange>(10);
    ManualExchange& exchange = *made;
    exchange.reached = false;
    Group group(desk.context, {}, std::move(made), &memory);
    NotingSeat seat(1, "anna");
    group.join(seat);
    CHECK(group.next_call().line() == 3);

    SUBCASE("when the line proves to be as it was") {
      exchange.reached = true;
      exchange.report(3, 'R');
      group.letters_known();
      CHECK(group.next_call().line() == 3);
      REQUIRE(seat.told_of(ServerCommand::SrvNextCall).size() == 1);
      CHECK(seat.told_of(ServerCommand::SrvNextCall)[0].LineNo == 3);
    }
    SUBCASE("once, whatever becomes of the line then") {
      exchange.reached = true;
      exchange.report(3, 'R');
      exchange.report(3, 'H');
      exchange.report(3, 'S');
      CHECK(seat.told_of(ServerCommand::SrvNextCall).size() == 1);
    }
    SUBCASE("unless the line proves to be free") {
      exchange.reached = true;
      group.letters_known();
      desk.loop.advance(1s);
      CHECK(desk.store.content().groups.at(1).next_call == -1);
      CHECK(group.next_call().line() == -1);
      CHECK(desk.ended_calls().size() == 1);
    }
    SUBCASE("unless he has gone on air") {
      exchange.report(3, 'N');
      CHECK(group.next_call().line() == -1);
    }
  }

  TEST_CASE("a choice whose caller the server has seen itself is told once") {
    const platform::GroupMemory memory{1, 3, {}, {}};
    PartsDesk desk;
    desk.calls.remember({stored_call(3, {{1s, "", "ring"}, {2s, "anna", "ready"}})});
    auto made = std::make_unique<ManualExchange>(10);
    ManualExchange& exchange = *made;
    exchange.letters[3] = 'S';
    Group group(desk.context, {}, std::move(made), &memory);
    NotingSeat seat(1, "anna");
    group.join(seat);
    seat.told.clear();
    exchange.report(3, 'H');
    CHECK(group.next_call().line() == 3);
    CHECK(seat.told_of(ServerCommand::SrvNextCall).empty());
  }

  TEST_CASE("a choice whose caller has gone while no server was there is forgotten in the store") {
    const std::string message = encode_text_message({.text = "host> Guest at ten"});
    const platform::GroupMemory memory{1, 3, message, {}};
    PartsDesk desk;
    desk.calls.remember({stored_call(3, {{1s, "", "ring"}})});
    Group group(desk.context, {}, std::make_unique<ManualExchange>(10), &memory);
    CHECK(group.next_call().line() == -1);
    desk.loop.advance(1s);
    CHECK(desk.store.content().groups.at(1).next_call == -1);
    CHECK(desk.store.content().groups.at(1).message == message);
  }

  TEST_CASE("the letter that a call's line had last is told by its last step on the line") {
    const auto letter = [](std::vector<platform::CallStep> steps, int kind) {
      return last_letter(stored_call(3, std::move(steps)), kind);
    };
    CHECK(letter({{1s, "", "ring"}, {2s, "anna", "ready"}, {3s, "anna", "data"}}, 1) == 'S');
    CHECK(letter({{1s, "", "ring"}, {2s, "", "other"}}, 2) == 'E');
    CHECK(letter({{1s, "", "ring"}, {2s, "", "answer"}}, 1) == 'P');
    CHECK(letter({{1s, "", "ring"}, {2s, "", "answer"}}, 4) == '\x80');
    CHECK(letter({{1s, "", "what nobody knows"}}, 1) == std::nullopt);
    // Other equipment that has a caller doesn't end the clock of one who comes back.
    const CallHistory history =
        history_of(stored_call(3, {{1s, "", "ring"}, {2s, "", "other"}, {3s, "anna", "data"}}), 2);
    CHECK(history.action == "other");
    CHECK(history.clock == Moment{1s});
    CHECK(history.worked_by.empty());
    const CallRecord taken = stored_call(3, {{1s, "", "ring"}, {2s, "", "other"}});
    CHECK(history_of(taken, 1).clock == Moment{0});
  }

  TEST_CASE("a call that is taken over goes on with its steps, and stands since its last one") {
    PartsDesk desk;
    desk.calls.remember({stored_call(3, {{1s, "", "ring"}})});
    auto made = std::make_unique<ManualExchange>(10);
    ManualExchange& exchange = *made;
    exchange.letters[3] = 'R';
    Group group(desk.context, {}, std::move(made), nullptr);
    CHECK(group.lines().line(3).since == Moment{1s});
    CHECK(group.lines().line(3).clock == Moment{1s});
    exchange.report(3, 'N');
    exchange.report(3, 'H');
    REQUIRE(desk.calls.find(1, 3) != nullptr);
    CHECK(desk.calls.find(1, 3)->steps.size() == 3);
    CHECK(group.lines().line(3).since == desk.clock.now());
  }

  TEST_CASE("a caller at a numbered telephone is claimed by who comes back to that one") {
    for (const int console : {5, 4}) {
      PartsDesk desk;
      desk.calls.remember({stored_call(3, {{1s, "", "ring"}, {2s, "anna", "answer"}})});
      GroupOptions options;
      options.kind = 4;
      auto made = std::make_unique<ManualExchange>(10);
      ManualExchange& exchange = *made;
      exchange.letters[3] = '\x85';
      Group group(desk.context, options, std::move(made), nullptr);
      NotingSeat anna(1, "anna");
      anna.console = console;
      group.lines().claim_handset(anna);
      desk.loop.advance(GroupLines::waited_for);
      group.lines().hold_unclaimed();
      CHECK(exchange.words.empty() == (console == 5));
    }
  }

  TEST_CASE("who takes over asks once for a caller at a handset that nobody claims") {
    PartsDesk desk;
    desk.calls.remember({stored_call(3, {{1s, "", "ring"}, {2s, "anna", "answer"}})});
    auto made = std::make_unique<ManualExchange>(10);
    ManualExchange& exchange = *made;
    exchange.letters[3] = 'P';
    Group group(desk.context, {}, std::move(made), nullptr);
    desk.loop.advance(GroupLines::waited_for - 1ms);
    group.lines().hold_unclaimed();
    CHECK(exchange.words.empty());
    desk.loop.advance(1ms);
    for (int i = 0; i < 3; ++i) group.lines().hold_unclaimed();
    CHECK(exchange.words == std::vector<std::string>{"H03"});
  }

  TEST_CASE(
      "while the exchange can't be asked the lines stand as they did last, and all are told") {
    PartsDesk desk;
    desk.calls.remember({stored_call(3, {{1s, "", "ring"}, {2s, "anna", "air"}}),
                         stored_call(5, {{1s, "", "ring"}}), stored_call(0, {{1s, "", "hold"}})});
    auto made = std::make_unique<ManualExchange>(10);
    ManualExchange& exchange = *made;
    exchange.reached = false;
    Group group(desk.context, {}, std::move(made), nullptr);
    group.lines().show_last_known();
    CHECK(group.lines().line(3).letter == 'N');
    CHECK(group.lines().line(3).worked_by == "anna");
    CHECK(group.lines().line(5).letter == 'R');
    CHECK(group.lines().line(0).letter == 'H');
    CHECK(group.lines().line(1).letter == 'F');
    NotingSeat seat(1, "anna");
    group.join(seat);
    CHECK(seat.sentences == std::vector<std::string>{group.exchange_is_away()});

    // One call has gone on, the other one has ended meanwhile.
    exchange.reached = true;
    exchange.report(3, 'N');
    group.letters_known();
    CHECK(group.lines().line(3).letter == 'N');
    CHECK(group.lines().line(5).letter == 'F');
    CHECK(group.lines().line(0).letter == 'F');
    CHECK(desk.ended_calls().size() == 2);
    NotingSeat late(2, "bob");
    group.join(late);
    CHECK(late.sentences.empty());
  }

  TEST_CASE("no step of a call comes before the last one, whatever the next server's clock says") {
    PartsDesk desk;
    desk.calls.begin(1, 3, {});
    desk.calls.step(1, 3, 'R', {});
    desk.clock.move(-1h);
    desk.calls.step(1, 3, 'P', "anna");
    desk.calls.end(1, 3, "anna");
    const auto ended = desk.ended_calls();
    REQUIRE(ended.size() == 1);
    CHECK(ended[0].ended == ended[0].began);
    CHECK(ended[0].answered == ended[0].began);
  }

  TEST_CASE("of a journal behind the lead of others, a call that the store knows is theirs") {
    CallRecord ours = stored_call(3, {{1s, "", "ring"}, {2s, "", "hang up"}});
    ours.ended = Moment{2s};
    const platform::StoreJournal::Left left{4, {ours}};
    CHECK(still_true(left, 6, {ours.id}).empty());
    CHECK(still_true(left, 6).size() == 1);
    CHECK(still_true(left, 5, {ours.id}).size() == 1);

    // Unless they have only found that it was over.
    CallRecord closed = stored_call(3, {{1s, "", "ring"}, {9s, "", ended_unheard}});
    CHECK(was_only_closed(closed, ours));
    closed.steps.insert(closed.steps.begin() + 1, {5s, "anna", "answer"});
    CHECK_FALSE(was_only_closed(closed, ours));
    CHECK_FALSE(was_only_closed(ours, ours));
  }
}

}  // namespace lineweir::server

// What a seat is told when it comes into a group, and what it may say there.

#include <doctest/doctest.h>

#include <algorithm>

#include "base/time_text.h"
#include "server/server_room.h"
#include "wire/rights_layout.h"
#include "wire/studio_texts.h"

namespace lineweir::server {
namespace {

using namespace std::chrono_literals;
using enum ClientCommand;
using enum ServerCommand;

double refused(const ServerRoom& room, const std::string& reason) {
  return room.figure("refusals_total{reason=\"" + reason + "\"}");
}

ServerPacket with_alt_info(ServerPacket packet, int alt_info) {
  packet.AltInfo = field_byte(alt_info);
  return packet;
}

}  // namespace

TEST_SUITE("server/registration") {
  TEST_CASE("a seat is told which groups are open to its user") {
    ServerRoom room;
    auto only2 = room.seat("only2", 2);
    CHECK(only2->take_last(SrvAllowedGroups).Buffer == "Studio 2\3");
    auto host = room.seat("host");
    CHECK(host->take_last(SrvAllowedGroups).Buffer == "Studio 1\3Studio 2\3");
  }

  TEST_CASE("a seat is told of no group that is closed to its user, wherever it stands") {
    ServerRoom room;
    platform::Account guest = room.store.content().accounts.at("host");
    guest.name = "only1";
    guest.rights = {{1, rights_of(RightsTemplate::Host)}};
    room.crash();
    room.store.content().apply(guest);
    room.start();
    CHECK(room.seat("only1")->take_last(SrvAllowedGroups).Buffer == "Studio 1\3");
  }

  TEST_CASE("a console without a number is number 0") {
    ServerOptions options = ServerRoom::two_studios();
    options.groups[0].kind = 4;
    ServerRoom room(options);
    auto host = room.seat("host", 1, no_value);
    room.exchange().arrive(1, {});
    host->take();
    host->word('P', 1);
    const ServerPacket told = host->take_last(SrvLineStatus);
    CHECK(told.Buffer == "P");
    CHECK(told.Console == 0);
  }

  TEST_CASE("a seat that asks for the calls' times is told the server's time with them") {
    ServerRoom room;
    auto host = room.seat("host");
    room.exchange().arrive(1, {});
    room.wait(30s);
    host->send(host->packet(CmdRequestTimes));
    const auto times = decode_call_times(host->take_last(SrvTimes).Buffer);
    REQUIRE(times);
    REQUIRE(times->began.size() == 10);
    CHECK(times->began[0] == "0");
    CHECK(times->began[1] < times->server_now);
    const auto now = room.clock.local(room.clock.now());
    CHECK(times->server_now == clock_text(seconds_of_day(now)));
  }

  TEST_CASE("a console that registers twice at once is told of the callers once") {
    ServerRoom room;
    auto console = room.connect();
    console->log_in("host", host_password);
    for (int i = 0; i < 3; ++i) console->send(console->packet(CmdConnectConsole));
    console->send(console->packet(CmdRequestStatus));
    room.wait(1s);
    const auto told = console->take();
    const auto count = [&](ServerCommand command) {
      return std::ranges::count(told, static_cast<int>(command), &ServerPacket::CMD);
    };
    CHECK(count(SrvNextCall) == 1);
    CHECK(count(SrvCallerData) == 10);
    CHECK(count(SrvPhoneType) == 3);
  }

  TEST_CASE("a console that leaves its group, or the server, at once is told nothing more") {
    ServerRoom room;
    auto leaving = room.connect();
    leaving->log_in("host", host_password);
    leaving->send(leaving->packet(CmdConnectConsole));
    leaving->send(leaving->packet(CmdLeaveGroup));
    leaving->take();
    auto gone = room.connect();
    gone->log_in("host", host_password);
    gone->send(gone->packet(CmdConnectConsole));
    gone->hang_up();
    room.exchange().arrive(1, {});
    room.wait(3s);
    CHECK(leaving->take().empty());
    CHECK(room.figure("seats{group=\"1\"}") == 0);
    leaving->send(leaving->packet(CmdRequestStatus));
    CHECK(refused(room, "not_registered") == 1);
  }

  TEST_CASE("a seat is told of no line that doesn't exist, and may say nothing of it") {
    ServerOptions options = ServerRoom::two_studios();
    options.groups[0].missing_lines = {1, 10};
    ServerRoom room(options);
    auto host = room.seat("host");
    CHECK(host->take(SrvCallerData).size() == 8);
    int count = 0;
    for (const int line : {0, 9, 10}) {
      host->word('N', line, 0, 0);
      CHECK(refused(room, "other_line") == ++count);
      host->send(host->packet(CmdSetNextCall, line));
      CHECK(refused(room, "other_line") == ++count);
      host->send(host->packet(CmdCallerData, line, "Anna\2Bob\2"));
      CHECK(refused(room, "other_line") == ++count);
      host->send(host->packet(CmdDialSeize, line));
      CHECK(refused(room, "other_line") == ++count);
    }
  }

  TEST_CASE("on the first line a seat does what it does on others") {
    ServerRoom room;
    auto host = room.seat("host");
    auto screener = room.seat("screener");
    room.exchange().arrive(0, "5550100");
    screener->word('P', 0, 0);
    CHECK(room.exchange().letter(0) == 'P');
    screener->send(screener->packet(CmdCallerData, 0, "Anna\2Bob\2"));
    CHECK(host->take_last(SrvCallerData).Buffer.starts_with("Anna\2Bob\2"));
    room.wait(1s);
    CHECK(std::ranges::count_if(room.store.content().audit, [](const auto& entry) {
            return entry.event.action == "caller data" && entry.event.user == "screener" &&
                   entry.event.detail == "Studio 1, line 1";
          }) == 1);
    // A clearing that comes late is answered with the data.
    host->send(host->packet(CmdCallerData, 0));
    CHECK(host->take_last(SrvCallerData).Buffer.starts_with("Anna\2Bob\2"));
    screener->word('S', 0, 0);
    host->send(host->packet(CmdSetNextCall, 0));
    CHECK(screener->take_last(SrvNextCall).LineNo == 0);
    room.wait(1s);
    room.crash();
    room.start();
    host = room.seat("host");
    CHECK(host->take_last(SrvNextCall).LineNo == 0);
    CHECK(room.store.content().calls.size() == 1);
    host->word('N', 0, 0, 0);
    room.exchange().leave(0);
    room.wait(1s);
    // Nothing of it is left for who comes then.
    const auto told = room.seat("screener")->take(SrvCallerData);
    REQUIRE(told.size() == 10);
    CHECK(told[0].Buffer.empty());
  }

  TEST_CASE("data of a line without a call are cleared for all by an empty text") {
    ServerRoom room;
    auto host = room.seat("host");
    auto screener = room.seat("screener");
    screener->send(screener->packet(CmdCallerData, 4, "Anna\2Bob\2"));
    CHECK(host->take_last(SrvCallerData).Buffer.starts_with("Anna\2Bob\2"));
    host->send(host->packet(CmdCallerData, 4));
    CHECK(screener->take_last(SrvCallerData).Buffer.empty());
    for (const ServerPacket& packet : room.seat("host")->take(SrvCallerData)) {
      CHECK(packet.Buffer.empty());
    }
  }

  TEST_CASE("who may not enter caller data may still clear them as a console does") {
    ServerRoom room;
    platform::Account guest = room.store.content().accounts.at("host");
    guest.name = "guest";
    guest.rights[0] = with_right(guest.rights[0], Right::CallerDataAllowed, false);
    room.crash();
    room.store.content().apply(guest);
    room.start();
    auto console = room.seat("guest");
    auto host = room.seat("host");
    host->take();
    console->send(console->packet(CmdCallerData, 4, "Anna\2Bob\2"));
    CHECK(host->take(SrvCallerData).empty());
    CHECK(refused(room, "missing_right") == 1);
    console->send(console->packet(CmdCallerData, 4));
    CHECK(host->take(SrvCallerData).size() == 1);
    CHECK(refused(room, "missing_right") == 1);
  }

  TEST_CASE("a seat that takes another telephone is that one from then on") {
    ServerOptions options = ServerRoom::two_studios();
    options.groups[0].kind = 4;
    ServerRoom room(options);
    auto host = room.seat("host");
    host->send(with_alt_info(host->packet(CmdSelectPhone), 5));
    host->console = 5;
    room.exchange().arrive(1, {});
    host->take();
    host->word('P', 1);
    CHECK(host->take_last(SrvLineStatus).Console == 5);
    host->send(with_alt_info(host->packet(CmdSelectPhone), 127));
    host->console = 127;
    host->word('P', 1);
    CHECK(host->take_last(SrvLineStatus).Console == 127);
    host->send(with_alt_info(host->packet(CmdSelectPhone), 128));
    CHECK(refused(room, "malformed") == 1);
    host->word('H', 1);
    CHECK(host->take_last(SrvLineStatus).Buffer == "H");
  }

  TEST_CASE("a console whose number is no position's isn't registered, and takes nobody") {
    ServerOptions options = ServerRoom::two_studios();
    options.groups[0].kind = 4;
    ServerRoom room(options);
    room.exchange().arrive(1, {});
    room.exchange().obey("N01");
    auto host = room.seat("host", 1, 128 + 'F');
    CHECK(refused(room, "malformed") == 1);
    host->word('P', 1);
    CHECK(room.exchange().letter(1) == 'N');
    CHECK(room.figure("seats{group=\"1\"}") == 0);
    auto last = room.seat("host", 1, 127);
    CHECK(room.figure("seats{group=\"1\"}") == 1);
    auto unnamed = room.seat("host", 1, 255);
    CHECK(room.figure("seats{group=\"1\"}") == 2);
  }

  TEST_CASE("the rights of words and places") {
    ServerRoom room;
    platform::Account guest = room.store.content().accounts.at("host");
    guest.name = "guest";
    for (const Right right :
         {Right::Dial, Right::RemoteNext, Right::MitelPhone1, Right::MitelPhone2}) {
      guest.rights[0] = with_right(guest.rights[0], right, false);
    }
    room.crash();
    room.store.content().apply(guest);
    room.start();
    auto console = room.seat("guest");
    room.exchange().arrive(0, {});
    console->take();
    int count = 0;
    const auto is_refused = [&](char letter, int line, int alt_info = 0) {
      const double before = refused(room, "missing_right");
      console->word(letter, line, alt_info, 0);
      const bool now = refused(room, "missing_right") == before + 1;
      count += now ? 1 : 0;
      return now;
    };
    CHECK(is_refused('X', 0));
    CHECK(is_refused('U', 5));
    CHECK(is_refused('T', 3));
    // Tones of the handsets, and the handsets themselves.
    CHECK(is_refused('P', 20));
    CHECK(is_refused('O', 31));
    CHECK(is_refused('P', 0));
    CHECK(is_refused('P', 0, 1));
    CHECK(is_refused('P', 15));
    CHECK_FALSE(is_refused('H', 0));
    CHECK_FALSE(is_refused('N', 0));
    CHECK(room.exchange().letter(0) == 'N');
    CHECK(count == 8);
  }

  TEST_CASE("what a seat of a server that decides asks of the next call is no fault") {
    for (const int kind : {1, 4}) {
      ServerOptions options = ServerRoom::two_studios();
      options.groups[0].kind = kind;
      ServerRoom room(options);
      auto host = room.seat("host");
      host->send(host->packet(CmdNextAction, no_value, "N"));
      host->send(host->packet(CmdNextAction, no_value, "NN"));
      CHECK(refused(room, "malformed") == (kind == 4 ? 0 : 2));
    }
  }

  TEST_CASE("a digit is dialled by its tone") {
    ServerRoom room;
    auto host = room.seat("host");
    host->word('N', 2, 0, 0);
    for (const char* digit : {"5", "#"}) host->send(host->packet(CmdDialDigit, 2, digit));
    CHECK(room.trunks.at(1)->words == std::vector<std::string>{"N02", "Z05", "Z11"});
    host->send(host->packet(CmdDialDigit, 2, "a"));
    CHECK(room.trunks.at(1)->words.size() == 3);
    CHECK(refused(room, "malformed") == 1);
  }

  TEST_CASE("a free line is seized, one with a caller is not") {
    ServerRoom room;
    auto host = room.seat("host");
    const auto seize = [&](int line, int bank) {
      ServerPacket packet = host->packet(CmdDialSeize, line);
      packet.Bank = field_byte(bank);
      host->send(packet);
    };
    seize(0, 0);
    CHECK(room.exchange().letter(0) == 'N');
    seize(0, 1);
    CHECK(room.exchange().letter(0) == 'N');
    seize(3, 1);
    CHECK(room.exchange().letter(3) == 'C');
    room.exchange().arrive(2, {});
    seize(2, 0);
    CHECK(room.exchange().letter(2) == 'R');
  }

  TEST_CASE("a seat that goes to another group gets all of its lines before a change of one") {
    ServerRoom room;
    auto host = room.seat("host");
    host->group = 2;
    host->send(host->packet(CmdConnectConsole));
    room.wait(1s);
    host->take();
    room.exchange(2).arrive(3, {});
    const auto told = host->take();
    REQUIRE(!told.empty());
    CHECK(told[0].CMD == static_cast<int>(SrvFullStatus));
    CHECK(told[0].Buffer.substr(9, 3) == "R03");
    room.exchange(1).arrive(4, {});
    CHECK(host->take(SrvLineStatus).empty());
  }

  TEST_CASE("of a number that the exchange tells a row shows thirty characters") {
    ServerRoom room;
    auto host = room.seat("host");
    room.exchange().arrive(3, std::string(40, '5'));
    CHECK(decode_caller_data(host->take_last(SrvCallerData).Buffer)->fields[5] ==
          std::string(30, '5'));
  }

  TEST_CASE("who reads the studio's parts reads those of its own group alone") {
    ServerRoom room;
    auto host = room.seat("host");
    const auto parts = [&](int group) {
      host->group = group;
      host->send(host->packet(CmdRequestStudioStatus));
      return host->take_last(SrvStudioStatus).Buffer;
    };
    CHECK(parts(1).starts_with("True\3"));
    CHECK(parts(2) == "ERROR");
    CHECK(parts(9) == "ERROR");
  }
}

TEST_SUITE("server/seats") {
  TEST_CASE("an address has so many seats, and the server so many, and who works keeps his") {
    ServerOptions options = ServerRoom::two_studios();
    options.seats = 3;
    options.seats_of_address = 2;
    ServerRoom room(options);
    auto first = room.seat("host", 1, 0, "10.0.0.1");
    auto second = room.seat("screener", 1, 1, "10.0.0.1");
    CHECK_FALSE(room.connect("10.0.0.1")->is_open());
    CHECK(refused(room, "too_many_seats") == 1);
    auto third = room.seat("host", 1, 2, "10.0.0.2");
    CHECK(third->is_open());
    CHECK_FALSE(room.connect("10.0.0.3")->is_open());
    CHECK(refused(room, "too_many_seats") == 2);
    CHECK(room.figure("connections_total") == 3);
    for (const auto* seat : {first.get(), second.get(), third.get()}) CHECK(seat->is_open());
    // A place that is left is free again.
    second->hang_up();
    room.wait(1ms);
    auto fourth = room.seat("screener", 1, 1, "10.0.0.1");
    CHECK(fourth->is_open());
  }

  TEST_CASE("the oldest stranger of the address with most of them gives way") {
    ServerOptions options = ServerRoom::two_studios();
    options.seats = 5;
    options.seats_of_address = 3;
    ServerRoom room(options);
    auto host = room.seat("host", 1, 0, "10.0.0.1");
    auto of_host = room.connect("10.0.0.1");
    auto one = room.connect("10.0.0.2");
    auto two = room.connect("10.0.0.2");
    auto three = room.connect("10.0.0.2");
    // The address is full, and its own oldest goes.
    auto four = room.connect("10.0.0.2");
    CHECK_FALSE(one->is_open());
    CHECK(two->is_open());
    CHECK(of_host->is_open());
    // The server is full, and the address with most of them gives.
    auto other = room.connect("10.0.0.3");
    CHECK_FALSE(two->is_open());
    CHECK(of_host->is_open());
    CHECK(three->is_open());
    CHECK(other->is_open());
    CHECK(host->is_open());
    CHECK(refused(room, "too_many_seats") == 2);
  }

  TEST_CASE("figures tell what waits for seats that read slowly") {
    ServerRoom room;
    auto slow = room.seat("host", 1, 0);
    auto slower = room.seat("host", 1, 1);
    slower->stop_reading();
    room.exchange().arrive(0, "5550100");
    const double of_one = room.figure("queued_bytes");
    CHECK(of_one > 0);
    CHECK(room.figure("longest_queue_bytes") == of_one);
    slow->stop_reading();
    room.exchange().arrive(1, "5550101");
    CHECK(room.figure("longest_queue_bytes") > of_one);
    CHECK(room.figure("queued_bytes") > room.figure("longest_queue_bytes"));
    CHECK(room.figure("queued_bytes") < 2 * room.figure("longest_queue_bytes"));
  }
}

TEST_SUITE("server/group") {
  TEST_CASE("what a store has in a message's place that is none is told to nobody") {
    for (const std::string& message :
         {std::string("Weather at ten"), "255\0020\002" + std::string(70'000, 'x')}) {
      ServerRoom room;
      room.crash();
      room.store.content().apply(platform::GroupMemory{1, -1, message, {}});
      room.start();
      auto host = room.connect();
      host->log_in("host", host_password);
      host->join(1);
      CHECK(host->take(SrvFlashMessage).empty());
    }
  }

  TEST_CASE("a text of the show that is longer than consoles take is cut") {
    GroupOptions options;
    const platform::GroupMemory memory{1, -1, {}, {std::string(300, 'a'), "b\tc", ""}};
    ServerRoom room;
    room.crash();
    room.store.content().apply(memory);
    room.start();
    auto host = room.connect();
    host->log_in("host", host_password);
    host->join(1);
    CHECK(host->take_last(SrvShowTimes).Buffer == std::string(255, 'a') + "\3b c\3\3");
  }
}

}  // namespace lineweir::server

#include <doctest/doctest.h>

#include "base/text.h"
#include "server/server_room.h"
#include "wire/rights_layout.h"
#include "wire/studio_texts.h"

namespace lineweir::server {
namespace {

using namespace std::chrono_literals;
using enum ClientCommand;
using enum ServerCommand;

TEST_CASE("at the start of a session comes everything that is asked for, and what is not") {
  ServerRoom room;
  auto console = room.seat("host");
  std::map<int, int> counts;
  for (const ServerPacket& packet : console->take()) ++counts[packet.CMD];
  const std::map<int, int> expected = {{126, 1}, {146, 1}, {131, 1}, {133, 10}, {136, 1}, {143, 1},
                                       {128, 1}, {129, 1}, {130, 1}, {127, 1},  {132, 1}};
  CHECK(counts == expected);
}

TEST_CASE("what a seat does comes from the exchange to all seats of the group and to no others") {
  ServerRoom room;
  auto screener = room.seat("screener");
  auto host = room.seat("host");
  auto other = room.seat("host", 2);
  for (auto* console : {screener.get(), host.get(), other.get()}) console->take();
  room.exchange().arrive(4, "555 0100");
  for (auto* console : {screener.get(), host.get()}) {
    const auto told = console->take();
    REQUIRE(told.size() == 2);
    CHECK(told[0].CMD == 134);
    CHECK(told[0].LineNo == 4);
    CHECK(told[0].Buffer == "R");
    CHECK(told[1].CMD == 133);
    CHECK(decode_caller_data(told[1].Buffer)->fields[5] == "555 0100");
  }
  screener->word('P', 4, 0);
  CHECK(host->take_last(SrvLineStatus).Buffer == "P");
  screener->word('S', 4, 0);
  host->word('N', 4, 1, 1);
  const ServerPacket air = screener->take_last(SrvLineStatus);
  CHECK(air.Buffer == "C");
  CHECK(air.AltInfo == 255);
  CHECK(other->take().empty());
}

TEST_CASE("who asks for the lines late is told of the callers again behind them") {
  ServerRoom room;
  auto host = room.seat("host");
  room.exchange().arrive(5, {});
  room.exchange().obey("S05");
  host->send(host->packet(CmdSetNextCall, 5));
  auto late = room.connect();
  late->log_in("screener", host_password);
  late->send(late->packet(CmdConnectConsole));
  room.wait(1s);
  CHECK(late->take(SrvNextCall).size() == 1);
  late->send(late->packet(CmdRequestStatus));
  room.wait(1s);
  std::vector<ServerPacket> told = late->take();
  std::erase_if(told, [](const ServerPacket& packet) {
    return packet.CMD == static_cast<std::uint8_t>(SrvTime);
  });
  REQUIRE(told.size() >= 2);
  CHECK(told.front().CMD == static_cast<std::uint8_t>(SrvFullStatus));
  const auto next = std::find_if(told.begin(), told.end(), [](const ServerPacket& packet) {
    return packet.CMD == static_cast<std::uint8_t>(SrvNextCall);
  });
  REQUIRE(next != told.end());
  CHECK(next->LineNo == 5);
  late->send(late->packet(CmdRequestStatus));
  room.wait(1s);
  CHECK(late->take(SrvNextCall).empty());
}

TEST_CASE("of two seats that take a caller at the same moment the first has him") {
  ServerRoom room;
  auto first = room.seat("screener");
  auto second = room.seat("host");
  room.exchange().arrive(2, {});
  second->take();
  first->word('P', 2, 0);
  second->word('N', 2, 0, 0);
  CHECK(room.exchange().letter(2) == 'P');
  CHECK(room.figure("refusals_total{reason=\"line_taken\"}") == 1);
  const auto told = second->take(SrvLineStatus);
  REQUIRE(told.size() == 2);
  CHECK(told[1].Buffer == "P");
  room.wait(2s);
  second->word('N', 2, 0, 0);
  CHECK(room.exchange().letter(2) == 'N');
}

TEST_CASE("a seat whose status isn't told yet gets all lines in place of a change") {
  ServerRoom room;
  auto console = room.connect();
  console->log_in("host", host_password);
  console->send(console->packet(CmdConnectConsole));
  console->take();
  room.exchange().arrive(0, {});
  auto told = console->take();
  REQUIRE(!told.empty());
  CHECK(told[0].CMD == 127);
  CHECK(told[0].Buffer == "R00F01F02F03F04F05F06F07F08F09");
  room.exchange().arrive(1, {});
  CHECK(console->take().front().CMD == 134);
}

TEST_CASE("caller data go to all, stay until the call ends, and go with it") {
  ServerRoom room;
  auto screener = room.seat("screener");
  auto host = room.seat("host");
  room.exchange().arrive(1, {});
  screener->word('P', 1, 0);
  const std::string data = "Anna\2Bob\2\2Troy\2\2\2\2\2\2likes jazz\2\2";
  screener->send(screener->packet(CmdCallerData, 1, data));
  CHECK(host->take_last(SrvCallerData).Buffer == data);
  CHECK(screener->take_last(SrvCallerData).Buffer == data);

  // A console that sees the line ring late clears it, and is told better.
  host->send(host->packet(CmdCallerData, 1));
  CHECK(host->take_last(SrvCallerData).Buffer == data);
  CHECK(screener->take(SrvCallerData).empty());

  auto late = room.seat("host");
  bool found = false;
  for (const ServerPacket& packet : late->take(SrvCallerData)) {
    if (packet.LineNo == 1) found = packet.Buffer == data;
  }
  CHECK(found);

  room.exchange().leave(1);
  const ServerPacket cleared = late->take_last(SrvCallerData);
  CHECK(cleared.CMD == 133);
  CHECK(cleared.LineNo == 1);
  CHECK(cleared.Buffer.empty());
}

TEST_CASE(
    "a seat of the same name is told caller data without it, so that its console shows them") {
  ServerRoom room;
  auto first = room.seat("screener");
  auto second = room.seat("screener");
  room.exchange().arrive(1, {});
  first->send(first->packet(CmdCallerData, 1, "screener\2Bob\2\2\2\2\2\2\2\2\2\2"));
  CHECK(first->take_last(SrvCallerData).Buffer.starts_with("screener\2Bob"));
  CHECK(second->take_last(SrvCallerData).Buffer.starts_with("\2Bob"));
}

TEST_CASE("what is missing of caller data is empty") {
  ServerRoom room;
  auto host = room.seat("host");
  auto screener = room.seat("screener");
  room.exchange().arrive(1, {});
  host->send(host->packet(CmdCallerData, 1, "Anna\2Bob\2"));
  CHECK(screener->take_last(SrvCallerData).Buffer == "Anna\2Bob\2\2\2\2\2\2\2\2\2\2");
}

TEST_CASE("a next call goes to all, the last word wins, and its line's leaving ends it") {
  ServerRoom room;
  auto first = room.seat("host");
  auto second = room.seat("host");
  room.exchange().arrive(3, {});
  room.exchange().obey("S03");
  first->send(first->packet(CmdSetNextCall, 3));
  CHECK(second->take_last(SrvNextCall).LineNo == 3);
  CHECK(first->take_last(SrvNextCall).LineNo == 3);
  CHECK(room.seat("host")->take_last(SrvNextCall).LineNo == 3);
  room.exchange().obey("N03");
  CHECK(first->take_last(SrvNextCall).LineNo == 255);
  CHECK(room.seat("host")->take_last(SrvNextCall).LineNo == 255);
}

TEST_CASE("a next call is taken back by who chooses none, also where the first line rings") {
  ServerRoom room;
  auto host = room.seat("host");
  for (const int line : {0, 3}) {
    room.exchange().arrive(line, {});
    room.exchange().obey("S0" + std::to_string(line));
  }
  host->send(host->packet(CmdSetNextCall, 3));
  CHECK(host->take_last(SrvNextCall).LineNo == 3);
  host->send(host->packet(CmdSetNextCall, no_value));
  CHECK(host->take_last(SrvNextCall).LineNo == no_value);
  room.wait(1s);
  CHECK(room.store.content().groups.at(1).next_call == -1);
}

TEST_CASE("who asks for the lines again is told the lines alone") {
  ServerRoom room;
  auto host = room.seat("host");
  host->take();
  for (int i = 0; i < 5; ++i) {
    host->send(host->packet(CmdRequestStatus));
    room.wait(1s);
    for (const ServerPacket& packet : host->take()) {
      CAPTURE(static_cast<int>(packet.CMD));
      const bool is_beat = packet.CMD == static_cast<std::uint8_t>(SrvTime);
      CHECK((is_beat || packet.CMD == static_cast<std::uint8_t>(SrvFullStatus)));
    }
  }
}

TEST_CASE("frames of other groups, lines and consoles are refused and counted") {
  ServerRoom room;
  auto console = room.seat("host");
  room.exchange().arrive(1, {});
  console->take();
  console->group = 2;
  console->word('N', 1, 0, 0);
  console->group = 1;
  console->console = 3;
  console->word('N', 1, 0, 0);
  console->console = 0;
  console->word('N', 12, 0, 0);
  CHECK(room.exchange().letter(1) == 'R');
  CHECK(console->take().empty());
  CHECK(room.figure("refusals_total{reason=\"other_group\"}") == 1);
  CHECK(room.figure("refusals_total{reason=\"other_console\"}") == 1);
  CHECK(room.figure("refusals_total{reason=\"other_line\"}") == 1);
}

TEST_CASE("what is no frame ends the connection, and so does a frame that never ends") {
  ServerRoom room;
  auto first = room.connect();
  first->send_bytes("GET / HTTP/1.1\r\n");
  CHECK_FALSE(first->is_open());
  auto second = room.seat("host");
  second->send_bytes("\4\4" + std::string(70'000, 'x'));
  CHECK_FALSE(second->is_open());
  CHECK(room.figure("refusals_total{reason=\"no_frame\"}") == 2);
}

TEST_CASE("a message goes to all with its sender, and the last one to who comes later") {
  ServerRoom room;
  auto host = room.seat("host");
  auto screener = room.seat("screener");
  const std::string message = "255\00216777215\2Anna\3Anna> Break in two";
  host->send(host->packet(CmdFlashMessage, no_value, message));
  CHECK(host->take_last(SrvFlashMessage).Buffer == message);
  CHECK(screener->take_last(SrvFlashMessage).Buffer == message);
  CHECK(room.seat("host")->take_last(SrvFlashMessage).Buffer == message);
  CHECK(room.figure("refusals_total{reason=\"malformed\"}") == 0);
  host->send(host->packet(CmdFlashMessage, no_value, "red\2blue\2x"));
  CHECK(screener->take(SrvFlashMessage).empty());
  CHECK(room.figure("refusals_total{reason=\"malformed\"}") == 1);
}

TEST_CASE("a profile comes back without the name, and only for its own user") {
  ServerRoom room;
  auto host = room.seat("host");
  const std::string profile = std::string(43, '1') +
                              "5000\0037000\3"
                              "1\3";
  host->send(host->packet(CmdUserProfile, no_value, "screener\3" + profile));
  host->send(host->packet(CmdUserProfile, no_value, "host\3" + profile));
  auto again = room.connect();
  again->log_in("host", host_password);
  CHECK(again->take_last(SrvPasswordResult).Buffer == rights_of(RightsTemplate::Host) + profile);
  auto other = room.connect();
  other->log_in("screener", host_password);
  CHECK(other->take_last(SrvPasswordResult).Buffer.size() == rights_length);
  CHECK(room.figure("refusals_total{reason=\"other_user\"}") == 1);
}

TEST_CASE("the time goes out each second to who is registered, and to who asks") {
  ServerRoom room;
  auto stranger = room.connect();
  stranger->send(stranger->packet(CmdTimeRequest));
  CHECK(stranger->take_last(SrvTime).Buffer.starts_with("1/5/2026 10:00:0"));
  auto host = room.seat("host");
  host->take();
  room.wait(5s);
  CHECK(host->take(SrvTime).size() == 5);
  CHECK(stranger->take().empty());
}

TEST_CASE("the server that decides chooses who waits longest, and takes callers to phones") {
  ServerOptions options = ServerRoom::two_studios();
  options.groups[0].kind = 4;
  ServerRoom room(options);
  auto host = room.seat("host", 1, 0);
  auto screener = room.seat("screener", 1, 2);
  screener->send([&] {
    ServerPacket mode = screener->packet(CmdSetMode);
    mode.AltInfo = 1;
    return mode;
  }());
  for (const int line : {7, 3}) {
    room.exchange().arrive(line, {});
    room.wait(2s);
  }
  const auto next_action = [](FrameConsole& console, const char* letter, int bank) {
    ServerPacket action = console.packet(CmdNextAction, no_value, letter);
    action.Bank = field_byte(bank);
    console.send(action);
  };
  host->take();
  next_action(*screener, "A", 255);
  ServerPacket told = host->take_last(SrvLineStatus);
  CHECK(told.LineNo == 7);
  CHECK(told.Buffer == "P");
  CHECK(told.Console == 2);
  host->send(host->packet(CmdRequestStatus));
  CHECK(host->take_last(SrvFullStatus).Buffer.substr(21, 3) ==
        "\x82"
        "07");
  next_action(*screener, "S", 0);
  CHECK(host->take_last(SrvNextCall).LineNo == 7);
  next_action(*host, "N", 1);
  CHECK(room.exchange().letter(7) == 'C');
  CHECK(host->take_last(SrvNextCall).LineNo == 255);
  // The hybrid's caller is dropped by the place's word.
  host->word('F', 0, 255, 1);
  CHECK(room.exchange().letter(7) == 'F');
  host->send(host->packet(CmdRequestPhones));
  const auto phones = decode_list(host->take_last(SrvPhoneNames).Buffer);
  CHECK(phones.size() == 8);
  CHECK(phones.front() == "Phone 1");
  CHECK(phones.back() == "Phone 8");
}

TEST_CASE("a right that is missing refuses the frame and tells the person once") {
  ServerRoom room;
  platform::Account account = ServerRoom::account("guest", RightsTemplate::Host);
  account.password_hash = room.store.content().accounts.at("host").password_hash;
  account.rights[0] = with_right(account.rights[0], Right::MessagesAllowed, false);
  room.store.content().accounts["guest"] = account;
  room.crash();
  room.start();
  auto guest = room.seat("guest");
  guest->take();
  for (int i = 0; i < 3; ++i) {
    guest->send(guest->packet(CmdFlashMessage, no_value, "1\0022\2x\3y"));
  }
  const auto told = guest->take();
  REQUIRE(told.size() == 1);
  CHECK(told[0].CMD == 140);
  CHECK(told[0].Buffer.find("MessagesAllowed") != std::string::npos);
}

TEST_CASE("who may not be in talent mode puts nobody on air") {
  for (const int kind : {1, 2, 3, 4}) {
    CAPTURE(kind);
    ServerOptions options = ServerRoom::two_studios();
    options.groups[0].kind = kind;
    ServerRoom room(options);
    auto screener = room.seat("screener");
    room.exchange().arrive(1, {});
    room.exchange().obey("S01");
    screener->take();
    screener->word('N', 1, 0, 0);
    screener->send(screener->packet(CmdNextAction, no_value, "N"));
    CHECK(room.exchange().letter(1) == 'S');
    CHECK(screener->take_last(SrvMessage).Buffer.find("StudioMode") != std::string::npos);
    screener->word('N', 1, 1, 1);
    CHECK(room.exchange().letter(1) == (kind == 3 ? 'C' : 'S'));
  }
}

TEST_CASE("a seat is told which hybrids and which handsets its studio has") {
  ServerOptions options = ServerRoom::two_studios();
  options.groups[0].hybrids = {true, false};
  options.groups[0].positions = {false, true};
  ServerRoom room(options);
  auto host = room.seat("host");
  host->send(host->packet(CmdRequestStudioStatus));
  const auto told = decode_studio_parts(host->take_last(SrvStudioStatus).Buffer);
  REQUIRE(told);
  CHECK(told->parts == std::vector<bool>{true, false, false, true});
  CHECK(told->lines == std::vector<bool>(10, true));
}

TEST_CASE("a seat is told the names of its lines, each as long as the others") {
  ServerOptions options = ServerRoom::two_studios();
  options.groups[0].line_names = {"VIP", "Traffic"};
  ServerRoom room(options);
  auto host = room.seat("host");
  host->send(host->packet(CmdRequestLineNumbers));
  const std::string told = host->take_last(SrvLineNumbers).Buffer;
  REQUIRE(told.size() % 10 == 0);
  const std::size_t length = told.size() / 10;
  const auto name = [&](std::size_t line) {
    return std::string(trimmed(told.substr(line * length, length)));
  };
  CHECK(name(0) == "VIP");
  CHECK(name(1) == "Traffic");
  CHECK(name(2) == "3");
  CHECK(name(9) == "10");
}

TEST_CASE("the end is told with its seconds, and then the sessions end") {
  ServerRoom room;
  auto host = room.seat("host");
  host->take();
  bool done = false;
  room.server->shut_down(10, "The studio closes.", [&] { done = true; });
  const ServerPacket notice = host->take_last(SrvShutdownNotice);
  CHECK(notice.AltInfo == 10);
  CHECK(notice.Buffer == "The studio closes.");
  room.wait(9s);
  CHECK(host->is_open());
  room.wait(2s);
  CHECK_FALSE(host->is_open());
  CHECK(done);
}

}  // namespace
}  // namespace lineweir::server

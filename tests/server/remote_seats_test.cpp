#include "server/remote_seats.h"

#include <doctest/doctest.h>

#include <algorithm>
#include <limits>

#include "server/admin_tool.h"
#include "server/scripted_remote_service.h"
#include "server/server_room.h"

namespace lineweir::server {
namespace {

using namespace std::chrono_literals;
using enum ServerCommand;
using platform::RemoteArgument;
using Told = ScriptedRemoteService::Told;

const std::string data_text = "Anna\2Bob\2\2Troy\2\2\2\2\2\2likes jazz\2\2";

struct BusRoom : ServerRoom {
  explicit BusRoom(ServerOptions wanted = two_studios()) : ServerRoom(std::move(wanted)) {
    server->publish(bus);
  }
  ~BusRoom() { crash(); }

  std::optional<RemoteArgument> call(const std::string& member,
                                     const platform::RemoteArguments& arguments,
                                     const std::string& caller = ":1.7") {
    return bus.call(caller, member, arguments);
  }
  void word(const std::string& text, int group = 1) {
    call("InputSerialPort", {group, text});
    call("InputSerialPort", {group, std::string()});
  }
  std::vector<Told> take_told() { return std::exchange(bus.told, {}); }
  double refused(const std::string& reason) const {
    return figure("refusals_total{reason=\"" + reason + "\"}");
  }

  ScriptedRemoteService bus;
};

TEST_CASE("a console that connects is answered as its calls ask") {
  BusRoom room;
  room.exchange().arrive(1, {});
  CHECK(room.call("AddObjectReference", {std::string("/a"), 1}) == RemoteArgument(true));
  CHECK(room.call("GetStudioStatus", {1}) ==
        RemoteArgument("True\3True\3True\3True\3"
                       "1\0032\0033\0034\0035\0036\0037\0038\0039\00310\3"));
  CHECK(room.call("GetStudioNames", {}) == RemoteArgument("Studio 1\3Studio 2\3"));
  CHECK(room.call("OutputSerialPort", {1}) == RemoteArgument("F00R01F02F03F04F05F06F07F08F09"));
  CHECK(room.call("GetDimType", {1}) == RemoteArgument(1));
  CHECK(room.call("GetLineNumbers", {1}) == RemoteArgument("01020304050607080910"));
  const auto times = room.call("gettimes", {1});
  REQUIRE(times);
  CHECK(std::get<std::string>(*times).starts_with("0\00310:00:"));
  CHECK(room.call("GetStudioStatus", {9}) == RemoteArgument("ERROR"));
}

TEST_CASE("who has asked is called back of his group, the others are not") {
  BusRoom room;
  room.call("AddObjectReference", {std::string("/a"), 1}, ":1.1");
  room.call("AddObjectReference", {std::string("/b"), 2}, ":1.2");
  room.call("OutputSerialPort", {1}, ":1.3");
  room.take_told();
  room.exchange().arrive(3, "555 0100");
  const auto told = room.take_told();
  REQUIRE(told.size() == 2);
  CHECK(told[0] == Told{":1.1", "/a", "ReturnCommand", {"F00F01F02R03F04F05F06F07F08F09"}});
  CHECK(told[1] ==
        Told{":1.1", "/a", "ReturnCallerData", {"\2\2\2\2\2\002555 0100\2\2\2\2\2", 4, 1}});
  CHECK(room.call("DropObjectReference", {std::string("/x"), 1}, ":1.1") == RemoteArgument(false));
  CHECK(room.call("DropObjectReference", {std::string("/a"), 1}, ":1.1") == RemoteArgument(true));
  room.exchange().leave(3);
  CHECK(room.take_told().empty());
}

TEST_CASE("who has left a group is no seat any more, until he comes back") {
  BusRoom room;
  room.call("AddObjectReference", {std::string("/a"), 1}, ":1.1");
  room.call("DropObjectReference", {std::string("/a"), 1}, ":1.1");
  CHECK(room.figure("seats_let_in") == 0);
  room.call("AddObjectReference", {std::string("/a"), 2}, ":1.1");
  room.call("AddObjectReference", {std::string("/a"), 2}, ":1.1");
  CHECK(room.figure("seats_let_in") == 1);
  room.call("DropObjectReference", {std::string("/a"), 2}, ":1.1");
  room.call("AddObjectReference", {std::string("/a"), 1}, ":1.1");
  CHECK(room.figure("seats_let_in") == 1);
}

TEST_CASE("who comes is told at once of the callers that stand, and leaves once") {
  BusRoom room;
  room.exchange().arrive(3, "555 0100");
  room.take_told();
  room.call("AddObjectReference", {std::string("/a"), 1}, ":1.1");
  const auto told = room.take_told();
  CHECK(std::ranges::count(
            told,
            Told{":1.1", "/a", "ReturnCallerData", {"\2\2\2\2\2\002555 0100\2\2\2\2\2", 4, 1}}) ==
        1);
  CHECK(room.call("DropObjectReference", {std::string("/a"), 1}, ":1.1") == RemoteArgument(true));
  CHECK(room.call("DropObjectReference", {std::string("/a"), 1}, ":1.1") == RemoteArgument(false));
}

TEST_CASE("a caller whom a seat has just taken is not taken away by a word from the bus") {
  BusRoom room;
  auto host = room.seat("host");
  room.exchange().arrive(2, {});
  host->word('P', 2, 0);
  room.word("N02");
  CHECK(room.exchange().letter(2) == 'P');
  CHECK(room.refused("line_taken") == 1);
}

TEST_CASE("who has left the bus is called back no more") {
  BusRoom room;
  room.call("AddObjectReference", {std::string("/a"), 1}, ":1.1");
  room.call("AddObjectReference", {std::string("/a"), 2}, ":1.1");
  CHECK(room.figure("seats_let_in") == 2);
  room.bus.on_gone(":1.1");
  room.bus.on_gone(":1.2");
  CHECK(room.figure("seats_let_in") == 0);
  room.take_told();
  room.exchange().arrive(3, {});
  CHECK(room.take_told().empty());
}

TEST_CASE(
    "the caller of one who has left the bus goes on hold, also where he was called back no more") {
  for (const bool dropped_before : {false, true}) {
    BusRoom room;
    room.call("AddObjectReference", {std::string("/a"), 1}, ":1.1");
    room.exchange().arrive(3, {});
    room.call("InputSerialPort", {1, std::string("P03")}, ":1.1");
    if (dropped_before) room.call("DropObjectReference", {std::string("/a"), 1}, ":1.1");
    room.wait(100s);
    CHECK(room.exchange().letter(3) == 'P');
    room.bus.on_gone(":1.1");
    room.wait(34s);
    CHECK(room.exchange().letter(3) == 'P');
    room.wait(3s);
    CHECK(room.exchange().letter(3) == 'H');
  }
}

TEST_CASE("seats on sockets and on the bus see the same, and what each other do") {
  BusRoom room;
  auto host = room.seat("host");
  room.call("AddObjectReference", {std::string("/a"), 1});
  room.exchange().arrive(3, {});
  room.word("P03");
  CHECK(host->take_last(SrvLineStatus).Buffer == "P");
  room.take_told();
  host->send(host->packet(ClientCommand::CmdCallerData, 3, data_text));
  CHECK(room.take_told().at(0).arguments == platform::RemoteArguments{data_text, 4, 1});
  room.word("S03");
  room.take_told();
  host->send(host->packet(ClientCommand::CmdSetNextCall, 3));
  CHECK(room.take_told().at(0) == Told{":1.7", "/a", "ReturnNextCall", {4, 1}});
  host->take();
  CHECK(room.call("SetNextCall", {0, 1}) == RemoteArgument(true));
  CHECK(host->take_last(SrvNextCall).LineNo == 255);
  CHECK(room.take_told().at(0).arguments == platform::RemoteArguments{0, 1});
  host->send(host->packet(ClientCommand::CmdFlashMessage, no_value, "255\0020\2Anna\3Hi"));
  CHECK(room.take_told().at(0).arguments == platform::RemoteArguments{"Anna\3Hi", 1, 255, 0});
  CHECK(room.call("MessageGroupData", {1, 7, -1, std::string("Bert\3Yo")}) == RemoteArgument(true));
  CHECK(host->take_last(SrvFlashMessage).Buffer == "7\2-1\2Bert\3Yo");
  CHECK(room.call("CallerDataServer", {4, 1, std::string("Bert\2Rob\2\2\2\2\2\2\2\2\2\2")}) ==
        RemoteArgument(true));
  CHECK(host->take_last(SrvCallerData).Buffer == "Bert\2Rob\2\2\2\2\2\2\2\2\2\2");
}

TEST_CASE("every word of the equipment goes to it, tones of the handsets among them") {
  BusRoom room;
  room.exchange().arrive(2, {});
  for (const char* word : {"P02", "P15", "O15", "P20", "P29", "P31", "O32", "T00", "T12", "X", "R",
                           "U05", "U12", "U", " H02 ", "Z03", "V09", "M", "Q05"}) {
    room.word(word);
  }
  CHECK(room.refused("malformed") == 0);
  CHECK(room.refused("other_line") == 0);
  // "P15" released the handset.
  CHECK(room.exchange().letter(2) == 'F');
}

TEST_CASE("what is no word never reaches the equipment") {
  BusRoom room;
  room.exchange().arrive(2, {});
  int refused = 0;
  for (const std::string word : {"N", "N2", "N020", "n02", "N0x", "N02N03", "B02", "U055", "Ux",
                                 "\5\5", "P99", "T13", "hello"}) {
    room.word(word);
    CHECK(room.refused("malformed") == ++refused);
  }
  room.word(std::string(100'000, 'N'));
  CHECK(room.refused("malformed") == ++refused);
  CHECK(room.exchange().letter(2) == 'R');
}

TEST_CASE("lines, groups and members that aren't there are refused") {
  ServerOptions options = ServerRoom::two_studios();
  options.groups[0].missing_lines = {3};
  BusRoom room(options);
  constexpr int least = std::numeric_limits<int>::min();
  constexpr int most = std::numeric_limits<int>::max();
  int other_line = 0;
  for (const int line : {3, 11, 20, most}) {
    room.call("SetNextCall", {line, 1});
    CHECK(room.refused("other_line") == ++other_line);
    room.call("CallerDataServer", {line, 1, data_text});
    CHECK(room.refused("other_line") == ++other_line);
  }
  for (const int line : {0, -1, least}) {
    room.call("CallerDataServer", {line, 1, data_text});
    CHECK(room.refused("other_line") == ++other_line);
    CHECK(room.call("SetNextCall", {line, 1}));
  }
  for (const char* word : {"N02", "P12"}) {
    room.word(word);
    CHECK(room.refused("other_line") == ++other_line);
  }
  for (const int group : {0, 3, -1, least, most}) {
    CHECK_FALSE(room.call("OutputSerialPort", {group}));
    CHECK_FALSE(room.call("AddObjectReference", {std::string("/a"), group}));
    CHECK_FALSE(room.call("InputSerialPort", {group, std::string("N00")}));
  }
  CHECK(room.refused("other_group") == 15);
  CHECK_FALSE(room.call("DestroyEverything", {1}));
}

TEST_CASE("the first line and the last are lines like others") {
  ServerOptions options = ServerRoom::two_studios();
  options.groups[0].missing_lines = {1};
  BusRoom room(options);
  room.call("SetNextCall", {1, 1});
  CHECK(room.refused("other_line") == 1);
  room.word("H00");
  CHECK(room.refused("other_line") == 2);
  room.call("CallerDataServer", {1, 1, data_text});
  CHECK(room.refused("other_line") == 3);
  room.call("SetNextCall", {10, 1});
  room.word("H09");
  CHECK(room.refused("other_line") == 3);
  CHECK(room.call("InputSerialPort", {1, std::string()}) == RemoteArgument(true));
  CHECK(room.call("InputSerialPort", {1, std::string("what")}) == RemoteArgument(true));
}

TEST_CASE("a program on the bus is listed as a seat, since it came") {
  BusRoom room;
  room.wait(5s);
  const auto came = room.clock.now().count();
  room.call("AddObjectReference", {std::string("/a"), 1}, ":1.4");
  room.wait(5s);
  room.call("AddObjectReference", {std::string("/a"), 1}, ":1.4");
  AdminTool tool(room);
  const auto seats = tool.rows({admin::Command::Seats});
  REQUIRE(seats.size() == 1);
  CHECK(seats[0].at("user") == "D-Bus :1.4");
  CHECK(seats[0].at("group") == 1);
  CHECK(seats[0].at("since") == came);
}

TEST_CASE("texts from the bus are cleaned like those of frames") {
  BusRoom room;
  auto host = room.seat("host");
  room.exchange().arrive(0, {});
  host->take();
  room.call("MessageGroupData", {1, 1, 2, std::string("Anna\3a\5\5b")});
  CHECK(host->take_last(SrvFlashMessage).Buffer == "1\0022\2Anna\3a  b");
  room.call("MessageGroupData", {1, 1, 2, std::string(30'201, 'x')});
  CHECK(room.refused("malformed") == 1);
  room.call("CallerDataServer", {1, 1, "Anna\2a\5\5b\2" + std::string(100'000, 'x')});
  const std::string told = host->take_last(SrvCallerData).Buffer;
  CHECK(told.starts_with("Anna\2a  b\2xx"));
  CHECK(told.size() < 200);
}

TEST_CASE("callers who come and never leave are forgotten, the oldest first") {
  BusRoom room;
  for (int i = 0; i < 1100; ++i) {
    room.call("AddObjectReference", {std::string("/a"), 1}, ":1." + std::to_string(i));
  }
  CHECK(room.figure("seats_let_in") == 1000);
  room.take_told();
  room.exchange().arrive(0, {});
  const auto told = room.take_told();
  CHECK(told.size() == 1000);
  CHECK(told.front().caller == ":1.100");
}

TEST_CASE("a server whose end has come answers nobody on the bus any more") {
  BusRoom room;
  CHECK(room.call("GetStudioNames", {}) != std::nullopt);
  room.server->shut_down(0, "Now.", [] {});
  room.wait(1s);
  CHECK(room.call("GetStudioNames", {}) == std::nullopt);
}

TEST_CASE("a server that ends publishes nothing any more") {
  BusRoom room;
  room.call("AddObjectReference", {std::string("/a"), 1});
  room.crash();
  CHECK(room.bus.on_call == nullptr);
  CHECK(room.bus.on_gone == nullptr);
}

}  // namespace
}  // namespace lineweir::server

#include <doctest/doctest.h>

#include "server/server_room.h"
#include "wire/rights_layout.h"

namespace lineweir::server {
namespace {

using namespace std::chrono_literals;
using enum ClientCommand;
using enum ServerCommand;

// A frame that takes a right, and by what one sees that it was done.
struct Row {
  const char* what;
  Right right;
  int kind;
  ClientCommand command;
  const char* buffer;
  int line;
  int alt_info;
  int bank;
  // Of line 2, which rings before.
  char letter;
};

const Row rows[] = {
    {"main", Right::StudioMode, 1, CmdLineCommand, "N", 2, 0, 0, 'N'},
    {"conference", Right::StudioMode, 2, CmdLineCommand, "N", 2, 1, 1, 'C'},
    {"position 1", Right::MitelPhone1, 1, CmdLineCommand, "P", 2, 0, 0, 'P'},
    {"position 2", Right::MitelPhone2, 1, CmdLineCommand, "P", 2, 1, 0, 'O'},
    {"tone of the hybrid", Right::Dial, 1, CmdLineCommand, "T", 5, 255, 0, 'R'},
    {"tone of position 1", Right::Dial, 1, CmdLineCommand, "P", 25, 0, 0, 'R'},
    {"tone of position 2", Right::Dial, 1, CmdLineCommand, "P", 25, 1, 0, 'R'},
    {"first tone of position 1", Right::Dial, 1, CmdLineCommand, "P", 20, 0, 0, 'R'},
    {"release of position 1", Right::MitelPhone1, 1, CmdLineCommand, "P", 15, 0, 0, 'R'},
    {"remote next on", Right::RemoteNext, 1, CmdLineCommand, "X", 255, 255, 0, 'R'},
    {"remote next off", Right::RemoteNext, 1, CmdLineCommand, "R", 255, 255, 0, 'R'},
    {"next key", Right::RemoteNext, 1, CmdLineCommand, "U", 12, 255, 0, 'R'},
    {"digit", Right::Dial, 4, CmdDialDigit, "5", 2, 0, 255, 'R'},
    {"caller data", Right::CallerDataAllowed, 1, CmdCallerData, "Anna\2Bob", 2, 255, 255, 'R'},
    {"message", Right::MessagesAllowed, 1, CmdFlashMessage, "1\0022\2Anna\3Hi", 255, 255, 255, 'R'},
    {"seizing", Right::Dial, 1, CmdDialSeize, "", 2, 0, 255, 'P'},
    {"seizing main", Right::StudioMode, 1, CmdDialSeize, "", 2, 0, 0, 'N'},
    {"seizing position 1", Right::MitelPhone1, 1, CmdDialSeize, "", 2, 0, 255, 'P'},
};

struct RightsRoom : ServerRoom {
  RightsRoom(int kind, const std::string& rights) : ServerRoom(options_of(kind)) {
    platform::Account account = store.content().accounts.at("host");
    account.name = "guest";
    account.rights = {{0, rights}};
    store.content().accounts["guest"] = account;
    crash();
    start();
  }

  static ServerOptions options_of(int kind) {
    ServerOptions options = two_studios();
    options.groups[0].kind = kind;
    return options;
  }
};

ServerPacket frame_of(const FrameConsole& console, const Row& row) {
  ServerPacket packet = console.packet(row.command, row.line, row.buffer);
  packet.AltInfo = field_byte(row.alt_info);
  packet.Bank = field_byte(row.bank);
  return packet;
}

TEST_CASE("what takes a right isn't done without it, is counted, and told to the person") {
  for (const Row& row : rows) {
    CAPTURE(row.what);
    for (const bool allowed : {false, true}) {
      CAPTURE(allowed);
      const std::string all = rights_of(RightsTemplate::Engineer);
      RightsRoom room(row.kind, with_right(all, row.right, allowed));
      auto guest = room.seat("guest");
      auto other = room.seat("host");
      const bool seizes = row.command == CmdDialSeize;
      if (!seizes) room.exchange().arrive(2, {});
      room.wait(1s);
      guest->take();
      other->take();
      guest->send(frame_of(*guest, row));
      const char before = seizes ? 'F' : 'R';
      CHECK(room.exchange().letter(2) == (allowed ? row.letter : before));
      const auto told = guest->take(SrvMessage);
      REQUIRE(told.size() == (allowed ? 0 : 1));
      const std::string name(rights_layout[static_cast<std::size_t>(row.right)].name);
      if (!allowed) CHECK(told[0].Buffer.find(name) != std::string::npos);
      if (!allowed) CHECK(other->take().empty());
      CHECK(room.figure("refusals_total{reason=\"missing_right\"}") == (allowed ? 0 : 1));
    }
  }
}

TEST_CASE("a person is told once in ten seconds what isn't done, however often it is asked") {
  RightsRoom room(1, with_right(rights_of(RightsTemplate::Host), Right::Dial, false));
  auto guest = room.seat("guest");
  const auto is_told = [&] {
    guest->take();
    guest->word('T', 3, 255, 0);
    return guest->take(SrvMessage).size() == 1;
  };
  CHECK(is_told());
  CHECK_FALSE(is_told());
  room.wait(9997ms);
  CHECK_FALSE(is_told());
  CHECK(is_told());
  CHECK_FALSE(is_told());
}

TEST_CASE("with a server that decides the next caller goes on air in talent mode alone") {
  for (const bool allowed : {false, true}) {
    const std::string all = rights_of(RightsTemplate::Engineer);
    RightsRoom room(4, with_right(all, Right::StudioMode, allowed));
    auto guest = room.seat("guest");
    room.exchange().arrive(2, {});
    room.exchange().obey("S02");
    guest->send(frame_of(*guest, {"", Right::StudioMode, 4, CmdNextAction, "N", 255, 65, 0, 'N'}));
    CHECK(room.exchange().letter(2) == (allowed ? 'N' : 'S'));
  }
}

TEST_CASE("what takes no right is done with none but one") {
  RightsRoom room(1, with_right({}, Right::ExitMenu, true));
  auto guest = room.seat("guest");
  room.exchange().arrive(2, {});
  room.wait(1s);
  guest->take();
  guest->word('H', 2);
  CHECK(room.exchange().letter(2) == 'H');
  guest->word('S', 2);
  CHECK(room.exchange().letter(2) == 'S');
  guest->send(guest->packet(CmdSetNextCall, 2));
  CHECK(guest->take_last(SrvNextCall).LineNo == 2);
  guest->word('F', 2);
  CHECK(room.exchange().letter(2) == 'F');
  for (const ClientCommand command :
       {CmdRequestStatus, CmdRequestStudioStatus, CmdRequestTimes, CmdRequestLineNumbers,
        CmdRequestPhones, CmdTimeRequest, CmdRequestGroupNames}) {
    guest->take();
    guest->send(guest->packet(command));
    CHECK(guest->take().size() == 1);
  }
}

TEST_CASE("who is forced into passive mode works no line, and may still look and write") {
  const std::string all = rights_of(RightsTemplate::Engineer);
  RightsRoom room(1, with_right(all, Right::ForcePassiveOn, true));
  auto guest = room.seat("guest");
  room.exchange().arrive(2, {});
  int refusals = 0;
  for (const Row& row : rows) {
    if (row.kind != 1) continue;
    CAPTURE(row.what);
    guest->send(frame_of(*guest, row));
    if (row.command == CmdCallerData || row.command == CmdFlashMessage) continue;
    CHECK(room.figure("refusals_total{reason=\"passive\"}") == ++refusals);
  }
  CHECK(room.exchange().letter(2) == 'R');
  guest->send(guest->packet(CmdSetNextCall, 2));
  CHECK(room.figure("refusals_total{reason=\"passive\"}") == ++refusals);
  CHECK(guest->take(SrvFlashMessage).size() == 1);
}

TEST_CASE("who has no rights in a group can't come into it") {
  ServerRoom room;
  auto guest = room.connect();
  guest->log_in("only2", host_password);
  guest->take();
  guest->send(guest->packet(CmdConnectConsole));
  CHECK(guest->take().empty());
  CHECK(room.figure("refusals_total{reason=\"no_rights_in_group\"}") == 1);
  guest->group = 9;
  guest->send(guest->packet(CmdConnectConsole));
  CHECK(room.figure("refusals_total{reason=\"other_group\"}") == 1);
}

}  // namespace
}  // namespace lineweir::server

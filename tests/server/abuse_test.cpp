// What strangers and broken consoles may do without disturbing anybody.

#include <doctest/doctest.h>

#include <algorithm>

#include "server/group_desk.h"
#include "server/server_room.h"
#include "wire/server_packet_codec.h"

using namespace lineweir;
using namespace lineweir::server;
using namespace std::chrono_literals;
using enum ClientCommand;
using enum ServerCommand;

namespace {

bool has_control_code(const std::string& text) {
  return std::any_of(text.begin(), text.end(),
                     [](char letter) { return static_cast<unsigned char>(letter) < 0x20; });
}

// A message may have several lines, and parts.
std::string in_one_line(std::string text) {
  std::erase(text, item_end);
  std::erase(text, '\r');
  std::erase(text, '\n');
  return text;
}

std::string all_control_codes() {
  std::string codes = "A";
  for (char code = 1; code < 0x20; ++code) codes += code;
  return codes + "\x05\x05\x04\x04Z";
}

}  // namespace

TEST_CASE("before the login every other request goes unanswered and is counted") {
  ServerRoom room;
  auto host = room.seat("host");
  auto stranger = room.connect("10.0.0.66");
  host->take();
  for (const ClientCommand command :
       {CmdConnectConsole, CmdLeaveGroup, CmdLineCommand, CmdRequestStatus, CmdCallerData,
        CmdFlashMessage, CmdSetNextCall, CmdRequestGroupNames, CmdRequestStudioStatus,
        CmdRequestTimes, CmdRequestLineNumbers, CmdDialDigit, CmdNextAction, CmdDialSeize,
        CmdRequestPhones, CmdSetMode, CmdSelectPhone, CmdUserProfile}) {
    const double before = room.figure("refusals_total{reason=\"not_let_in\"}");
    stranger->send(stranger->packet(command, 1, "N01"));
    CAPTURE(static_cast<int>(command));
    CHECK(room.figure("refusals_total{reason=\"not_let_in\"}") == before + 1);
    CHECK(stranger->take().empty());
  }
  CHECK(stranger->is_open());
  for (int i = 0; i < 100; ++i) stranger->send(stranger->packet(CmdRequestStatus));
  CHECK_FALSE(stranger->is_open());
  CHECK(host->take().empty());
}

TEST_CASE("a hundred requests that come before the login are borne, and no more") {
  ServerRoom room;
  auto stranger = room.connect("10.0.0.66");
  for (int i = 0; i < 100; ++i) stranger->send(stranger->packet(CmdRequestStatus));
  CHECK(stranger->is_open());
  stranger->send(stranger->packet(CmdRequestStatus));
  CHECK_FALSE(stranger->is_open());
}

TEST_CASE("guesses from everywhere lock out neither who works nor another user") {
  ServerRoom room;
  auto host = room.seat("host");
  std::vector<std::unique_ptr<FrameConsole>> guessers;
  for (int i = 0; i < 60; ++i) {
    guessers.push_back(room.connect("10.1.0." + std::to_string(i)));
    guessers.back()->log_in("host", "guess " + std::to_string(i));
    CHECK(guessers.back()->take_last(SrvPasswordResult).AltInfo == 'F');
    host->send(host->packet(CmdTimeRequest));
  }
  CHECK(room.figure("refusals_total{reason=\"user_locked\"}") > 0);
  CHECK(host->is_open());
  room.exchange().arrive(1, {});
  host->take();
  host->word('N', 1, 0, 0);
  CHECK(room.exchange().letter(1) == 'N');
  CHECK(host->take(SrvLineStatus).size() == 1);
  auto screener = room.seat("screener", 1, 0, "10.1.0.5");
  CHECK(screener->take(SrvFullStatus).size() == 1);
}

TEST_CASE("control characters in a name reach no log, no audit and no refusal") {
  ServerRoom room;
  auto stranger = room.connect("10.0.0.66");
  stranger->log_in("ho\nst\x1b[2J\x07", "x\ny");
  CHECK(stranger->take_last(SrvPasswordResult).AltInfo == 'F');
  room.wait(1s);
  for (const std::string& line : room.log) CHECK_FALSE(has_control_code(line));
  for (const platform::AuditEntry& entry : room.store.content().audit) {
    CHECK_FALSE(has_control_code(entry.event.user + entry.event.action + entry.event.detail));
  }
}

TEST_CASE("control characters in caller data and messages cut no frame and reach nobody") {
  ServerRoom room;
  auto screener = room.seat("screener");
  auto host = room.seat("host");
  room.exchange().arrive(1, "555\n\x1b[0m\x05\x05");
  const std::string codes = all_control_codes();
  std::string entered;
  for (int field = 0; field < 12; ++field) entered += codes + field_end;
  screener->send(screener->packet(CmdCallerData, 1, entered));
  screener->send(screener->packet(CmdFlashMessage, no_value, "1\0022\2" + codes));
  room.wait(1s);
  const std::vector<ServerPacket> told = host->take();
  CHECK(host->cut_as_sent());
  const auto last = [&told](ServerCommand command) {
    std::string buffer;
    for (const ServerPacket& packet : told) {
      if (packet.CMD == static_cast<std::uint8_t>(command)) buffer = packet.Buffer;
    }
    return buffer;
  };
  const auto data = decode_caller_data(last(SrvCallerData));
  REQUIRE(data);
  CHECK(data->sender.starts_with("A"));
  for (const std::string& field : data->fields) CHECK_FALSE(has_control_code(field));
  const auto message = decode_text_message(last(SrvFlashMessage));
  REQUIRE(message);
  CHECK(message->text.starts_with("A"));
  CHECK_FALSE(has_control_code(in_one_line(message->text)));
  room.exchange().leave(1);
  room.wait(1s);
  REQUIRE_FALSE(room.store.content().calls.empty());
  for (const auto& [id, call] : room.store.content().calls) {
    CHECK_FALSE(has_control_code(call.number + call.told_by));
    for (const std::string& text : call.told) CHECK_FALSE(has_control_code(text));
  }
}

TEST_CASE("a seat that sends a frame in drips holds nobody up and works") {
  ServerRoom room;
  auto dripping = room.seat("screener");
  auto host = room.seat("host");
  room.exchange().arrive(1, {});
  const std::string frame = sent_frame([&] {
    ServerPacket packet = dripping->packet(CmdLineCommand, 1);
    packet.Buffer = "P";
    packet.AltInfo = 0;
    return packet;
  }());
  host->take();
  for (const char byte : frame) {
    CHECK(room.exchange().letter(1) == 'R');
    dripping->send_bytes({byte});
    room.wait(2s);
    host->send(host->packet(CmdTimeRequest));
  }
  CHECK(dripping->is_open());
  CHECK(room.exchange().letter(1) == 'P');
  CHECK(host->take(SrvLineStatus).size() == 1);
}

TEST_CASE("a console that floods is refused, told so once, and others work on") {
  ServerRoom room;
  auto flood = room.seat("host");
  auto screener = room.seat("screener");
  room.exchange().arrive(1, {});
  flood->take();
  std::string frames;
  for (int i = 0; i < 5000; ++i) frames += sent_frame(flood->packet(CmdRequestStatus));
  flood->send_bytes(frames);
  std::vector<ServerPacket> told = flood->take();
  const auto messages = std::count_if(told.begin(), told.end(), [](const ServerPacket& packet) {
    return packet.CMD == static_cast<std::uint8_t>(SrvMessage);
  });
  CHECK(messages == 1);
  CHECK(told.size() < 1100);
  CHECK(room.figure("refusals_total{reason=\"too_many\"}") > 3900);
  screener->take();
  screener->word('P', 1, 0, 0);
  CHECK(screener->take(SrvLineStatus).size() == 1);
  CHECK(flood->is_open());
  room.wait(2s);
  flood->take();
  flood->send(flood->packet(CmdRequestStatus));
  CHECK(flood->take(SrvFullStatus).size() == 1);
}

TEST_CASE(
    "whoever holds up a slow exchange hands over no more than a share, and others come through") {
  GroupDesk desk;
  NotingSeat flood(1, "flood");
  NotingSeat host(2, "host");
  for (int i = 0; i < 100; ++i) CHECK(desk.order(flood, "H01", 1));
  desk.exchange->held_up_for = 600ms;
  desk.exchange->words.clear();
  for (int i = 0; i < 100; ++i) desk.order(flood, "H01", 1);
  CHECK(desk.exchange->words.size() == 20);
  CHECK(desk.group.lines().obey(flood, {LineOrder::Kind::Word, "H01", 1}) == Refusal::TooMany);
  CHECK(desk.order(host, "N02", 2));
  CHECK(desk.exchange->words.back() == "N02");
  desk.wait(1s);
  desk.exchange->words.clear();
  for (int i = 0; i < 100; ++i) desk.order(flood, "H01", 1);
  CHECK(desk.exchange->words.size() == 10);
  desk.exchange->held_up_for = 500ms;
  for (int i = 0; i < 100; ++i) CHECK(desk.order(flood, "H01", 1));
}

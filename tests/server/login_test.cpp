// What a console is answered while it logs in, and what the server learns from its profile.

#include <doctest/doctest.h>

#include <algorithm>

#include "server/server_room.h"
#include "wire/password_scramble.h"
#include "wire/rights_layout.h"
#include "wire/server_packet_codec.h"

namespace lineweir::server {
namespace {

using namespace std::chrono_literals;
using enum ClientCommand;
using enum ServerCommand;

std::string login_frame(const FrameConsole& console, ClientCommand command, const std::string& user,
                        const std::string& password) {
  return sent_frame(
      console.packet(command, no_value,
                     login_buffer(pass_encode(user, 7).value(), pass_encode(password, 8).value())));
}

std::vector<int> codes(FrameConsole& console) {
  std::vector<int> found;
  for (const ServerPacket& packet : console.take()) found.push_back(packet.CMD);
  return found;
}

// A profile whose name for caller data is that one; the fields in front of it are empty.
std::string profile_of(const std::string& operator_name) {
  return std::string(43, '1') + "\3\3\3\3\3\3" + operator_name + "\3";
}

void enter_data(FrameConsole& console, const std::string& sender) {
  console.send(console.packet(CmdCallerData, 1, sender + "\2Bob\2"));
}

}  // namespace

TEST_SUITE("server/login") {
  TEST_CASE("what comes behind a login waits for its answer, and is then done in its order") {
    ServerRoom room;
    room.passwords.take(2s);
    for (const ClientCommand command :
         {CmdPasswordLogin, CmdLoginCheck, CmdRequestFirstUnblocked, CmdRequestAccessRights}) {
      auto console = room.connect();
      console->send_bytes(login_frame(*console, command, "host", host_password) +
                          sent_frame(console->packet(CmdTimeRequest)));
      CHECK(console->take().empty());
      room.wait(3s);
      const auto told = codes(*console);
      REQUIRE(told.size() == 2);
      CHECK(told[1] == static_cast<int>(SrvTime));
    }
  }

  TEST_CASE("what comes behind a login that is refused is done too") {
    ServerRoom room;
    for (const ClientCommand command :
         {CmdPasswordLogin, CmdLoginCheck, CmdRequestFirstUnblocked, CmdRequestAccessRights}) {
      auto console = room.connect();
      console->send_bytes(login_frame(*console, command, "host", "wrong") +
                          sent_frame(console->packet(CmdTimeRequest)));
      CHECK(console->take().empty());
      room.wait(1s);
      const auto told = codes(*console);
      REQUIRE(!told.empty());
      CHECK(told.back() == static_cast<int>(SrvTime));
    }
    // So it is where the login holds nothing that could be looked at.
    for (const ClientCommand command : {CmdPasswordLogin, CmdLoginCheck}) {
      auto console = room.connect();
      console->send_bytes(
          sent_frame(console->packet(command, no_value, command == CmdLoginCheck ? "" : "x")) +
          sent_frame(console->packet(CmdTimeRequest)));
      CHECK(console->take().empty());
      room.wait(1s);
      CHECK(codes(*console).size() == 2);
    }
    CHECK(room.figure("refusals_total{reason=\"malformed\"}") == 1);
    CHECK(room.figure("refusals_total{reason=\"not_let_in\"}") == 1);
  }

  TEST_CASE("who waits long for the answer to a login is not taken for silent") {
    ServerRoom room;
    room.passwords.take(50s);
    auto console = room.connect();
    console->send_bytes(login_frame(*console, CmdPasswordLogin, "host", host_password));
    room.wait(60s);
    REQUIRE(console->is_open());
    CHECK(console->take_last(SrvPasswordResult).AltInfo == 'T');
    room.wait(20s);
    CHECK(console->is_open());

    auto asking = room.connect();
    asking->send_bytes(login_frame(*asking, CmdRequestFirstUnblocked, "host", "wrong"));
    room.wait(55s);
    CHECK(asking->is_open());
    asking->send_bytes(login_frame(*asking, CmdRequestFirstUnblocked, "host", host_password));
    room.wait(55s);
    CHECK(asking->is_open());
    CHECK(asking->take_last(SrvFirstUnblocked).AltInfo == 1);
  }

  TEST_CASE("a console that leaves while its password is looked at harms nothing") {
    ServerRoom room;
    room.passwords.take(2s);
    for (const ClientCommand command : {CmdPasswordLogin, CmdRequestFirstUnblocked}) {
      auto console = room.connect();
      console->send_bytes(login_frame(*console, command, "host", host_password));
      console->hang_up();
      auto refused = room.connect();
      refused->send(refused->packet(command, no_value, "x"));
      refused->hang_up();
    }
    room.wait(10s);
    CHECK(room.figure("connections") == 0);
    CHECK(room.figure("seats_let_in") == 0);
    auto console = room.connect();
    console->send_bytes(login_frame(*console, CmdPasswordLogin, "host", host_password));
    room.crash();
    room.wait(10s);
  }

  TEST_CASE("rights in a group are told to who asks with a password, or was let in") {
    ServerRoom room;
    auto console = room.connect();
    const auto asked = [&](int group, const std::string& user, const std::string& password) {
      ServerPacket packet = console->packet(
          CmdRequestAccessRights, no_value,
          login_buffer(pass_encode(user, 7).value(), pass_encode(password, 8).value()));
      packet.GroupNo = field_byte(group);
      console->send(packet);
      room.wait(1s);
      return console->take(SrvRights);
    };
    REQUIRE(asked(1, "host", host_password).size() == 1);
    CHECK(asked(1, "host", host_password)[0].Buffer == rights_of(RightsTemplate::Host));
    CHECK(asked(1, "host", host_password)[0].GroupNo == 1);
    CHECK(asked(1, "only2", host_password).at(0).Buffer == no_rights);
    CHECK(asked(2, "only2", host_password).at(0).Buffer == rights_of(RightsTemplate::Host));
    CHECK(asked(1, "host", "wrong").empty());
    const auto without_name = [&](FrameConsole& of, ClientCommand command) {
      ServerPacket packet = of.packet(command);
      packet.GroupNo = field_byte(of.group);
      of.send(packet);
      return of.take();
    };
    CHECK(without_name(*console, CmdRequestAccessRights).empty());
    CHECK(room.figure("refusals_total{reason=\"not_let_in\"}") == 1);
    auto seat = room.seat("only2", 2);
    seat->take();
    CHECK(without_name(*seat, CmdRequestAccessRights).at(0).Buffer ==
          rights_of(RightsTemplate::Host));
    CHECK(without_name(*seat, CmdRequestFirstUnblocked).at(0).AltInfo == 2);
    seat->send(seat->packet(CmdRequestFirstUnblocked, no_value, "x"));
    CHECK(seat->take().empty());
    CHECK(room.figure("refusals_total{reason=\"malformed\"}") == 1);
  }

  TEST_CASE("a seat that was let in by its place is told its rights, whatever it sends") {
    ServerOptions options = ServerRoom::two_studios();
    options.fixed_seats = {{"10.0.0.9", "only2"}, {"10.0.0.7", "nobody"}};
    ServerRoom room(options);
    auto console = room.connect("10.0.0.9");
    console->send(console->packet(CmdLoginCheck));
    CHECK(console->take_last(SrvLoginCheckResult).AltInfo == 'F');
    console->send(console->packet(CmdRequestFirstUnblocked, no_value, "x"));
    CHECK(console->take_last(SrvFirstUnblocked).AltInfo == 2);
    auto typing = room.connect("10.0.0.9");
    typing->log_in("", "");
    CHECK(typing->take_last(SrvPasswordResult).AltInfo == 'T');
    typing->join(2);
    CHECK(typing->take(SrvFullStatus).size() == 1);
    // Who was let in elsewhere as the same user gives a password.
    auto elsewhere = room.seat("only2", 2);
    elsewhere->take();
    elsewhere->send(elsewhere->packet(CmdRequestFirstUnblocked, no_value, "x"));
    CHECK(elsewhere->take(SrvFirstUnblocked).empty());
    auto nobody = room.connect("10.0.0.7");
    nobody->send(nobody->packet(CmdLoginCheck));
    room.wait(1s);
    CHECK(nobody->take_last(SrvLoginCheckResult).AltInfo == 'T');
  }

  TEST_CASE("a first group that is open may be another server's, and there may be none") {
    ServerRoom room;
    platform::Account far = room.store.content().accounts.at("host");
    far.name = "far";
    far.rights = {{12, rights_of(RightsTemplate::Host)}};
    platform::Account none = far;
    none.name = "none";
    none.rights = {{40, rights_of(RightsTemplate::Host)}};
    room.crash();
    room.store.content().apply(far);
    room.store.content().apply(none);
    room.store.content().apply(
        platform::StudioPlace{.group = 12, .name = "Studio 12", .address = "b:2001"});
    room.start();
    const auto first_open = [&](const std::string& user) {
      auto console = room.connect();
      console->log_in(user, host_password, CmdRequestFirstUnblocked);
      return console->take(SrvFirstUnblocked).at(0).AltInfo;
    };
    CHECK(first_open("far") == 12);
    CHECK(first_open("none") == no_value);
    CHECK(first_open("only2") == 2);
  }

  TEST_CASE("a console that hasn't been in any group yet is told its rights in the first") {
    ServerRoom room;
    for (const int group : {0, int{no_value}, 1}) {
      auto console = room.connect();
      console->group = group;
      console->log_in("host", host_password);
      const ServerPacket told = console->take_last(SrvPasswordResult);
      CHECK(told.GroupNo == 1);
      CHECK(told.Buffer == rights_of(RightsTemplate::Host));
    }
  }

  TEST_CASE("logins stand in the log and in the audit, and when a user was last seen is kept") {
    ServerRoom room;
    auto host = room.seat("host", 1, 0, "10.0.0.4");
    room.wait(1s);
    CHECK(std::ranges::count(room.log, "login: user \"host\" from 10.0.0.4") == 1);
    const auto logins = [&] {
      return std::ranges::count_if(room.store.content().audit, [](const auto& entry) {
        return entry.event.action == "login" && entry.event.user == "host" &&
               entry.event.detail == "10.0.0.4";
      });
    };
    CHECK(logins() == 1);
    const auto seen = room.store.content().accounts.at("host").last_seen;
    CHECK(seen.count() > 0);
    // Again on the same connection is no other login, but it was seen again.
    host->log_in("host", host_password);
    room.wait(1s);
    CHECK(logins() == 1);
    CHECK(room.figure("logins_total") == 1);
    CHECK(room.store.content().accounts.at("host").last_seen > seen);
  }

  TEST_CASE("one who logs in as another on the same connection is the other alone") {
    ServerRoom room;
    auto console = room.seat("host");
    auto screener = room.seat("screener");
    room.exchange().arrive(1, {});
    console->log_in("screener", host_password);
    CHECK(room.figure("seats_let_in") == 2);
    CHECK(room.figure("seats{group=\"1\"}") == 1);
    console->join(1);
    console->take();
    // "host" is no name of this console's any more.
    enter_data(*screener, "host");
    CHECK(console->take_last(SrvCallerData).Buffer.starts_with("host\2Bob"));
    enter_data(*screener, "screener");
    CHECK(console->take_last(SrvCallerData).Buffer.starts_with("\2Bob"));
  }

  TEST_CASE("the name in a user's profile is the console's own, from when it is sent or stored") {
    ServerRoom room;
    auto host = room.seat("host");
    auto screener = room.seat("screener");
    room.exchange().arrive(1, {});
    const auto told_of = [&](const std::string& sender) {
      host->take();
      enter_data(*screener, sender);
      return host->take_last(SrvCallerData).Buffer;
    };
    CHECK(told_of("Anna").starts_with("Anna\2"));
    host->send(host->packet(CmdUserProfile, no_value, "host\3" + profile_of("Anna")));
    CHECK(told_of("Anna").starts_with("\2"));
    CHECK(told_of("Bert").starts_with("Bert\2"));
    room.wait(1s);
    room.crash();
    room.start();
    host = room.seat("host");
    screener = room.seat("screener");
    CHECK(told_of("Anna").starts_with("\2"));
    // A profile of flags alone has no name.
    host->send(host->packet(CmdUserProfile, no_value, "host\3" + std::string(43, '1')));
    CHECK(host->is_open());
    // Nor has one of fewer fields.
    for (const char* fields : {"\3\3", "\3\3\3\3\3\3", "a\3b\3c\3d\3e\3f\3"}) {
      host->send(host->packet(CmdUserProfile, no_value, "host\3" + std::string(43, '1') + fields));
      CHECK(told_of("f").starts_with("f\2"));
      CHECK(told_of("Anna").starts_with("\2"));
    }
  }

  TEST_CASE("rights and a profile of any length come in a frame that isn't cut before its end") {
    ServerRoom room;
    platform::Account guest = room.store.content().accounts.at("host");
    guest.name = "guest";
    // As the end of a frame begins.
    guest.rights = {{0, std::string("\5") + std::string(rights_length - 1, '\1')}};
    room.crash();
    room.store.content().apply(guest);
    room.start();
    auto console = room.seat("guest");
    console->take();
    for (std::size_t length = 0; length < 260; ++length) {
      CAPTURE(length);
      const std::string profile(length, 'x');
      console->send(console->packet(CmdUserProfile, no_value, "guest\3" + profile));
      console->log_in("guest", host_password);
      const std::string told = console->take_last(SrvPasswordResult).Buffer;
      CHECK(console->cut_as_sent());
      CHECK(told.starts_with(guest.rights.at(0) + profile));
      CHECK(told.size() <= rights_length + length + 1);
    }
  }

  TEST_CASE("a profile has a longest length, and needs the name in front of it") {
    ServerRoom room;
    auto host = room.seat("host");
    const auto send = [&](const std::string& text) {
      host->send(host->packet(CmdUserProfile, no_value, text));
      room.wait(1s);
      return room.store.content().accounts.at("host").profile.size();
    };
    CHECK(send("host\3" + std::string(8192, 'x')) == 8192);
    CHECK(send("host\3" + std::string(8193, 'x')) == 8192);
    CHECK(room.figure("refusals_total{reason=\"malformed\"}") == 1);
    CHECK(send("host") == 8192);
    CHECK(room.figure("refusals_total{reason=\"malformed\"}") == 2);
    CHECK(send(" host \3y") == 1);
  }
}

}  // namespace lineweir::server

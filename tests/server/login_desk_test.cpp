// Many who log in at once, and an address that only guesses.

#include "server/login_desk.h"

#include <doctest/doctest.h>

#include <algorithm>

#include "server/server_room.h"
#include "wire/password_scramble.h"
#include "wire/server_packet_codec.h"

namespace lineweir::server {
namespace {

using namespace std::chrono_literals;
using enum ClientCommand;
using enum ServerCommand;

void ask_to_be_let_in(FrameConsole& console) {
  console.send(console.packet(
      CmdPasswordLogin, no_value,
      login_buffer(pass_encode("host", 7).value(), pass_encode(host_password, 8).value())));
}

double locked_addresses(const ServerRoom& room) {
  return room.figure("refusals_total{reason=\"address_locked\"}");
}

}  // namespace

TEST_SUITE("server/login desk") {
  TEST_CASE("of many who log in at once eight passwords are looked at, and then all the others") {
    ServerRoom room;
    room.passwords.take(100ms);
    std::vector<std::unique_ptr<FrameConsole>> consoles;
    for (int i = 0; i < 20; ++i) {
      consoles.push_back(room.connect("10.1.0." + std::to_string(i)));
      ask_to_be_let_in(*consoles.back());
    }
    CHECK(room.passwords.waiting() == LoginDesk::most_at_work);
    CHECK(room.figure("logins_waiting") == 20);
    room.wait(5s);
    for (const auto& console : consoles)
      CHECK(console->take_last(SrvPasswordResult).AltInfo == 'T');
    CHECK(room.figure("logins_waiting") == 0);
  }

  TEST_CASE("an address that guesses isn't heard any more, while others are let in") {
    ServerRoom room;
    const std::string guesser = "10.0.0.66";
    for (int i = 0; i < 50; ++i) {
      room.connect(guesser)->log_in("user " + std::to_string(i), "guess");
    }
    CHECK(locked_addresses(room) == 0);
    const auto is_let_in = [&](const std::string& address) {
      auto console = room.connect(address);
      console->log_in("host", host_password);
      return console->take_last(SrvPasswordResult).AltInfo == 'T';
    };
    CHECK(is_let_in("10.0.0.7"));
    {
      // No password is looked at for it: the answer comes before one could be.
      room.passwords.take(1min);
      auto console = room.connect(guesser);
      ask_to_be_let_in(*console);
      CHECK(room.passwords.waiting() == 0);
      CHECK(console->take().empty());
      room.wait(LoginDesk::refused_after);
      CHECK(console->take_last(SrvPasswordResult).AltInfo == 'F');
      room.passwords.take(0s);
    }
    CHECK(locked_addresses(room) == 1);
    CHECK(std::ranges::count(room.log,
                             "login refused: user \"host\" from 10.0.0.66 (address_locked)") == 1);
    room.wait(1min);
    CHECK(is_let_in(guesser));
  }

  TEST_CASE("who guesses at one name alone locks his address too, and fills no audit") {
    ServerRoom room;
    const std::string guesser = "10.0.0.66";
    for (int i = 0; i < 100; ++i) room.connect(guesser)->log_in("host", "guess");
    CHECK(locked_addresses(room) == 50);
    room.wait(1s);
    const auto refused = [&](const std::string& why) {
      return std::ranges::count(room.store.content().audit, guesser + ", " + why,
                                [](const auto& entry) { return entry.event.detail; });
    };
    CHECK(refused("wrong_password") == 5);
    CHECK(refused("user_locked") == 45);
    CHECK(refused("address_locked") == 1);
  }

  TEST_CASE("who asks while the address is being locked is refused as the others") {
    ServerRoom room;
    const std::string guesser = "10.0.0.66";
    for (int i = 0; i < 49; ++i) {
      room.connect(guesser)->log_in("user " + std::to_string(i), "guess");
    }
    room.passwords.take(1s);
    auto wrong = room.connect(guesser);
    wrong->send(wrong->packet(
        CmdPasswordLogin, no_value,
        login_buffer(pass_encode("anna", 7).value(), pass_encode("guess", 8).value())));
    auto right = room.connect(guesser);
    ask_to_be_let_in(*right);
    room.wait(5s);
    CHECK(right->take_last(SrvPasswordResult).AltInfo == 'F');
    CHECK(locked_addresses(room) == 1);
  }
}

}  // namespace lineweir::server

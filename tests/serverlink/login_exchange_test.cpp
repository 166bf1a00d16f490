#include "serverlink/login_exchange.h"

#include <doctest/doctest.h>

#include <string>
#include <vector>

#include "serverlink/credentials.h"
#include "support/scripted_console.h"
#include "wire/server_packet_framing.h"

namespace lineweir {
namespace {

using platform::Milliseconds;
using test::ScriptedConsole;

constexpr int check_command = 21;

struct LoginDesk : ScriptedConsole {
  // Without the trace, as it makes the wait longer.
  explicit LoginDesk(std::string_view command_line = "") : ScriptedConsole(command_line) {
    platform.winsock1.stand_connected();
    console.login.UserName = "Ann";
    console.login.UserPassword = "secret";
  }

  void server_answers(char alt_info, const std::string& buffer) {
    ServerPacket answer;
    answer.CMD = static_cast<std::uint8_t>(ServerCommand::SrvLoginCheckResult);
    answer.AltInfo = static_cast<std::uint8_t>(alt_info);
    answer.set_buffer(buffer);
    pad(answer.Buffer);
    platform.winsock1.reply(check_command, framed(body_of(answer)));
  }

  std::vector<ServerPacket> take_packets() {
    std::vector<ServerPacket> packets;
    for (const std::string& frame : platform.winsock1.take_writes()) {
      packets.push_back(packet_of(std::string_view(frame).substr(2, frame.size() - 4)));
    }
    return packets;
  }
};

// A received profile of this group, long enough to count.
std::string profile_of_group(const std::string& group) {
  return "????????????" + std::string(43, '0') + "7000\0039000\003" + group + "\003";
}

TEST_CASE("a login check sends name and password, scrambled with the seconds of the time") {
  LoginDesk desk;
  desk.server_answers('F', "????????????");
  CHECK(desk.console.login_exchange.TextWrit_PasswordA(false) == LoginResult::Accepted);
  const auto packets = desk.take_packets();
  REQUIRE(packets.size() == 1);
  CHECK(packets[0].CMD == check_command);
  CHECK(packets[0].LineNo == no_value);
  CHECK(packets[0].AltInfo == no_value);
  CHECK(packets[0].Bank == no_value);
  const auto login = decode_login(packets[0].Buffer);
  REQUIRE(login);
  CHECK(*login == Login{"Ann", "secret"});
}

TEST_CASE("a login check that skips the password has an empty buffer") {
  LoginDesk desk;
  desk.server_answers('F', "????????????");
  CHECK(desk.console.login_exchange.TextWrit_PasswordA(true) == LoginResult::Accepted);
  const auto packets = desk.take_packets();
  REQUIRE(packets.size() == 1);
  CHECK(packets[0].Buffer.empty());
  CHECK(packets[0].Size == std::array<std::uint8_t, 2>{0, 0});
}

TEST_CASE("an answer other than F refuses the login") {
  for (const char mark : {'T', 'f', '\0', '\xff'}) {
    LoginDesk desk;
    desk.server_answers(mark, "");
    CHECK(desk.console.login_exchange.TextWrit_PasswordA(false) == LoginResult::Rejected);
    CHECK(desk.take_messages().empty());
  }
}

TEST_CASE("an answer of the other exchange lets the console go on") {
  for (const int code : {1, 20}) {
    LoginDesk desk;
    desk.platform.loop.schedule(Milliseconds{30}, [&] { desk.console.login.LastReplyCode = code; });
    CHECK(desk.console.login_exchange.TextWrit_PasswordA(false) == LoginResult::Accepted);
  }
}

TEST_CASE("no answer within 20 seconds is told, 2000 seconds while the trace is on") {
  LoginDesk desk;
  const auto start = desk.platform.loop.now();
  CHECK(desk.console.login_exchange.TextWrit_PasswordA(false) == LoginResult::NoAnswer);
  CHECK(desk.take_messages() == std::vector<std::string>{"Password response not received!"});
  CHECK(desk.platform.loop.now() - start > Milliseconds(20'000));
  CHECK(desk.platform.loop.now() - start <= Milliseconds(20'100));

  LoginDesk traced("D");
  const auto traced_start = traced.platform.loop.now();
  CHECK(traced.console.login_exchange.TextWrit_PasswordA(false) == LoginResult::NoAnswer);
  CHECK(traced.platform.loop.now() - traced_start > Milliseconds(2'000'000));
}

TEST_CASE("a check without a connection is reported and comes to nothing") {
  ScriptedConsole desk;
  CHECK(desk.console.login_exchange.TextWrit_PasswordA(false) == LoginResult::NoAnswer);
  const auto trace = desk.take_trace();
  REQUIRE_FALSE(trace.empty());
  CHECK(trace.back().starts_with("TextWrit_PasswordA Error - "));
}

TEST_CASE("an accepted connection takes the console to the group of its profile") {
  LoginDesk desk;
  desk.server_answers('F', profile_of_group("4"));
  CHECK(desk.console.login_exchange.TextWrit_PasswordA(true) == LoginResult::Accepted);
  CHECK(desk.console.program.GroupNumber == 4);
  const auto packets = desk.take_packets();
  REQUIRE(packets.size() == 2);
  CHECK(packets[1].CMD == 24);
  CHECK(packets[1].GroupNo == 4);
  CHECK(packets[1].Console == no_value);
  CHECK(*decode_login(packets[1].Buffer) == Login{"Ann", "secret"});
}

TEST_CASE("the profile of the present group asks for no rights") {
  LoginDesk desk;
  desk.server_answers('F', profile_of_group("1"));
  desk.console.login_exchange.TextWrit_PasswordA(true);
  CHECK(desk.console.program.GroupNumber == 1);
  CHECK(desk.take_packets().size() == 1);
}

TEST_CASE("a login with a password stays in its group") {
  LoginDesk desk;
  desk.server_answers('F', profile_of_group("4"));
  desk.console.login_exchange.TextWrit_PasswordA(false);
  CHECK(desk.console.program.GroupNumber == 1);
}

TEST_CASE("an accepted user stamps the caller data, unless a name is there") {
  LoginDesk desk;
  desk.server_answers('F', "????????????");
  desk.console.program.OperatorName = "  ";
  desk.console.login_exchange.TextWrit_PasswordA(false);
  CHECK(desk.console.program.OperatorName == "Ann");
  desk.console.program.OperatorName = "Bea";
  desk.console.login_exchange.TextWrit_PasswordA(false);
  CHECK(desk.console.program.OperatorName == "Bea");
}

TEST_CASE("a refused user doesn't stamp the caller data") {
  LoginDesk desk;
  desk.server_answers('T', "");
  desk.console.login_exchange.TextWrit_PasswordA(false);
  CHECK(desk.console.program.OperatorName.empty());
  CHECK(desk.console.data_sender.sender_name() == desk.console.program.ClientId);
}

TEST_CASE("a character that can't be scrambled is reported and gives the empty text") {
  ScriptedConsole desk;
  desk.platform.clock.set({2026, 1, 5, 10, 0, 59});
  CHECK(TextWrit_PassEncode(desk.console, "\x88") == "w\xff");
  CHECK(TextWrit_PassEncode(desk.console, "\x89").empty());
  CHECK(desk.take_trace().back().starts_with("TextWrit_PassEncode Error - "));
}

TEST_CASE("the end of the program ends the wait for an answer, without a message") {
  LoginDesk desk;
  const auto start = desk.platform.loop.now();
  desk.platform.loop.schedule(Milliseconds(1000), [&] { desk.console.Lineweir.unload(); });
  CHECK(desk.console.login_exchange.TextWrit_PasswordB() == LoginResult::Superseded);
  CHECK(desk.platform.loop.now() - start < Milliseconds(1200));
  CHECK(desk.take_messages().empty());
}

TEST_CASE("a newer exchange or connection ends the wait of an older one, without a message") {
  LoginDesk desk;
  const auto start = desk.platform.loop.now();
  LoginResult newer = LoginResult::Superseded;
  desk.platform.loop.schedule(Milliseconds(1000), [&] {
    desk.server_answers('F', "????????????");
    newer = desk.console.login_exchange.TextWrit_PasswordA(false);
  });
  CHECK(desk.console.login_exchange.TextWrit_PasswordB() == LoginResult::Superseded);
  CHECK(newer == LoginResult::Accepted);
  desk.platform.loop.schedule(Milliseconds(1000), [&] { desk.console.server_connection.begin(); });
  CHECK(desk.console.login_exchange.TextWrit_PasswordB() == LoginResult::Superseded);
  CHECK(desk.platform.loop.now() - start < Milliseconds(2500));
  CHECK(desk.take_messages().empty());
}

}  // namespace
}  // namespace lineweir

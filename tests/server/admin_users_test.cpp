// Users, their passwords, locks, rights and profiles, as administrators work on them.

#include <doctest/doctest.h>

#include "server/short_requests.h"
#include "wire/password_scramble.h"
#include "wire/rights_layout.h"

using namespace lineweir;
using namespace lineweir::server;
using namespace lineweir::test;
using admin::Command;
using admin::Field;
using admin::Request;
using nlohmann::json;
using namespace std::chrono_literals;

TEST_CASE("A user who was added is let in, has the rights of the template, and is kept") {
  ServerRoom room;
  AdminTool tool(room);
  CHECK(tool.refusal(user_add("anna", "screener")) == "");
  Request only_second = user_add("ben");
  only_second.values[Field::Groups] = Numbers{2};
  CHECK(tool.refusal(only_second) == "");
  CHECK(is_let_in(room, "anna", "pass word"));
  CHECK_FALSE(is_let_in(room, "anna", "password"));
  // It is in the store when that is told.
  const auto& kept = room.store.content().accounts;
  CHECK(kept.at("anna").rights ==
        std::map<int, std::string>{{0, rights_of(RightsTemplate::Screener)}});
  CHECK(kept.at("ben").rights == std::map<int, std::string>{{2, rights_of(RightsTemplate::Host)}});
  CHECK(kept.at("anna").password_hash.find("pass word") == std::string::npos);

  const auto users = tool.rows({Command::UserList});
  CHECK(row_named(users, "ben").at("groups") == json{2});
  CHECK(row_named(users, "ben").at("last_seen") == 0);
  CHECK(row_named(users, "anna").at("groups") == json{0});
  CHECK(row_named(users, "anna").at("last_seen") != 0);
  CHECK(administrators_entries(tool) ==
        Texts{"user added: anna, screener", "user added: ben, host"});
}

TEST_CASE("A user whom nobody could log in as is refused with the reason") {
  ServerRoom room;
  AdminTool tool(room);
  CHECK(tool.refusal(user_add("")) == "The name is empty.");
  for (const char* name : {"a\tb", "a\x7F", "a\u0080", "a\u009F", "a\x1F"}) {
    CHECK(tool.refusal(user_add(name)) == "The name holds a control character.");
  }
  CHECK(tool.refusal(user_add("a\u00A0b")).starts_with("The name holds \"\u00A0\""));
  CHECK(tool.refusal(user_add(" a")) ==
        "The name begins or ends with a blank, which consoles cut off.");
  CHECK(tool.refusal(user_add("123456789012345678901")) ==
        "The name is too long: at most 20 characters.");
  CHECK(tool.refusal(user_add("12345678901234567890")) == "");
  CHECK(is_let_in(room, "12345678901234567890", "pass word"));
  CHECK(tool.refusal(user_add("\xE6\xBC\xA2")) ==
        "The name holds a character that the consoles don't have.");
  CHECK(
      tool.refusal(user_add("Zoë")) ==
      "The name holds \"ë\", which a console can't send: take letters without accents, digits and "
      "common signs.");
  CHECK(tool.refusal(user_add("host")) == "There is a user \"host\" already.");
  CHECK(tool.refusal(user_add("x", "boss")) ==
        "A template is \"engineer\", \"host\" or \"screener\".");
  Request elsewhere = user_add("x");
  elsewhere.values[Field::Groups] = Numbers{1, 7};
  CHECK(tool.refusal(elsewhere) == "There is no group 7 here.");
  CHECK(tool.refusal(user_add("x", "host", "")) == "The password is empty.");
  CHECK(tool.refusal(user_add("x", "host", "1234567890123456")) ==
        "The password is too long: at most 15 characters.");
  CHECK(tool.refusal(user_add("x", "host", "sécret")).starts_with("The password holds \"é\""));
  CHECK(tool.refusal(user_add("x", "host", "123456789012345")) == "");
  CHECK(is_let_in(room, "x", "123456789012345"));
  CHECK(room.store.content().accounts.size() == 5);
}

TEST_CASE("Every password that is taken can be typed at every second") {
  ServerRoom room;
  AdminTool tool(room);
  // The euro sign is the highest that some sets have below 137.
  CHECK(tool.refusal(user_add("x", "host", "~}|{€ˆ")) == "");
  const std::string typed = room.letters.from_utf8("~}|{€ˆ");
  for (int second = 0; second < 60; ++second) CHECK(pass_encode(typed, second));
  CHECK(is_let_in(room, "x", typed));
}

TEST_CASE("Of two who add the same user at once the first does") {
  ServerRoom room;
  AdminTool first(room);
  AdminTool second(room);
  room.passwords.take(1s);
  first.send_bytes(admin::line_of(user_add("x", "host", "one")) + '\n');
  second.send_bytes(admin::line_of(user_add("x", "host", "two")) + '\n');
  room.wait(5s);
  CHECK(first.take().front().at("ok") == true);
  CHECK(second.take().front().at("error") == "There is a user \"x\" already.");
  CHECK(is_let_in(room, "x", "one"));
}

TEST_CASE("A new password holds from then on, and who works goes on working") {
  ServerRoom room;
  AdminTool tool(room);
  const auto seat = room.seat("host");
  CHECK(tool.refusal(new_password("host", "another")) == "");
  CHECK_FALSE(is_let_in(room, "host", host_password));
  CHECK(is_let_in(room, "host", "another"));
  CHECK(seat->is_open());
  CHECK(tool.refusal(new_password("nobody", "x")) == "There is no user \"nobody\".");
  CHECK(tool.refusal(new_password("host", "")) == "The password is empty.");
}

TEST_CASE("A locked user is told, loses the seat and isn't let in until unlocked") {
  ServerRoom room;
  AdminTool tool(room);
  const auto seat = room.seat("host");
  seat->take();
  CHECK(tool.refusal(of_user(Command::UserLock, "host")) == "");
  CHECK(seat->heard_to_the_end());
  CHECK(seat->take_last(ServerCommand::SrvMessage).Buffer ==
        "An administrator has locked the user host.");
  CHECK_FALSE(is_let_in(room, "host", host_password));
  CHECK(row_named(tool.rows({Command::UserList}), "host").at("locked") == true);
  CHECK(tool.refusal(of_user(Command::UserUnlock, "host")) == "");
  CHECK(is_let_in(room, "host", host_password));
  CHECK(tool.refusal(of_user(Command::UserLock, "nobody")) == "There is no user \"nobody\".");
  CHECK(tool.refusal(of_user(Command::UserLock, std::string(51'000, 'x'))) ==
        "There is no user \"" + std::string(100, 'x') + "…\".");
  CHECK(tool.refusal(of_user(Command::UserUnlock, "nobody")) == "There is no user \"nobody\".");
}

TEST_CASE("A user who was locked by wrong passwords is shown so and can be unlocked") {
  ServerRoom room;
  AdminTool tool(room);
  for (int i = 0; i < 5; ++i) CHECK_FALSE(is_let_in(room, "host", "wrong"));
  CHECK_FALSE(is_let_in(room, "host", host_password));
  CHECK(row_named(tool.rows({Command::UserList}), "host").at("locked_until") >
        room.clock.now().count());
  CHECK(tool.refusal(of_user(Command::UserUnlock, "host")) == "");
  CHECK(row_named(tool.rows({Command::UserList}), "host").at("locked_until") == 0);
  CHECK(is_let_in(room, "host", host_password));
}

TEST_CASE("A removed user is gone, with the seat") {
  ServerRoom room;
  AdminTool tool(room);
  const auto seat = room.seat("host");
  CHECK(tool.refusal(of_user(Command::UserRemove, "host")) == "");
  CHECK_FALSE(seat->is_open());
  CHECK_FALSE(is_let_in(room, "host", host_password));
  CHECK_FALSE(room.store.content().accounts.contains("host"));
  CHECK(tool.refusal(of_user(Command::UserRemove, "host")) == "There is no user \"host\".");
}

TEST_CASE("Rights are shown by their names, change at once for who is connected, and are kept") {
  ServerRoom room;
  AdminTool tool(room);
  const auto seat = room.seat("host");
  seat->take();
  const json before = tool.ask(right("host", 1));
  CHECK(before.at("open") == true);
  CHECK(before.at("rights").size() == rights_layout.size());
  CHECK(before.at("rights").at("ExitMenu") == true);
  CHECK(seat->take(ServerCommand::SrvRights).empty());

  const json after = tool.ask(right("host", 1, {"-ExitMenu", "+com1"}));
  CHECK(after.at("rights").at("ExitMenu") == false);
  CHECK(after.at("rights").at("Com1") == true);
  const std::string told = seat->take_last(ServerCommand::SrvRights).Buffer;
  CHECK_FALSE(allows(told, Right::ExitMenu));
  CHECK(allows(told, Right::Com1));
  // In that group alone; the others keep those of all groups.
  CHECK(room.store.content().accounts.at("host").rights.at(1) == told);
  CHECK(tool.ask(right("host", 2)).at("rights").at("ExitMenu") == true);
  CHECK(administrators_entries(tool) == Texts{"rights changed: host, group 1: -ExitMenu +com1"});
}

TEST_CASE("A group is opened to a user by a template, and closed") {
  ServerRoom room;
  AdminTool tool(room);
  CHECK(tool.ask(right("only2", 1)).at("open") == false);
  CHECK(tool.ask(right("only2", 1)).at("rights").at("Dial") == false);
  CHECK(tool.ask(right("only2", 1, {"+screener", "+ExitMenu"})).at("open") == true);
  CHECK(room.store.content().accounts.at("only2").rights.at(1) ==
        with_right(rights_of(RightsTemplate::Screener), Right::ExitMenu, true));
  CHECK(tool.ask(right("only2", 1, {"-all"})).at("open") == false);
  CHECK_FALSE(room.store.content().accounts.at("only2").rights.contains(1));
  // Of one for whom all groups are open this one is closed.
  CHECK(tool.ask(right("host", 1, {"-all"})).at("open") == false);
  CHECK(tool.ask(right("host", 2)).at("open") == true);
  CHECK(row_named(tool.rows({Command::UserList}), "host").at("groups") == json{0});
  // What is then allowed one by one is all that is allowed.
  const json opened = tool.ask(right("host", 1, {"+Dial"}));
  int allowed = 0;
  for (const auto& [name, is_allowed] : opened.at("rights").items()) {
    if (is_allowed == true) ++allowed;
  }
  CHECK(allowed == 1);
}

TEST_CASE("A seat whose group is closed to its user is told so and is in no group any more") {
  ServerRoom room;
  AdminTool tool(room);
  const auto seat = room.seat("host");
  seat->take();
  CHECK(tool.ask(right("host", 1, {"-all"})).at("open") == false);
  CHECK(seat->take_last(ServerCommand::SrvRights).Buffer == no_rights);
  CHECK(seat->is_open());
  CHECK(room.figure("seats{group=\"1\"}") == 0);
  room.exchange().arrive(1, {});
  seat->send(seat->packet(ClientCommand::CmdRequestStatus));
  CHECK(seat->take().empty());
}

TEST_CASE(
    "A change of rights elsewhere tells a seat which groups are open, and not its rights anew") {
  ServerRoom room;
  AdminTool tool(room);
  const auto seat = room.seat("only2", 2);
  seat->take();
  CHECK(tool.refusal(right("only2", 1, {"+screener"})) == "");
  auto told = seat->take();
  const auto count = [&](ServerCommand command) {
    return std::ranges::count(told, static_cast<std::uint8_t>(command), &ServerPacket::CMD);
  };
  CHECK(count(ServerCommand::SrvRights) == 0);
  REQUIRE(count(ServerCommand::SrvAllowedGroups) == 1);
  CHECK(std::ranges::find(told, static_cast<std::uint8_t>(ServerCommand::SrvAllowedGroups),
                          &ServerPacket::CMD)
            ->Buffer == "Studio 1\3Studio 2\3");
  CHECK(tool.refusal(right("only2", 2, {"-Dial"})) == "");
  CHECK(seat->take(ServerCommand::SrvRights).size() == 1);
  // What takes nothing away changes no rights either.
  CHECK(tool.refusal(right("only2", 2, {"-Dial"})) == "");
  told = seat->take();
  CHECK(count(ServerCommand::SrvRights) == 0);
  CHECK(tool.refusal(right("only2", 1, {"-all"})) == "");
  CHECK(seat->take_last(ServerCommand::SrvAllowedGroups).Buffer == "Studio 2\3");
}

TEST_CASE("A seat of a locked user leaves no caller at its handset") {
  ServerRoom room;
  AdminTool tool(room);
  const auto seat = room.seat("host");
  room.exchange().arrive(1, {});
  seat->word('P', 1, 0);
  CHECK(tool.refusal(of_user(Command::UserLock, "host")) == "");
  CHECK(room.exchange().letter(1) == 'P');
  room.wait(37s);
  CHECK(room.exchange().letter(1) == 'H');
}

TEST_CASE("Rights that can't be sent are refused with the reason and change nothing") {
  ServerRoom room;
  AdminTool tool(room);
  const auto kept = room.store.content().accounts;
  CHECK(tool.refusal(right("host", 1, {"+Fly"})) == "There is no right \"Fly\".");
  CHECK(tool.refusal(right("host", 1, {"Dial"})) ==
        "\"Dial\" is no change: a right stands behind a + or -.");
  CHECK(tool.refusal(right("host", 9)) == "There is no group 9 here.");
  CHECK(tool.refusal(right("nobody", 1)) == "There is no user \"nobody\".");
  // 5 in both of two neighbouring characters: MitelOption and so on can't do that alone.
  Texts changes = {"-all"};
  for (const char* name : {"LogDataOptionsMenu", "AutoDataEntry", "ScreenerMode", "MitelPhone1"}) {
    changes.push_back(std::string("+") + name);
  }
  CHECK(tool.refusal(right("host", 1, changes)) ==
        "That can't be set: these rights together would end the frame that carries them.");
  CHECK(room.store.content().accounts == kept);
}

TEST_CASE("A profile is shown in UTF-8 and emptied") {
  ServerRoom room;
  platform::Account account = room.store.content().accounts.at("host");
  account.profile = std::string("0101\3Zo\xEB\3");
  room.crash();
  room.store.content().apply(account);
  room.start();
  AdminTool tool(room);
  CHECK(tool.ask(of_user(Command::ProfileShow, "host")).at("profile") == "0101\3Zoë\3");
  CHECK(tool.refusal(of_user(Command::ProfileReset, "host")) == "");
  CHECK(tool.ask(of_user(Command::ProfileShow, "host")).at("profile") == "");
  CHECK(room.store.content().accounts.at("host").profile == "");
  CHECK(tool.refusal(of_user(Command::ProfileShow, "nobody")) == "There is no user \"nobody\".");
}

// What administrators do stands in the audit.

#include <doctest/doctest.h>

#include <set>

#include "server/group_desk.h"
#include "server/short_requests.h"

using namespace lineweir;
using namespace lineweir::server;
using namespace lineweir::test;
using namespace std::chrono_literals;

TEST_SUITE("server/audit") {
  TEST_CASE("what an administrator has done stands in the audit, in its order") {
    ServerRoom room;
    AdminTool tool(room);
    for (const Request& request :
         {user_add("anna"), new_password("anna", "another"), of_user(Command::UserLock, "anna"),
          of_user(Command::UserUnlock, "anna"), of_user(Command::ProfileReset, "anna"),
          right("anna", 1, {"-Dial"}), of_user(Command::UserRemove, "anna"),
          text(Command::Message, Field::Text, "Break"), text(Command::Backup, Field::File, "/b.db"),
          text(Command::Shutdown, Field::Text, "New")}) {
      CHECK(tool.refusal(request) == "");
    }
    AdminTool second(room);
    CHECK(administrators_entries(second) ==
          Texts{"user added: anna, host", "password changed: anna", "user locked: anna",
                "user unlocked: anna", "profile reset: anna",
                "rights changed: anna, group 1: -Dial", "user removed: anna", "message: Break",
                "backup made: /b.db", "shutdown: New"});
  }

  TEST_CASE("what is refused stands in no audit") {
    ServerRoom room;
    AdminTool tool(room);
    CHECK(tool.refusal(of_user(Command::UserLock, "nobody")) != "");
    CHECK(tool.refusal(text(Command::Shutdown, Field::Text, std::string(201, 'x'))) ==
          "The text is too long: at most 200 characters.");
    CHECK(administrators_entries(tool).empty());
    CHECK(tool.is_open());
    CHECK(tool.refusal(text(Command::Shutdown, Field::Text, std::string(200, 'x'))) == "");
  }

  TEST_CASE("no two entries have one name, whichever server has made them and when") {
    PartsDesk desk;
    std::set<std::string> names;
    Audit second(desk.clock, desk.random, desk.outbox);
    for (Audit* const audit : {&desk.audit, &second}) {
      for (int i = 0; i < 2; ++i) audit->note("anna", "login", "here");
    }
    desk.loop.advance(1s);
    for (const auto& entry : desk.store.content().audit) names.insert(entry.event.id);
    CHECK(names.size() == 4);
  }
}

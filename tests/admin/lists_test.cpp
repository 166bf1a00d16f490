// What an administrator sees of each list: all of its columns, under their headings.

#include <doctest/doctest.h>
#include <stdlib.h>

#include "admin/admin_desk.h"

namespace {

// What the program makes of a list that has this row.
std::string shown(std::vector<std::string> words, const std::string& row) {
  ::setenv("TZ", "UTC", 1);
  const LineServer server([&](const std::string&) {
    return R"({"ok": true, "rows": [)" + row + R"(], "more": false})";
  });
  words.insert(words.begin(), {"--socket", server.path()});
  const ProgramRun run = run_admin(std::move(words));
  CHECK(run.errors == "");
  return run.out;
}

const std::string call =
    R"({"id": 7, "group": 1, "line": 3, "number": "0555", "began": 1769882730250,
        "answered": 1769882790250, "aired": 1769882850250, "ended": 1769882910250,
        "told_by": "ann", "name": "Bob", "address": "a", "city": "Hull", "state": "b",
        "zip": "c", "phone": "d", "station": "e", "gender": "f", "comments": "ferry",
        "user_field": "g"})";

}  // namespace

TEST_CASE("Users are listed with their groups, locks and seats") {
  CHECK(shown({"user", "list"},
              R"({"name": "ann", "groups": [1, 2], "locked": true, "locked_until": 1769882730250,
                  "last_seen": 1769882790250, "seats": 2})") ==
        "User  Groups  Locked  Locked until         Last seen            Seats\n"
        "ann   1, 2    yes     2026-01-31 18:05:30  2026-01-31 18:06:30  2\n");
}

TEST_CASE("Seats are listed with who works where, and how") {
  CHECK(shown({"seats"}, R"({"user": "ann", "group": 1, "console": 3, "mode": "studio",
                             "address": "10.0.0.1", "since": 1769882730250})") ==
        "User  Group  Console  Mode    Address   Since\n"
        "ann   1      3        studio  10.0.0.1  2026-01-31 18:05:30\n");
}

TEST_CASE("Callers of whom something is noted are listed with what and by whom") {
  CHECK(shown({"caller", "list"},
              R"({"number": "0555", "flag": "barred", "reason": "shouts", "until": "2026-12-31",
                  "by": "ann", "at": 1769882730250})") ==
        "Number  Flag    Reason  Until       By   Since\n"
        "0555    barred  shouts  2026-12-31  ann  2026-01-31 18:05:30\n");
}

TEST_CASE("A known caller is shown with calls, name and what is noted") {
  CHECK(
      shown({"caller", "show", "0555"},
            R"({"number": "0555", "calls": 12, "on_air": 3, "last_on_air": 1769882730250,
                  "name": "Bob", "city": "Hull", "flag": "barred", "reason": "shouts",
                  "until": "2026-12-31", "by": "ann", "at": 1769882790250})") ==
      "Number  Calls  On air  Last on air          Name  City  Flag    Reason  Until       By\n"
      "0555    12     3       2026-01-31 18:05:30  Bob   Hull  barred  shouts  2026-12-31  ann\n");
}

TEST_CASE("Calls are listed with what a table has room for, and whole for other programs") {
  CHECK(shown({"calls"}, call) ==
        "Group  Line  Number  Began                On air               Ended                Told "
        "by  Name  City  Comments\n"
        "1      3     0555    2026-01-31 18:05:30  2026-01-31 18:07:30  2026-01-31 18:08:30  ann  "
        "    Bob   Hull  ferry\n");
  CHECK(shown({"calls", "--csv"}, call)
            .ends_with("7,1,3,0555,2026-01-31 18:05:30,2026-01-31 18:06:30,2026-01-31 18:07:30,"
                       "2026-01-31 18:08:30,ann,Bob,a,Hull,b,c,d,e,f,ferry,g\r\n"));
}

TEST_CASE("The audit is listed with when, who and what; its hashes are for programs") {
  const std::string entry = R"({"number": 5, "at": 1769882730250, "user": "ann",
                                "action": "login", "detail": "10.0.0.1", "hash": "abc"})";
  CHECK(shown({"audit", "list"}, entry) ==
        "Number  At                   User  Action  Detail\n"
        "5       2026-01-31 18:05:30  ann   login   10.0.0.1\n");
  CHECK(shown({"--json", "audit", "list"}, entry).find(R"("hash":"abc")") != std::string::npos);
}

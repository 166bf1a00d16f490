#include <doctest/doctest.h>
#include <sys/stat.h>

#include <fstream>

#include "admin/admin_desk.h"

namespace {

const std::string fine = R"({"ok": true})";

ProgramRun run_at(const LineServer& server, std::vector<std::string> words,
                  const std::string& input = "") {
  words.insert(words.begin(), {"--socket", server.path()});
  return run_admin(std::move(words), input);
}

// Pages of a list, one behind the other.
LineServer::Answer pages(std::vector<std::string> rows) {
  return [rows = std::move(rows), next = std::size_t{0}](const std::string& line) mutable {
    if (line != R"({"command":"more"})") next = 0;
    const std::string page = rows.at(next++);
    return R"({"ok": true, "rows": [)" + page + R"(], "more": )" +
           (next < rows.size() ? "true" : "false") + "}";
  };
}

}  // namespace

TEST_CASE("A command goes to the server as one line, and what is done is done silently") {
  const LineServer server([](const std::string&) { return fine; });
  const ProgramRun run = run_at(server, {"user", "lock", "Zoë"});
  CHECK(run.status == 0);
  CHECK(run.out == "");
  CHECK(run.errors == "");
  CHECK(server.lines() == std::vector<std::string>{R"({"command":"user lock","name":"Zoë"})"});
  CHECK(run_at(server, {"--json", "user", "lock", "a"}).out == "{}\n");
}

TEST_CASE("What the server refuses is one line on the standard error, and the status 1") {
  const LineServer server([](const std::string&) {
    return R"({"ok": false, "error": "There is no user \"x\"\u001b[2J\n."})";
  });
  const ProgramRun run = run_at(server, {"user", "lock", "x"});
  CHECK(run.status == 1);
  CHECK(run.out == "");
  CHECK(run.errors == "lineweir-admin: There is no user \"x\"?[2J?.\n");
  // Of a list not even its beginning.
  CHECK(run_at(server, {"--json", "lines", "9"}).out == "");
  CHECK(run_at(server, {"calls", "--csv"}).out == "");
}

TEST_CASE("A server that isn't there, that is none, or that ends is told in one sentence") {
  const ProgramRun missing = run_admin({"--socket", "/no/such.sock", "seats"});
  CHECK(missing.status == 1);
  CHECK(missing.errors ==
        "lineweir-admin: There is no socket /no/such.sock: the server doesn't run, or has another "
        "one.\n");

  const lineweir::TemporaryDirectory directory;
  const std::string file = (directory.path() / "file").string();
  std::ofstream(file) << "x";
  CHECK(run_admin({"--socket", file, "seats"}).errors ==
        "lineweir-admin: Nobody answers at " + file + ": the server doesn't run.\n");
  CHECK(run_admin({"--socket", std::string(200, 'x'), "seats"}).errors ==
        "lineweir-admin: The socket's name is too long: at most 107 bytes.\n");

  const LineServer ending([](const std::string&) { return std::string(); });
  CHECK(run_at(ending, {"seats"}).errors ==
        "lineweir-admin: The server has ended the connection.\n");
  for (const char* answer :
       {"hello", "[]", "\xFF", R"({"ok": "yes"})", R"({"ok": false, "error": 7})",
        R"({"ok": true, "rows": 7})", R"({"ok": true, "rows": [], "more": 1})"}) {
    const LineServer other([&](const std::string&) { return std::string(answer); });
    const ProgramRun run = run_at(other, {"seats"});
    CHECK(run.status == 1);
    CHECK(run.errors == "lineweir-admin: What answers is no server of this tool.\n");
  }
}

TEST_CASE("A list is a table, of all its pages") {
  const LineServer server(pages(
      {R"({"number": 1, "name": "Hotline", "letter": "H", "since": 1769882730250, "user": "Zoë",
           "caller": "Bob\u001b Hill", "caller_number": "0555"})",
       R"({"number": 2, "name": "2", "letter": "F", "since": 0})"}));
  ::setenv("TZ", "UTC", 1);
  const ProgramRun run = run_at(server, {"lines", "1"});
  CHECK(run.status == 0);
  CHECK(run.out ==
        "Line  Name     Letter  Since                User  Caller     Number\n"
        "1     Hotline  H       2026-01-31 18:05:30  Zoë   Bob? Hill  0555\n"
        "2     2        F\n");
  CHECK(server.lines() ==
        std::vector<std::string>{R"({"command":"lines","group":1})", R"({"command":"more"})"});
}

TEST_CASE("A list is JSON where that is asked for, with moments that any program reads") {
  const LineServer server(pages({R"({"id": 7, "began": 1769882730250, "aired": 0, "name": "Zoë",
                 "steps": [{"at": 1769882730250, "user": "", "action": "ring"}]})",
                                 R"({"id": 8})"}));
  CHECK(run_at(server, {"calls", "--json"}).out ==
        "[\n"
        R"({"aired":null,"began":"2026-01-31T18:05:30.250Z","id":7,"name":"Zoë",)"
        R"("steps":[{"action":"ring","at":"2026-01-31T18:05:30.250Z","user":""}]},)"
        "\n"
        R"({"id":8})"
        "\n]\n");
  const LineServer empty(pages({""}));
  CHECK(run_at(empty, {"calls", "--json"}).out == "[]\n");
}

TEST_CASE("Calls are comma-separated values where that is asked for, with all fields") {
  const LineServer server(pages(
      {R"({"id": 7, "group": 1, "line": 3, "number": "0555", "began": 1769882730250, "ended": 0,
           "told_by": "Zoë", "name": "Hill, \"Bob\"", "comments": "two\nlines"})"}));
  ::setenv("TZ", "UTC", 1);
  CHECK(run_at(server, {"calls", "--csv"}).out ==
        "id,group,line,number,began,answered,aired,ended,told_by,name,address,city,state,zip,phone,"
        "station,gender,comments,user_field\r\n"
        "7,1,3,0555,2026-01-31 18:05:30,,,,Zoë,\"Hill, \"\"Bob\"\"\",,,,,,,,\"two\nlines\",\r\n");
}

TEST_CASE("A user's groups are shown by their numbers") {
  const LineServer server(
      pages({R"({"name": "a", "groups": [0], "locked": true, "locked_until": 0, "last_seen": 0,
                 "seats": 0},
                {"name": "b", "groups": [1, 12], "locked": false, "seats": 2})"}));
  CHECK(run_at(server, {"user", "list"}).out ==
        "User  Groups  Locked  Locked until  Last seen  Seats\n"
        "a     all     yes                              0\n"
        "b     1, 12                                    2\n");
}

TEST_CASE("An audit that is right is told with its last hash, one that isn't ends with 1") {
  const LineServer right([](const std::string&) {
    return R"({"ok": true, "entries": 12, "first_wrong": 0, "last_hash": "abc"})";
  });
  const ProgramRun well = run_at(right, {"audit", "verify"});
  CHECK(well.status == 0);
  CHECK(well.out == "12 entries, all as they were written.\nHash of the last one: abc\n");

  const LineServer wrong([](const std::string&) {
    return R"({"ok": true, "entries": 12, "first_wrong": 5, "last_hash": "abc"})";
  });
  const ProgramRun run = run_at(wrong, {"audit", "verify"});
  CHECK(run.status == 1);
  CHECK(run.out == "");
  CHECK(run.errors ==
        "lineweir-admin: Entry 5 of the audit is missing or changed; 12 entries are there.\n");
  const ProgramRun as_json = run_at(wrong, {"--json", "audit", "verify"});
  CHECK(as_json.status == 1);
  CHECK(as_json.out == R"({"entries":12,"first_wrong":5,"last_hash":"abc"})"
                       "\n");
}

TEST_CASE("Rights and a profile are shown one a line") {
  const LineServer rights([](const std::string&) {
    return R"({"ok": true, "rights": {"Dial": true, "ExitMenu": false}})";
  });
  CHECK(run_at(rights, {"user", "right", "a", "1"}).out ==
        "Right     Allowed\nDial      yes\nExitMenu  no\n");
  const LineServer profile(
      [](const std::string&) { return R"({"ok": true, "profile": "0110\u0003Zoë\u0003\u0003"})"; });
  CHECK(run_at(profile, {"profile", "show", "a"}).out == "0110\nZoë\n\n");
}

TEST_CASE("A password comes from the first line of the standard input where that is asked for") {
  const LineServer server([](const std::string&) { return fine; });
  CHECK(run_at(server, {"user", "password", "a", "--password-stdin"}, "sécret\r\nmore\n").status ==
        0);
  CHECK(server.lines().back() == R"({"command":"user password","name":"a","password":"sécret"})");
  CHECK(run_at(server, {"user", "password", "a", "--password-stdin"}, "no end").status == 0);
  CHECK(server.lines().back() == R"({"command":"user password","name":"a","password":"no end"})");
  CHECK(run_at(server, {"user", "password", "a", "--password-stdin"}, "").errors ==
        "lineweir-admin: There is no password on the standard input.\n");
  CHECK(run_at(server, {"user", "password", "a", "--password-stdin"}, "\xFF\n").errors ==
        "lineweir-admin: The password isn't UTF-8.\n");
  CHECK(
      run_at(server, {"user", "password", "a"}, "secret\n").errors ==
      "lineweir-admin: The password is asked for on a terminal; give it with --password-stdin.\n");
  CHECK(server.lines().size() == 2);
}

TEST_CASE("On a terminal a password is asked twice and not shown") {
  const LineServer server([](const std::string&) { return fine; });
  const std::vector<std::string> words = {"--socket", server.path(), "user", "password", "a"};
  const ProgramRun run = run_admin_on_terminal(words, {"secret\n", "secret\n"});
  CHECK(run.status == 0);
  CHECK(run.out == "Password of a: \r\nOnce more: \r\n");
  CHECK(server.lines() ==
        std::vector<std::string>{R"({"command":"user password","name":"a","password":"secret"})"});

  const ProgramRun other = run_admin_on_terminal(words, {"secret\n", "secrets\n"});
  CHECK(other.status == 1);
  CHECK(other.out.find("The two passwords differ; nothing was changed.") != std::string::npos);
  // Given up.
  CHECK(run_admin_on_terminal(words, {"\x03"}).status == -1);
  CHECK(server.lines().size() == 1);
}

TEST_CASE("What is typed wrong is one line, and asks nobody") {
  const LineServer server([](const std::string&) { return fine; });
  const ProgramRun run = run_at(server, {"user", "dance"});
  CHECK(run.status == 1);
  CHECK(run.out == "");
  CHECK(run.errors.ends_with("--help tells what there is.\n"));
  CHECK(server.lines().empty());
}

TEST_CASE("Help needs no server") {
  const ProgramRun run = run_admin({"--help"});
  CHECK(run.status == 0);
  CHECK(run.out.find("backup") != std::string::npos);
  CHECK(run.errors == "");
}

// The tool against the real server, as an engineer uses both.

#include <doctest/doctest.h>
#include <signal.h>
#include <sqlite3.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <memory>
#include <nlohmann/json.hpp>

#include "admin/admin_desk.h"
#include "serverd/started_server.h"

using lineweir::TemporaryDirectory;
using lineweir::test::StartedServer;
using nlohmann::json;

namespace {

constexpr const char* configuration = R"(
listen = "127.0.0.1:0"
store = "sqlite:server.db"
admin_socket = "admin.sock"
shutdown_seconds = 0
[[group]]
number = 1
name = "Studio 1"
line_names = ["Hotline"]
[[group]]
number = 2
name = "Studio 2"
)";

struct Studio {
  TemporaryDirectory folder;
  std::unique_ptr<StartedServer> server;

  Studio() { start(); }
  void start() {
    server = std::make_unique<StartedServer>(folder, configuration);
    REQUIRE(server->wait_until_ready() > 0);
  }
  std::string path(const std::string& name) const { return (folder.path() / name).string(); }

  ProgramRun run(std::vector<std::string> words, const std::string& input = "") const {
    words.insert(words.begin(), {"--socket", path("admin.sock")});
    return run_admin(std::move(words), input);
  }
  // It is done.
  std::string out(std::vector<std::string> words, const std::string& input = "") const {
    const ProgramRun ended = run(std::move(words), input);
    CHECK(ended.errors == "");
    CHECK(ended.status == 0);
    return ended.out;
  }
  // It isn't, and one line tells why.
  std::string refusal(std::vector<std::string> words, const std::string& input = "") const {
    const ProgramRun ended = run(std::move(words), input);
    CHECK(ended.status == 1);
    CHECK(std::ranges::count(ended.errors, '\n') == 1);
    return ended.errors;
  }
  json rows(std::vector<std::string> words) const {
    words.emplace_back("--json");
    return json::parse(out(std::move(words)));
  }
  std::vector<std::string> users() const {
    std::vector<std::string> names;
    for (const json& user : rows({"user", "list"})) names.push_back(user.at("name"));
    return names;
  }
  void add_user(const std::string& name) const {
    out({"user", "add", name, "--template", "host", "--password-stdin"}, "secret\n");
  }
  // By another program.
  void change_store(const std::string& sql) const {
    sqlite3* db = nullptr;
    REQUIRE(sqlite3_open(path("server.db").c_str(), &db) == SQLITE_OK);
    sqlite3_busy_timeout(db, 5000);
    CHECK(sqlite3_exec(db, sql.c_str(), nullptr, nullptr, nullptr) == SQLITE_OK);
    sqlite3_close(db);
  }
};

using Names = std::vector<std::string>;

}  // namespace

TEST_CASE("A user who was added is there behind a server that was killed at once") {
  Studio studio;
  for (int i = 0; i < 5; ++i) {
    studio.add_user("user" + std::to_string(i));
    studio.server->signal(SIGKILL);
    studio.start();
  }
  CHECK(studio.users() == Names{"engineer", "user0", "user1", "user2", "user3", "user4"});
  CHECK(studio.out({"audit", "verify"}).find("all as they were written") != std::string::npos);
}

TEST_CASE("A call that was made by the tool is listed when it has ended") {
  const Studio studio;
  studio.out({"call", "1", "1", "--number", "+44 20"});
  const json line = studio.rows({"lines", "1"}).at(0);
  CHECK(line.at("name") == "Hotline");
  CHECK(line.at("letter") == "R");
  CHECK(studio.rows({"calls"}).empty());
  studio.out({"hangup", "1", "1"});
  CHECK(studio.rows({"calls", "--since", "1h", "--group", "1"}).size() == 1);
  CHECK(studio.rows({"calls", "--group", "2"}).empty());
  const std::string csv = studio.out({"calls", "--csv"});
  CHECK(csv.starts_with("id,group,line,number,"));
  CHECK(csv.find(",1,1,+44 20,") != std::string::npos);
  CHECK(studio.refusal({"call", "1", "11"}) == "lineweir-admin: Line 11 doesn't exist.\n");
}

TEST_CASE("An entry of the audit that somebody changes in the file is told") {
  const Studio studio;
  studio.add_user("anna");
  studio.out({"audit", "verify"});
  studio.change_store("UPDATE audit SET detail = 'ben' WHERE number = 3");
  CHECK(studio.refusal({"audit", "verify"}).find("Entry 3 of the audit") != std::string::npos);
}

TEST_CASE("A backup is made while the server runs and taken over by a new one") {
  Studio studio;
  studio.add_user("anna");
  studio.out({"backup", studio.path("b.db")});
  CHECK(studio.refusal({"backup", studio.path("b.db")}) ==
        "lineweir-admin: The file 'b.db' is there already; it was not touched.\n");
  CHECK(studio.refusal({"restore", studio.path("b.db")}).find("isn't empty") != std::string::npos);
  studio.server = nullptr;
  for (const char* name : {"server.db", "server.db-wal", "server.db-shm"}) {
    std::filesystem::remove(studio.path(name));
  }
  studio.start();
  CHECK(studio.users() == Names{"engineer"});
  studio.out({"restore", studio.path("b.db")});
  CHECK(studio.users() == Names{"anna", "engineer"});
  studio.out({"audit", "verify"});
}

TEST_CASE("A store that was deleted is copied from the running server and put back") {
  Studio studio;
  studio.add_user("anna");
  std::filesystem::remove(studio.path("server.db"));
  CHECK(studio.refusal({"user", "lock", "anna"}).find("can't be written") != std::string::npos);
  CHECK_FALSE(studio.server->wait_for_log("has been moved or deleted").empty());
  CHECK(studio.refusal({"backup", studio.path("saved.db")}).find("The backup was made") !=
        std::string::npos);
  std::filesystem::rename(studio.path("saved.db"), studio.path("server.db"));
  CHECK_FALSE(studio.server->wait_for_log("the store is well again").empty());
  studio.out({"audit", "verify"});
  studio.server->signal(SIGKILL);
  studio.start();
  CHECK(studio.users() == Names{"anna", "engineer"});
  // What was held meanwhile.
  CHECK(studio.rows({"user", "list"}).at(0).at("locked") == true);
}

TEST_CASE("A store that isn't whole without what waits beside it is not moved") {
  Studio studio;
  studio.add_user("anna");
  studio.server->signal(SIGTERM);
  REQUIRE(studio.server->wait_for_end() == 0);
  const std::string waiting = studio.path("server.db.waiting");
  const Names words{"migrate", "sqlite:" + studio.path("server.db"),
                    "sqlite:" + studio.path("new.db")};
  std::ofstream(waiting) << "something";
  CHECK(studio.refusal(words) ==
        "lineweir-admin: In " + waiting +
            " waits what the store has not taken yet; start the server once, and end it.\n");
  CHECK_FALSE(std::filesystem::exists(studio.path("new.db")));
  std::filesystem::resize_file(waiting, 0);
  const std::string former = studio.path("new.db.waiting");
  std::ofstream(former) << "another store's";
  CHECK(studio.refusal(words) == "lineweir-admin: In " + former +
                                     " waits what the store has not taken yet; it is another "
                                     "store's, move it away.\n");
  CHECK_FALSE(std::filesystem::exists(studio.path("new.db")));
  std::filesystem::remove(former);
  CHECK(studio.out(words).starts_with("moved from "));
}

TEST_CASE("A server that the tool ends has ended with status 0, and its socket is gone") {
  Studio studio;
  studio.out({"shutdown", "--seconds", "0", "New", "version"});
  CHECK(studio.server->wait_for_end() == 0);
  CHECK(studio.refusal({"seats"}).find("the server doesn't run") != std::string::npos);
}

TEST_CASE("Everything else that the tool can do is done") {
  const Studio studio;
  studio.add_user("anna");
  studio.out({"user", "password", "anna", "--password-stdin"}, "another\n");
  CHECK(json::parse(studio.out({"--json", "user", "right", "anna", "1", "-Dial"}))
            .at("rights")
            .at("Dial") == false);
  studio.out({"user", "lock", "anna"});
  studio.out({"user", "unlock", "anna"});
  CHECK(studio.out({"profile", "show", "anna"}) == "");
  studio.out({"profile", "reset", "anna"});
  CHECK(studio.rows({"seats"}).empty());
  studio.out({"event", "1", "--last", "18:00", "--next", "18:30", "News"});
  studio.out({"message", "Break in two", "--group", "1"});
  studio.out({"message", "Break", "in", "two"});
  CHECK(studio.rows({"audit", "list"}).size() >= 9);
  studio.out({"user", "remove", "anna"});
  CHECK(studio.users() == Names{"engineer"});
}

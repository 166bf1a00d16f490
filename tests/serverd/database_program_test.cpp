// The programs as an engineer uses them, on a database.

#include <doctest/doctest.h>
#include <signal.h>
#include <sqlite3.h>

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <memory>
#include <nlohmann/json.hpp>
#include <thread>

#include "admin/admin_desk.h"
#include "platform/postgres/postgres_cluster.h"
#include "serverd/started_server.h"

using lineweir::TemporaryDirectory;
using lineweir::test::PostgresCluster;
using lineweir::test::StartedServer;
using nlohmann::json;

namespace {

using Names = std::vector<std::string>;

bool has(const std::string& text, const std::string& part) {
  return text.find(part) != std::string::npos;
}

// With a password, which the database doesn't ask for.
std::string with_password(const std::string& url) {
  std::string with = url;
  return with.replace(with.find('@'), 1, ":secret@");
}

// A server and its tool on a store.
struct Studio {
  explicit Studio(std::string kept_in = PostgresCluster::the().new_database())
      : store(std::move(kept_in)) {}

  std::string configuration() const {
    return "listen = \"127.0.0.1:0\"\nstore = \"" + store +
           "\"\nadmin_socket = \"admin.sock\"\nshutdown_seconds = 0\n[[group]]\nnumber = 1\n";
  }
  void begin(const std::vector<std::string>& words = {}) {
    server = nullptr;
    server = std::make_unique<StartedServer>(folder, configuration(), words);
  }
  void start() {
    begin();
    REQUIRE(server->wait_until_ready() > 0);
  }
  int end() {
    server->signal(SIGTERM);
    const int status = server->wait_for_end();
    server = nullptr;
    return status;
  }
  std::string path(const std::string& name) const { return (folder.path() / name).string(); }

  ProgramRun run(std::vector<std::string> words, const std::string& input = "") const {
    words.insert(words.begin(), {"--socket", path("admin.sock")});
    return run_admin(std::move(words), input);
  }
  std::string out(std::vector<std::string> words, const std::string& input = "") const {
    const ProgramRun ended = run(std::move(words), input);
    CHECK(ended.errors == "");
    CHECK(ended.status == 0);
    return ended.out;
  }
  json rows(std::vector<std::string> words) const {
    words.emplace_back("--json");
    return json::parse(out(std::move(words)));
  }
  Names users() const {
    Names names;
    for (const json& user : rows({"user", "list"})) names.push_back(user.at("name"));
    return names;
  }
  void add_user(const std::string& name) const {
    out({"user", "add", name, "--template", "host", "--password-stdin"}, "pass\n");
  }
  void let_somebody_call(int times) const {
    for (int i = 0; i < times; ++i) {
      out({"call", "1", "1", "--number", std::to_string(i)});
      out({"hangup", "1", "1"});
    }
  }

  std::string store;
  TemporaryDirectory folder;
  std::unique_ptr<StartedServer> server;
};

// The one line that tells why it can't be done.
std::string refusal(const std::vector<std::string>& words) {
  const ProgramRun ended = run_admin(words);
  CHECK(ended.status == 1);
  CHECK(std::ranges::count(ended.errors, '\n') == 1);
  CHECK(ended.out == "");
  return ended.errors;
}

void change_file(const std::string& file, const std::string& sql) {
  sqlite3* db = nullptr;
  REQUIRE(sqlite3_open(file.c_str(), &db) == SQLITE_OK);
  CHECK(sqlite3_exec(db, sql.c_str(), nullptr, nullptr, nullptr) == SQLITE_OK);
  sqlite3_close(db);
}

std::string count(const std::string& url, const std::string& table) {
  return PostgresCluster::run(url, "SELECT count(*) FROM lineweir." + table);
}

}  // namespace

TEST_CASE("A server on a database keeps users, calls and audit for the next one") {
  Studio studio;
  studio.start();
  CHECK(has(studio.server->wait_for_log("password"), "first user engineer, password "));
  studio.add_user("anna");
  studio.let_somebody_call(2);
  CHECK(studio.rows({"calls"}).size() == 2);
  // Killed at once behind an answer.
  studio.add_user("ben");
  studio.server->signal(SIGKILL);
  studio.server->wait_for_end();
  studio.start();
  CHECK(studio.users() == Names{"anna", "ben", "engineer"});
  CHECK(studio.rows({"calls"}).size() == 2);
  CHECK(has(studio.out({"audit", "verify"}), "all as they were written"));
  PostgresCluster::run(studio.store, "UPDATE lineweir.audit SET detail = 'x' WHERE number = 3");
  CHECK(has(studio.run({"audit", "verify"}).errors, "Entry 3 of the audit"));
  CHECK(studio.end() == 0);
  for (const std::string& name : studio.folder.names()) CHECK(name == "server.toml");
}

TEST_CASE("What a server is told of its database never shows the password") {
  Studio studio(with_password(PostgresCluster::the().url("not_there_yet")));
  studio.begin({"--check"});
  CHECK(
      has(studio.server->wait_for_output(), "keeps its data in the database 'not_there_yet' on "));
  CHECK_FALSE(has(studio.server->wait_for_output(), "secret"));
  CHECK(studio.server->wait_for_end() == 0);
  // It waits for the database, and ends when it is told to.
  studio.begin();
  const std::string log = studio.server->wait_for_log("does not exist");
  CHECK(has(log, "error: the store: The database 'not_there_yet' on "));
  CHECK_FALSE(has(log, "secret"));
  studio.server->signal(SIGTERM);
  CHECK(studio.server->wait_for_end() == 0);
  CHECK(studio.server->wait_for_output().empty());
  studio.begin();
  studio.server->wait_for_log("does not exist");
  PostgresCluster::run(PostgresCluster::the().url("postgres"), "CREATE DATABASE not_there_yet");
  CHECK(studio.server->wait_until_ready() > 0);
  studio.add_user("anna");
  CHECK(studio.end() == 0);
}

TEST_CASE("A second server leaves the database of the first one alone") {
  Studio first;
  first.start();
  Studio second(first.store);
  second.begin();
  CHECK(second.server->wait_for_end() == 1);
  CHECK(second.server->wait_for_output().empty());
  CHECK(has(second.server->wait_for_log(),
            "lineweir-server: another server has group 1 of the store in "));
  first.add_user("anna");
  // The lock goes with the process, in whatever way that ends.
  first.server->signal(SIGKILL);
  first.server->wait_for_end();
  second.start();
  CHECK(second.users() == Names{"anna", "engineer"});
}

TEST_CASE("A server whose database goes away goes on, and loses nothing once it is back") {
  Studio studio;
  studio.start();
  studio.let_somebody_call(1);
  PostgresCluster::the().kill();
  CHECK(has(studio.server->wait_for_log("the store: "), "error: the store: "));
  // The show goes on.
  studio.let_somebody_call(3);
  CHECK(studio.rows({"lines", "1"}).size() == 10);
  PostgresCluster::the().start();
  CHECK(has(studio.server->wait_for_log("the store is well again"), "the store is well again"));
  CHECK(has(studio.server->wait_for_log("the store is locked again"), "locked again"));
  CHECK(studio.rows({"calls"}).size() == 4);
  // Nor does one that stands still hold it up.
  PostgresCluster::the().stand_still();
  const auto begin = std::chrono::steady_clock::now();
  studio.let_somebody_call(1);
  CHECK(studio.rows({"lines", "1"}).size() == 10);
  CHECK(std::chrono::steady_clock::now() - begin < std::chrono::seconds(8));
  PostgresCluster::the().go_on();
  CHECK(studio.rows({"calls"}).size() == 5);
  studio.out({"audit", "verify"});
  CHECK(studio.end() == 0);
}

TEST_CASE("What a server could not write before it was killed is written by the next one") {
  Studio studio;
  studio.start();
  PostgresCluster::the().kill();
  studio.let_somebody_call(3);
  CHECK(has(studio.server->wait_for_log("the store can't be written"), "can't be written"));
  // All of it is kept once there is something and for a second nothing more has come.
  std::uintmax_t kept = 0;
  int quiet = 0;
  for (int waits = 0; waits < 1000 && quiet < 50; ++waits) {
    std::this_thread::sleep_for(std::chrono::milliseconds(20));
    std::error_code none;
    const std::uintmax_t before = kept;
    kept = std::filesystem::file_size(studio.path("server.waiting"), none);
    quiet = !none && kept > 0 && kept == before ? quiet + 1 : 0;
  }
  REQUIRE(quiet == 50);
  studio.server->signal(SIGKILL);
  studio.server->wait_for_end();
  PostgresCluster::the().start();
  studio.start();
  CHECK(has(studio.server->wait_for_log("the journal holds"), "records that the store has not"));
  CHECK(studio.rows({"calls"}).size() == 3);
  CHECK(studio.run({"audit", "verify"}).status == 0);
  CHECK(std::filesystem::file_size(studio.path("server.waiting")) == 0);
}

TEST_CASE("A backup is made while the server runs and taken over by a server of another kind") {
  Studio studio;
  studio.start();
  studio.add_user("anna");
  studio.let_somebody_call(3);
  studio.out({"backup", studio.path("b.db")});
  CHECK(has(studio.run({"restore", studio.path("b.db")}).errors, "isn't empty"));
  Studio file("sqlite:server.db");
  file.start();
  file.out({"restore", studio.path("b.db")});
  CHECK(file.users() == Names{"anna", "engineer"});
  CHECK(file.rows({"calls"}).size() == 3);
  file.add_user("ben");
  file.out({"backup", file.path("b.db")});
  Studio third;
  third.start();
  third.out({"restore", file.path("b.db")});
  CHECK(third.users() == Names{"anna", "ben", "engineer"});
  third.out({"audit", "verify"});
  CHECK(third.end() == 0);
}

TEST_CASE("A store is moved from a file into a database and back, and servers go on with it") {
  Studio file("sqlite:server.db");
  file.start();
  file.add_user("anna");
  file.let_somebody_call(3);
  Studio database;
  const std::string from = "sqlite:" + file.path("server.db");
  CHECK(has(refusal({"migrate", from, database.store}), "another server works on the store"));
  CHECK(file.end() == 0);

  const std::string moved = run_admin({"migrate", from, database.store}).out;
  CHECK(has(moved, "  2 users\n"));
  CHECK(has(moved, "  3 calls\n"));
  CHECK(has(moved, "Each was read again and compared.\n"));
  database.start();
  CHECK(database.users() == Names{"anna", "engineer"});
  CHECK(database.rows({"calls"}).size() == 3);
  CHECK(has(database.out({"audit", "verify"}), "all as they were written"));
  database.let_somebody_call(1);
  const std::string back = "sqlite:" + file.path("back.db");
  CHECK(has(refusal({"migrate", database.store, back}), "A server works on the store in "));
  CHECK(database.end() == 0);

  const json counts = json::parse(run_admin({"--json", "migrate", database.store, back}).out);
  CHECK(counts.at("calls") == 4);
  CHECK(counts.at("first_wrong") == 0);
  Studio again(back);
  again.start();
  CHECK(again.users() == Names{"anna", "engineer"});
  CHECK(again.rows({"calls"}).size() == 4);
  again.out({"audit", "verify"});
}

TEST_CASE("A store isn't moved where something is, nor in part, nor from where nothing is") {
  Studio file("sqlite:server.db");
  file.start();
  file.add_user("anna");
  CHECK(file.end() == 0);
  const std::string from = "sqlite:" + file.path("server.db");
  const std::string empty = PostgresCluster::the().new_database();

  CHECK(has(refusal({"migrate", "sqlite:" + file.path("none.db"), empty}), "There is no file "));
  CHECK(has(refusal({"migrate", empty, "sqlite:" + file.path("new.db")}), "has no store in it"));
  CHECK(has(refusal({"migrate", "server.db", empty}), "A store is \"sqlite:\" and a file, or "));
  const std::string wrong = refusal({"migrate", from, "postgresql://amy:se/cret@host/studio"});
  CHECK_FALSE(has(wrong, "cret"));
  const std::string seen_by_all = refusal({"migrate", from, with_password(empty)});
  CHECK(has(seen_by_all, "a password can't stand there"));
  CHECK_FALSE(has(seen_by_all, "secret"));
  CHECK(has(refusal({"migrate", from, from}), "is there already; it was not touched."));

  REQUIRE(run_admin({"migrate", from, empty}).status == 0);
  CHECK(has(refusal({"migrate", from, empty}), "There is something in the database "));
  CHECK(count(empty, "accounts") == "2\n");

  // One record that the database doesn't take leaves nothing of the others.
  const std::string picky = PostgresCluster::the().new_database();
  const std::string nothing = "sqlite:" + file.path("nothing.db");
  PostgresCluster::run(empty,
                       "DELETE FROM lineweir.accounts; DELETE FROM lineweir.audit; "
                       "DELETE FROM lineweir.audit_end; DELETE FROM lineweir.group_memory");
  REQUIRE(run_admin({"migrate", empty, picky}).status == 0);
  PostgresCluster::run(picky, "ALTER TABLE lineweir.audit ADD CHECK (number <> 2)");
  CHECK(has(refusal({"migrate", from, picky}), "refused what was asked"));
  CHECK(count(picky, "accounts") == "0\n");
  CHECK(count(picky, "audit") == "0\n");
  // And what somebody changes on its way is seen.
  PostgresCluster::run(
      empty,
      "CREATE FUNCTION lineweir.other() RETURNS trigger LANGUAGE plpgsql AS "
      "'BEGIN NEW.detail := ''other''; RETURN NEW; END'; CREATE TRIGGER t BEFORE INSERT ON "
      "lineweir.audit FOR EACH ROW EXECUTE FUNCTION lineweir.other()");
  CHECK(
      has(refusal({"migrate", from, empty}), "What was copied is not the same as what was there"));
  CHECK(count(empty, "accounts") == "0\n");
  CHECK_FALSE(std::filesystem::exists(file.path("new.db")));

  // A fault of the audit goes along, and is told.
  change_file(file.path("server.db"), "UPDATE audit SET detail = 'x' WHERE number = 2");
  const std::string whole = PostgresCluster::the().new_database();
  CHECK(has(run_admin({"migrate", from, whole}).out,
            "Entry 2 of the audit is missing or changed, as it was before.\n"));
}

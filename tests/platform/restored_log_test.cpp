// Backups that are put in the place of a log while the console and others have it open.

#include <doctest/doctest.h>

#include <fstream>

#include "base/failure.h"
#include "journal_desk.h"
#include "other_process.h"

using namespace lineweir;
using namespace lineweir::test;
namespace fs = std::filesystem;

namespace {

using Names = std::vector<std::string>;

struct Restoring {
  int kept = 0;
  // The log is moved away before, and not deleted by the backup.
  bool moved = false;
  // Another connection than the journal's is the first to see the backup.
  bool shown_first = false;
};

struct Copying {
  int kept = 0;
  // Another connection than the journal's is the first to see the backup.
  bool shown_first = false;
  // The backup was made as one that has no write-ahead log.
  bool without_log = false;
  // A new connection is made to the copy before anybody has seen it.
  bool opened_anew = false;
};

struct RestoreFixture {
  RestoreFixture() {
    desk.make_log();
    desk.make_log("backup.mdb");
  }

  void fill_backup(int rows) const {
    desk.query("WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < " +
                   std::to_string(rows) +
                   ") INSERT INTO Calls SELECT 'kept ' || i, 'Salem', 'any' FROM n",
               "backup.mdb");
  }

  // Everything handed over before is in its log, or waits for it.
  void await_calls() {
    desk.put("nobody", "nowhere.mdb");
    ++nobodies;
    REQUIRE(desk.loop.run_until([&] { return desk.journal->state().waiting == nobodies; }));
  }

  void write_over(const std::string& from) const {
    std::ifstream backup(desk.path(from), std::ios::binary);
    std::ofstream(desk.path("calls.mdb"), std::ios::binary | std::ios::trunc) << backup.rdbuf();
  }

  void check_whole(const std::string& file = "calls.mdb") const {
    CHECK(desk.query("PRAGMA integrity_check", file) == Names{"ok"});
  }

  void restore_beside_reader(const Restoring& how);
  void copy_over_open_log(const Copying& how);

  JournalDesk desk;
  platform::SqliteEngine show{desk.folder.path(), utf8_letters(), std::chrono::milliseconds(0),
                              &desk.guard};
  int nobodies = 0;
};

// Another program, to be made before the journal's threads are: told to go on, it reads the log
// and keeps what it has seen until it is told again.
OtherProcess reader(const JournalDesk& desk) {
  const std::string file = desk.path("calls.mdb");
  return OtherProcess([file](const auto& tell, const auto& await) {
    await();
    sqlite3* connection = nullptr;
    sqlite3_open(file.c_str(), &connection);
    sqlite3_exec(connection, "BEGIN; SELECT count(*) FROM Calls", nullptr, nullptr, nullptr);
    tell(1);
    await();
    sqlite3_close(connection);
    tell(2);
  });
}

void RestoreFixture::restore_beside_reader(const Restoring& how) {
  CAPTURE(how.kept);
  CAPTURE(how.moved);
  CAPTURE(how.shown_first);
  fill_backup(how.kept);
  OtherProcess other = reader(desk);
  desk.start();
  for (int i = 0; i < 60; ++i) desk.put("caller " + std::to_string(i));
  await_calls();
  const auto shown = show.open("calls.mdb");
  other.go_on();
  REQUIRE(other.next() == 1);
  for (int i = 60; i < 70; ++i) desk.put("caller " + std::to_string(i));
  await_calls();
  CHECK(fs::file_size(desk.path("calls.mdb-wal")) > 0);

  if (how.moved) fs::rename(desk.path("calls.mdb"), desk.path("moved.mdb"));
  fs::rename(desk.path("backup.mdb"), desk.path("calls.mdb"));
  if (how.shown_first)
    CHECK(show.open("calls.mdb")->open_recordset(log_table)->count() == how.kept);
  desk.put("after");
  REQUIRE(desk.loop.run_until([&] { return !desk.replaced.empty(); }));
  CHECK(desk.replaced == Names{"calls.mdb"});
  check_whole();
  CHECK(desk.names().size() == static_cast<std::size_t>(how.kept) + 1);
  CHECK(desk.names().back() == "after");
  other.go_on();
  REQUIRE(other.next() == 2);
  desk.stop();
  check_whole();
  CHECK(desk.names().size() == static_cast<std::size_t>(how.kept) + 1);
  if (how.moved) {
    check_whole("moved.mdb");
    CHECK(desk.names("moved.mdb").size() == 70);
  }
}

void RestoreFixture::copy_over_open_log(const Copying& how) {
  CAPTURE(how.kept);
  CAPTURE(how.shown_first);
  CAPTURE(how.without_log);
  CAPTURE(how.opened_anew);
  fill_backup(how.kept);
  if (how.without_log) {
    REQUIRE(desk.query("PRAGMA journal_mode = DELETE", "backup.mdb") == Names{"delete"});
  }
  desk.start();
  for (int i = 0; i < 60; ++i) desk.put("caller " + std::to_string(i));
  await_calls();
  const auto shown = show.open("calls.mdb");
  const auto rows = shown->open_recordset(log_table);
  CHECK(rows->count() == 60);
  const auto stamp = shown->change_stamp();

  write_over("backup.mdb");
  if (how.opened_anew) {
    CHECK(show.open("calls.mdb")->open_recordset(log_table)->count() == how.kept);
  }
  if (how.shown_first) {
    CHECK(shown->change_stamp() != stamp);
    CHECK(rows->count() == how.kept);
  }
  desk.put("after");
  REQUIRE(desk.loop.run_until([&] { return !desk.replaced.empty(); }));
  CHECK(desk.replaced == Names{"calls.mdb"});
  CHECK(desk.journal->state().waiting == nobodies);
  CHECK(rows->count() == how.kept + 1);
  check_whole();
  shown->rename_column(log_table, 0, "Name");
  desk.put("and later");
  desk.stop();
  CHECK(desk.names().size() == static_cast<std::size_t>(how.kept) + 2);
  check_whole();
}

}  // namespace

TEST_CASE("A backup takes the place of a log whose last calls a reader keeps out of it") {
  for (const int kept : {1, 500}) {
    for (const bool moved : {false, true}) {
      for (const bool shown_first : {false, true}) {
        RestoreFixture().restore_beside_reader({kept, moved, shown_first});
      }
    }
  }
}

TEST_CASE("A backup that is copied over an open log is what all see of it") {
  for (const int kept : {1, 3000}) {
    for (const bool shown_first : {false, true}) {
      for (const bool without_log : {false, true}) {
        for (const bool opened_anew : {false, true}) {
          RestoreFixture().copy_over_open_log({kept, shown_first, without_log, opened_anew});
        }
      }
    }
  }
}

TEST_CASE_FIXTURE(RestoreFixture, "Each of several copies over an open log is what all see of it") {
  desk.start();
  desk.put("caller 0");
  await_calls();
  const auto shown = show.open("calls.mdb");
  const auto rows = shown->open_recordset(log_table);
  auto stamp = shown->change_stamp();
  CHECK(rows->count() == 1);
  for (int copy = 1; copy <= 4; ++copy) {
    CAPTURE(copy);
    fill_backup(100);
    desk.query("VACUUM INTO '" + desk.path("smaller pages") + "'", "backup.mdb");
    if (copy > 2) {
      desk.query("PRAGMA page_size = 1024; VACUUM", "smaller pages");
      REQUIRE(desk.query("PRAGMA page_size", "smaller pages") == Names{"1024"});
    }
    write_over("smaller pages");
    fs::remove(desk.path("smaller pages"));
    CHECK(shown->change_stamp() != stamp);
    stamp = shown->change_stamp();
    CHECK(rows->count() == copy * 100);
    check_whole();
  }
  desk.put("after");
  await_calls();
  CHECK(rows->count() == 401);
  CHECK(desk.names().back() == "after");
  check_whole();
}

TEST_CASE_FIXTURE(
    RestoreFixture,
    "A log that is moved away and back keeps the calls that a reader keeps out of it") {
  OtherProcess other = reader(desk);
  desk.start();
  desk.put("caller 0");
  await_calls();
  other.go_on();
  REQUIRE(other.next() == 1);
  desk.put("caller 1");
  await_calls();
  fs::rename(desk.path("calls.mdb"), desk.path("moved.mdb"));
  desk.put("caller 2");
  REQUIRE(desk.loop.run_until([&] { return desk.journal->state().waiting == nobodies + 1; }));
  fs::rename(desk.path("moved.mdb"), desk.path("calls.mdb"));
  REQUIRE(desk.loop.run_until([&] { return desk.journal->state().waiting == nobodies; }));
  CHECK(desk.names() == Names{"caller 0", "caller 1", "caller 2"});
  CHECK(desk.replaced.empty());
  other.go_on();
  REQUIRE(other.next() == 2);
}

TEST_CASE_FIXTURE(RestoreFixture,
                  "A log that is spoiled takes the calls as soon as it is whole again") {
  fill_backup(500);
  desk.start();
  desk.put("caller 0");
  await_calls();
  const auto shown = show.open("calls.mdb");
  int failure = 0;
  SUBCASE("emptied") {
    fs::resize_file(desk.path("calls.mdb"), 0);
    failure = failure_number::not_a_database;
  }
  SUBCASE("cut off") {
    fs::resize_file(desk.path("calls.mdb"), 5000);
    failure = failure_number::database_damaged;
  }
  desk.put("after");
  REQUIRE(desk.loop.run_until([&] { return desk.journal->state().waiting == nobodies + 1; }));
  const auto troubles = desk.journal->state().troubles;
  REQUIRE(troubles.size() == 2);
  CHECK(std::max(troubles[0].number, troubles[1].number) == failure);
  write_over("backup.mdb");
  REQUIRE(desk.loop.run_until([&] { return desk.journal->state().waiting == nobodies; }));
  CHECK(desk.names().size() == 501);
  check_whole();
}

TEST_CASE(
    "A backup takes the place of a log whose last calls a killed console has left beside it") {
  const TemporaryDirectory folder;
  const auto engine = [&] {
    return platform::SqliteEngine(folder.path(), utf8_letters(), std::chrono::milliseconds(0));
  };
  const auto add = [](platform::Database& log, const std::string& name) {
    const auto rows = log.open_recordset(log_table);
    rows->add_new();
    rows->set_field(0, name);
    rows->update();
  };
  {
    auto databases = engine();
    for (const char* file : {"calls.mdb", "backup.mdb"}) {
      const auto log = databases.create(file);
      log->create_table(log_table, {{"Name", 0}, {"City", 0}, {"User", 0}});
      for (int i = 0; i < 200; ++i) add(*log, "kept " + std::to_string(i));
    }
  }
  const pid_t console = ::fork();
  if (console == 0) {
    auto databases = engine();
    const auto log = databases.open("calls.mdb");
    for (int i = 0; i < 20; ++i) add(*log, "last " + std::to_string(i));
    ::_exit(0);
  }
  ::waitpid(console, nullptr, 0);
  REQUIRE(fs::file_size(folder.path() / "calls.mdb-wal") > 0);
  bool restored = false;
  SUBCASE("in its place") { restored = true; }
  SUBCASE("or stays where it is") {}
  if (restored) fs::rename(folder.path() / "backup.mdb", folder.path() / "calls.mdb");

  auto databases = engine();
  const auto log = databases.open("calls.mdb");
  add(*log, "new");
  const auto rows = log->open_recordset(log_table);
  CHECK(rows->count() == (restored ? 201 : 221));
  CHECK(fs::exists(folder.path() / "calls.mdb.former-1-wal") == restored);
}

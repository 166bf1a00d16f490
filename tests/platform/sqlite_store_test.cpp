#include <doctest/doctest.h>
#include <sqlite3.h>
#include <sys/mount.h>
#include <sys/stat.h>
#include <unistd.h>

#include <fstream>

#include "platform/audit/audit_hash.h"
#include "platform/sqlite_store/store_schema.h"
#include "store_desk.h"

using namespace lineweir;
using namespace lineweir::platform;
namespace fs = std::filesystem;

namespace {

// Another program that has a file open.
class OtherProgram {
 public:
  explicit OtherProgram(const fs::path& file) { REQUIRE(sqlite3_open(file.c_str(), &db_) == 0); }
  ~OtherProgram() { sqlite3_close(db_); }
  OtherProgram(const OtherProgram&) = delete;
  OtherProgram& operator=(const OtherProgram&) = delete;

  // The values of the rows, those of a row with bars between them.
  std::string run(const std::string& sql) const {
    std::string text;
    char* error = nullptr;
    sqlite3_exec(
        db_, sql.c_str(),
        [](void* out, int count, char** values, char**) {
          auto& line = *static_cast<std::string*>(out);
          for (int i = 0; i < count; ++i) {
            line += values[i] == nullptr ? "NULL" : values[i];
            line += i + 1 < count ? '|' : '\n';
          }
          return 0;
        },
        &text, &error);
    INFO(sql);
    CHECK_MESSAGE(error == nullptr, std::string(error == nullptr ? "" : error));
    sqlite3_free(error);
    return text;
  }
  sqlite3* get() const { return db_; }

 private:
  sqlite3* db_ = nullptr;
};

void write_file(const fs::path& file, const std::string& content) {
  std::ofstream(file, std::ios::binary) << content;
}

Account fresh_account(const std::string& name) {
  return {.name = name,
          .password_hash = "h",
          .rights = {},
          .profile = {},
          .locked = false,
          .last_seen = Moment{0}};
}

bool fails(SqliteDesk& desk) {
  return !desk.load() && !desk.write({event(900)}) && !desk.calls() && !desk.audit() &&
         !desk.verify();
}

}  // namespace

TEST_CASE("The file is its owner's alone, also what lies beside it, and so is a backup") {
  SqliteDesk desk;
  REQUIRE(desk.write({event(1)}));
  REQUIRE(desk.backup(desk.file("backup.db")) == "");
  CHECK(desk.directory().names().size() == 4);
  for (const std::string& name : desk.directory().names()) {
    struct stat status {};
    REQUIRE(::stat((desk.directory().path() / name).c_str(), &status) == 0);
    CAPTURE(name);
    CHECK((status.st_mode & 0777U) == 0600U);
  }
}

TEST_CASE("Another program reads a store while it is used, and understands it") {
  SqliteDesk desk;
  REQUIRE(desk.write({full_call(4), event(1),
                      GroupMemory{.group = 1, .next_call = 0, .message = "", .show_times = {}}}));
  const OtherProgram other(desk.path());
  CHECK(other.run("SELECT line, number, answered - began, caller_name, user_field FROM calls") ==
        "1|0555 01|5000|field '0|field '9\n");
  CHECK(other.run("SELECT place, user, action FROM call_steps ORDER BY place") ==
        "1||ring\n2|Zoë|answer\n");
  CHECK(other.run("SELECT datetime(began, 'utc') FROM call_list") == "2023-11-14 22:17:20\n");
  CHECK(other.run("SELECT next_call FROM group_memory") == "1\n");
  CHECK(other.run("PRAGMA integrity_check") == "ok\n");
  CHECK(other.run("PRAGMA foreign_key_check") == "");
  CHECK(other.run("PRAGMA journal_mode") == "wal\n");
  // Also while that one is in the middle of reading.
  other.run("BEGIN; SELECT count(*) FROM calls");
  CHECK(desk.write({full_call(5)}));
  CHECK(other.run("SELECT count(*) FROM calls") == "1\n");
  other.run("COMMIT");
  CHECK(other.run("SELECT count(*) FROM calls") == "2\n");
}

TEST_CASE("Two stores in one file lose nothing and keep one audit") {
  SqliteDesk desk;
  REQUIRE(desk.load());
  PumpedPoster poster;
  SqliteStore second(desk.path(), poster);
  int left = 200;
  int failed = 0;
  for (int i = 0; i < 100; ++i) {
    const auto done = [&](bool written) {
      --left;
      if (!written) ++failed;
    };
    desk.store().write({event(2 * i)}, done);
    second.write({event(2 * i + 1)}, done);
  }
  REQUIRE(desk.run_until([&] { return left <= 100; }));
  REQUIRE(poster.run_until([&] { return left == 0; }));
  CHECK(failed == 0);
  CHECK(desk.verify()->entries == 200);
  CHECK(desk.verify()->first_wrong == 0);
}

TEST_CASE("A lock that another program lets go of in time is waited for") {
  SqliteDesk desk;
  REQUIRE(desk.load());
  const OtherProgram other(desk.path());
  other.run("BEGIN IMMEDIATE");
  int told = -1;
  desk.store().write({event(1)}, [&](bool written) { told = written ? 1 : 0; });
  other.run("COMMIT");
  REQUIRE(desk.run_until([&] { return told >= 0; }));
  CHECK(told == 1);
}

TEST_CASE("A lock that another program keeps is told, and what is only read needs none") {
  SqliteDesk desk(std::chrono::milliseconds(1));
  REQUIRE(desk.write({event(1)}));
  const OtherProgram other(desk.path());
  other.run("BEGIN IMMEDIATE");
  CHECK_FALSE(desk.write({event(2)}));
  CHECK(desk.trouble() == "The file 'server.db' is in use by another program.");
  CHECK(desk.audit()->size() == 1);
  // What can be read doesn't make it well.
  CHECK(desk.trouble() == "The file 'server.db' is in use by another program.");
  other.run("COMMIT");
  CHECK(desk.write({event(2)}));
  CHECK(desk.trouble() == "");
}

TEST_CASE("A file that is no database is told, stays as it is, and is used once it is one") {
  SqliteDesk desk;
  write_file(desk.path(), std::string(5000, 'x'));
  CHECK(fails(desk));
  CHECK(desk.trouble() == "The file 'server.db' is not a database.");
  CHECK(desk.directory().content("server.db") == std::string(5000, 'x'));
  fs::remove(desk.path());
  CHECK(desk.write({event(1)}));
  CHECK(desk.trouble() == "");
}

TEST_CASE("Another program's database is told and stays as it is") {
  SqliteDesk desk;
  { OtherProgram(desk.path()).run("CREATE TABLE calls (id)"); }
  const std::string before = desk.directory().content("server.db");
  CHECK(fails(desk));
  CHECK(desk.trouble() == "The file 'server.db' is another program's database.");
  CHECK(desk.directory().content("server.db") == before);
}

TEST_CASE("A store of a newer version is told and stays as it is") {
  SqliteDesk desk;
  REQUIRE(desk.load());
  desk.end();
  { OtherProgram(desk.path()).run("PRAGMA user_version = 1000"); }
  desk.begin_again();
  CHECK(fails(desk));
  CHECK(
      desk.trouble() ==
      "The file 'server.db' was written by a newer version of this program (its version is 1000, " +
          std::to_string(store_schema_steps().size()) + " is the newest known).");
  CHECK(OtherProgram(desk.path()).run("PRAGMA user_version") == "1000\n");
}

TEST_CASE("A folder, a pipe, and a file in a folder that isn't there are told") {
  SqliteDesk desk;
  fs::create_directory(desk.path());
  CHECK(fails(desk));
  CHECK(desk.trouble() == "'server.db' is not a file.");
  fs::remove(desk.path());
  REQUIRE(::mkfifo(desk.path().c_str(), 0600) == 0);
  CHECK(fails(desk));
  fs::remove(desk.path());
  CHECK(desk.load());

  PumpedPoster poster;
  SqliteStore nowhere(desk.directory().path() / "no" / "server.db", poster);
  std::string trouble;
  nowhere.on_trouble = [&](const std::string& told) { trouble = told; };
  int told = -1;
  nowhere.write({event(1)}, [&](bool written) { told = written ? 1 : 0; });
  REQUIRE(poster.run_until([&] { return told >= 0; }));
  CHECK(told == 0);
  CHECK(trouble == "The file 'server.db' can't be made: No such file or directory.");
}

TEST_CASE("A deleted file is told, can still be backed up, and goes on once it is back") {
  SqliteDesk desk;
  REQUIRE(desk.write({event(1), full_call(1)}));
  fs::remove(desk.path());
  CHECK(fails(desk));
  CHECK(desk.trouble() == "The file 'server.db' has been moved or deleted.");
  // Nothing is made in its place, which would look like a store that never held anything.
  CHECK_FALSE(fs::exists(desk.path()));

  REQUIRE(desk.backup(desk.file("saved.db")) == "");
  fs::rename(desk.file("saved.db"), desk.path());
  REQUIRE(desk.write({event(2)}));
  CHECK(desk.trouble() == "");
  CHECK(desk.audit()->size() == 2);
  CHECK(desk.verify()->first_wrong == 0);
  CHECK(desk.calls()->size() == 1);
}

TEST_CASE("A file that was moved away and back loses nothing") {
  SqliteDesk desk;
  REQUIRE(desk.write({event(1)}));
  fs::rename(desk.path(), desk.file("away.db"));
  CHECK(fails(desk));
  fs::rename(desk.file("away.db"), desk.path());
  CHECK(desk.write({event(2)}));
  CHECK(desk.verify()->entries == 2);
}

TEST_CASE(
    "Another store in the file's place is taken, and nothing of the former one gets into it") {
  SqliteDesk desk;
  REQUIRE(desk.write({event(1), full_account("of both")}));
  REQUIRE(desk.backup(desk.file("other.db")) == "");
  for (int i = 2; i < 50; ++i) REQUIRE(desk.write({event(i), full_call(i)}));
  fs::rename(desk.file("other.db"), desk.path());
  REQUIRE(desk.write({event(1000)}));
  CHECK(desk.calls()->empty());
  CHECK(desk.audit()->size() == 2);
  CHECK(desk.verify()->first_wrong == 0);
  desk.begin_again();
  CHECK(desk.audit()->size() == 2);
  CHECK(desk.load()->accounts.size() == 1);
  CHECK(OtherProgram(desk.path()).run("PRAGMA integrity_check") == "ok\n");
}

TEST_CASE("An emptied or overwritten file is told and nothing is made of it") {
  for (const std::string& content : {std::string(), std::string(100'000, 'x')}) {
    SqliteDesk desk;
    REQUIRE(desk.write({event(1)}));
    write_file(desk.path(), content);
    CHECK(fails(desk));
    CHECK(desk.trouble() == "The file 'server.db' was emptied or overwritten.");
    // A right one is taken again.
    {
      SqliteDesk other;
      REQUIRE(other.write({event(1)}));
      REQUIRE(other.backup(other.file("good.db")) == "");
      fs::copy_file(other.file("good.db"), desk.file("good.db"));
    }
    fs::rename(desk.file("good.db"), desk.path());
    CHECK(desk.write({event(6)}));
    CHECK(desk.verify()->entries == 2);
  }
}

TEST_CASE("A write of which one change is impossible is not done at all, and others are") {
  SqliteDesk desk;
  REQUIRE(desk.load());
  OtherProgram(desk.path())
      .run(
          "CREATE TRIGGER no_such BEFORE INSERT ON calls WHEN NEW.id = 13 "
          "BEGIN SELECT RAISE(ABORT, 'not that one'); END");
  std::string told;
  const auto tell = [&](bool written) { told += written ? '+' : '-'; };
  desk.store().write({event(1), full_call(12)}, tell);
  desk.store().write({event(2), full_call(13)}, tell);
  desk.store().write({event(3), full_call(14)}, tell);
  REQUIRE(desk.run_until([&] { return told.size() == 3; }));
  CHECK(told == "+-+");
  CHECK(desk.calls()->size() == 2);
  CHECK(desk.verify()->entries == 2);
  CHECK(desk.verify()->first_wrong == 0);
}

TEST_CASE("Each entry of the audit that is changed or removed in the file is named") {
  constexpr int length = 4;
  const std::vector<std::string> changes = {"UPDATE audit SET id = id || 'x' WHERE number = ",
                                            "UPDATE audit SET at = at + 1 WHERE number = ",
                                            "UPDATE audit SET user = 'nobody' WHERE number = ",
                                            "UPDATE audit SET action = 'login' WHERE number = ",
                                            "UPDATE audit SET detail = NULL || '' WHERE number = ",
                                            "UPDATE audit SET hash = '00' WHERE number = ",
                                            "DELETE FROM audit WHERE number = "};
  SqliteDesk desk;
  for (int i = 1; i <= length; ++i) REQUIRE(desk.write({event(i)}));
  REQUIRE(desk.backup(desk.file("whole.db")) == "");
  for (std::string change : changes) {
    // The column can't be NULL; any other value does.
    if (const auto at = change.find("NULL || ''"); at != std::string::npos) {
      change.replace(at, 10, "''");
    }
    for (int number = 1; number <= length; ++number) {
      desk.end();
      fs::copy_file(desk.file("whole.db"), desk.path(), fs::copy_options::overwrite_existing);
      desk.begin_again();
      REQUIRE(desk.verify()->first_wrong == 0);
      CAPTURE(change);
      CAPTURE(number);
      OtherProgram(desk.path()).run(change + std::to_string(number));
      CHECK(desk.verify()->first_wrong == number);
      // The audit goes on, and the fault stays where it is.
      CHECK(desk.write({event(100)}));
      CHECK(desk.verify()->first_wrong == number);
    }
  }
}

TEST_CASE("Entries in each other's places are named, and so is an end that was set back") {
  SqliteDesk desk;
  for (int i = 1; i <= 4; ++i) REQUIRE(desk.write({event(i)}));
  const OtherProgram other(desk.path());
  other.run(
      "UPDATE audit SET number = -1 WHERE number = 2; UPDATE audit SET number = 2 WHERE number = "
      "3; UPDATE audit SET number = 3 WHERE number = -1");
  CHECK(desk.verify()->first_wrong == 2);
  other.run(
      "UPDATE audit SET number = -1 WHERE number = 2; UPDATE audit SET number = 2 WHERE number = "
      "3; UPDATE audit SET number = 3 WHERE number = -1");
  CHECK(desk.verify()->first_wrong == 0);
  other.run("UPDATE audit_end SET entries = 3, hash = (SELECT hash FROM audit WHERE number = 3)");
  CHECK(desk.verify()->first_wrong == 4);
  CHECK(desk.write({event(5)}));
  CHECK(desk.verify()->first_wrong == 5);
  other.run("DELETE FROM audit_end");
  CHECK(desk.write({event(6)}));
  CHECK(desk.verify()->entries == 6);
}

TEST_CASE("An empty database becomes a store step by step, and a step that fails leaves it") {
  TemporaryDirectory directory;
  const OtherProgram db(directory.path() / "server.db");
  const std::array steps = {"CREATE TABLE one (a); INSERT INTO one VALUES (7)",
                            "ALTER TABLE one ADD COLUMN b; UPDATE one SET b = a + 1",
                            "CREATE TABLE three (c)"};
  bring_up_to_date(db.get(), std::span(steps).first(1));
  CHECK(db.run("PRAGMA user_version") == "1\n");
  const std::array failing = {steps[0], steps[1], "CREATE TABLE three (c); SELECT nothing"};
  CHECK_THROWS(bring_up_to_date(db.get(), failing));
  CHECK(db.run("PRAGMA user_version") == "2\n");
  CHECK(db.run("SELECT * FROM one") == "7|8\n");
  CHECK(db.run("SELECT count(*) FROM sqlite_schema WHERE name = 'three'") == "0\n");
  bring_up_to_date(db.get(), steps);
  bring_up_to_date(db.get(), steps);
  CHECK(db.run("PRAGMA user_version") == "3\n");
  CHECK_NOTHROW(require_store(db.get(), steps));
  CHECK_THROWS(require_store(db.get(), std::span(steps).first(2)));
}

TEST_CASE("A store of the first version learns who called in the calls that it holds") {
  SqliteDesk desk;
  CallRecord call = full_call(1);
  call.number = "+1 312 555-0100";
  call.told[told_phone_number] = "none";
  REQUIRE(desk.write({call, full_call(2)}));
  desk.end();
  {
    const OtherProgram db(desk.path());
    CHECK(db.run("SELECT caller FROM calls") == "3125550100\n" + caller_key(full_call(2)) + "\n");
    db.run(
        "DROP INDEX calls_by_caller; ALTER TABLE calls DROP COLUMN caller; "
        "DROP TABLE flagged_callers; PRAGMA user_version = 1");
  }
  desk.begin_again();
  CHECK(desk.history("3125550100")->calls == 1);
  CHECK(desk.history(caller_key(full_call(2)))->calls == 1);
  CHECK(desk.write({full_flag("555")}));
  CHECK(desk.calls() == std::vector{call, full_call(2)});
}

TEST_CASE("A backup is refused where it can't be, and leaves nothing") {
  SqliteDesk desk;
  REQUIRE(desk.write({event(1)}));
  write_file(desk.file("taken"), "mine");
  fs::create_symlink("nowhere", desk.file("link"));
  const auto before = desk.directory().names();
  CHECK(desk.backup(desk.file("taken")) ==
        "The file 'taken' is there already; it was not touched.");
  CHECK(desk.backup(desk.file("link")) == "The file 'link' is there already; it was not touched.");
  CHECK(desk.backup(desk.file("no/b.db")) ==
        "The file 'b.db' can't be made: No such file or directory.");
  CHECK(desk.directory().content("taken") == "mine");
  CHECK(desk.directory().names() == before);
  // The store itself is well.
  CHECK(desk.trouble() == "");
}

TEST_CASE("What is no backup is not restored, and the store stays as it is") {
  SqliteDesk desk;
  REQUIRE(desk.write({fresh_account("first"), event(1)}));
  write_file(desk.file("text"), "no database");
  write_file(desk.file("empty"), "");
  { OtherProgram(desk.file("other")).run("CREATE TABLE t (a)"); }
  REQUIRE(desk.backup(desk.file("newer")) == "");
  { OtherProgram(desk.file("newer")).run("PRAGMA user_version = 99"); }
  REQUIRE(desk.backup(desk.file("damaged")) == "");
  {
    std::fstream file(desk.file("damaged"), std::ios::in | std::ios::out | std::ios::binary);
    file.seekp(4096);
    file << std::string(8192, 'x');
  }
  for (const char* name : {"text", "empty", "other", "newer", "damaged", "missing", "."}) {
    CAPTURE(name);
    CHECK(desk.restore(desk.file(name)) != "");
    CHECK(desk.trouble() == "");
  }
  CHECK(desk.load()->accounts.size() == 1);
  CHECK(desk.verify()->entries == 1);
}

TEST_CASE("A backup that isn't of the version that it names changes nothing, or comes whole") {
  SqliteDesk desk;
  REQUIRE(desk.write({full_call(1), full_flag("555"), event(1)}));
  const auto damaged = [&](const std::string& name, const std::string& sql) {
    REQUIRE(desk.backup(desk.file(name)) == "");
    OtherProgram(desk.file(name)).run(sql);
  };
  damaged("no-version", "PRAGMA user_version = 0");
  damaged("earlier-version", "PRAGMA user_version = 1");
  damaged("no-table", "DROP TABLE audit_end");
  damaged("view", "ALTER TABLE calls RENAME TO c; CREATE VIEW calls AS SELECT * FROM c");
  damaged("column", "ALTER TABLE accounts RENAME COLUMN locked TO shut");
  // It reads well as long as nothing is written into it.
  damaged("rule",
          "PRAGMA writable_schema = ON; UPDATE sqlite_schema SET sql = replace(sql, 'one = 1', "
          "'one = t1') WHERE name = 'audit_end'");
  // Each page is whole, but what is looked up isn't what stands in the table.
  damaged("index",
          "PRAGMA writable_schema = ON; UPDATE sqlite_schema SET rootpage = (SELECT sum(rootpage) "
          "FROM sqlite_schema WHERE name LIKE 'calls_by_%') - rootpage "
          "WHERE name LIKE 'calls_by_%'");
  damaged("trigger", "CREATE TRIGGER t AFTER INSERT ON calls BEGIN DELETE FROM audit; END");
  damaged("unique", "CREATE UNIQUE INDEX one_a_group ON calls (group_number)");
  damaged("more", "ALTER TABLE accounts ADD COLUMN more TEXT; CREATE TABLE notes (a)");
  damaged("earlier",
          "DROP INDEX calls_by_caller; ALTER TABLE calls DROP COLUMN caller; "
          "DROP TABLE flagged_callers; PRAGMA user_version = 1");
  desk.begin_empty();
  REQUIRE(desk.write({fresh_account("first"), event(2)}));
  for (const char* name : {"no-version", "earlier-version", "no-table", "view", "column", "rule",
                           "index", "trigger", "unique"}) {
    CAPTURE(name);
    CHECK(desk.restore(desk.file(name)).find(name) != std::string::npos);
    CHECK(desk.load()->accounts.size() == 1);
    CHECK(desk.calls()->empty());
    CHECK(desk.audit()->front().event == event(2));
  }
  CHECK(desk.restore(desk.file("no-table")) ==
        "The file 'no-table' is no whole store: it lacks audit_end.entries.");
  CHECK(desk.restore(desk.file("trigger")) ==
        "The file 'trigger' is more than a store: it has the trigger t.");
  CHECK(desk.restore(desk.file("earlier")) == "");
  CHECK(desk.calls()->size() == 1);
  CHECK(desk.history(caller_key(full_call(1)))->calls == 1);
  desk.begin_empty();
  CHECK(desk.restore(desk.file("more")) == "");
  CHECK(desk.calls()->size() == 1);
}

TEST_CASE("An audit goes on where somebody has written the last number that there is") {
  for (const char* sql : {"UPDATE audit SET number = 9223372036854775807 WHERE number = 2",
                          "UPDATE audit_end SET entries = 9223372036854775807"}) {
    CAPTURE(sql);
    SqliteDesk desk;
    REQUIRE(desk.write({event(1), event(2)}));
    OtherProgram(desk.path()).run(sql);
    CHECK(desk.write({event(3)}));
    CHECK(desk.write({event(4)}));
    CHECK(desk.audit()->size() == 4);
    CHECK(desk.verify()->first_wrong != 0);
  }
}

TEST_CASE("A backup of a store in use by another reader is whole") {
  SqliteDesk desk;
  REQUIRE(desk.write({full_call(1)}));
  const OtherProgram other(desk.path());
  other.run("BEGIN; SELECT * FROM calls");
  for (int i = 2; i < 300; ++i) {
    desk.store().write({full_call(i), event(i)}, [](bool) {});
  }
  REQUIRE(desk.backup(desk.file("b.db")) == "");
  const OtherProgram copy(desk.file("b.db"));
  CHECK(copy.run("SELECT count(*) FROM calls") == "299\n");
  CHECK(copy.run("PRAGMA integrity_check") == "ok\n");
  CHECK(copy.run("PRAGMA journal_mode") == "delete\n");
}

TEST_CASE("A full disk is told, and what was written before and is written after it stands") {
  const TemporaryDirectory directory;
  const fs::path disk = directory.path() / "disk";
  fs::create_directory(disk);
  if (::mount("none", disk.c_str(), "tmpfs", 0, "size=512k") != 0) {
    MESSAGE("a small disk can't be made here: skipped");
    return;
  }
  {
    PumpedPoster poster;
    SqliteStore store(disk / "server.db", poster);
    std::string trouble;
    store.on_trouble = [&](const std::string& told) { trouble = told; };
    const auto write = [&](std::vector<StoreChange> changes) {
      int told = -1;
      store.write(std::move(changes), [&](bool written) { told = written ? 1 : 0; });
      REQUIRE(poster.run_until([&] { return told >= 0; }));
      return told == 1;
    };
    int written = 0;
    while (written < 100'000 && write({full_call(written + 1), event(written)})) ++written;
    REQUIRE(written < 100'000);
    REQUIRE(written > 10);
    CHECK(trouble == "There is no room left on the disk for 'server.db'.");
    const auto stands = [&] {
      std::optional<AuditVerdict> verdict;
      bool told = false;
      store.verify_audit([&](auto came) {
        verdict = came;
        told = true;
      });
      REQUIRE(poster.run_until([&] { return told; }));
      REQUIRE(verdict);
      CHECK(verdict->first_wrong == 0);
      return verdict->entries;
    };
    ::mount("none", disk.c_str(), "tmpfs", MS_REMOUNT, "size=8m");
    CHECK(stands() == written);
    CHECK(write({full_call(written + 1), event(written)}));
    CHECK(trouble == "");
    CHECK(stands() == written + 1);
  }
  ::umount(disk.c_str());
}

TEST_CASE("A file that can't be written to is told") {
  SqliteDesk desk;
  REQUIRE(desk.write({event(1)}));
  desk.end();
  const TemporaryDirectory directory;
  const fs::path disk = directory.path() / "disk";
  fs::create_directory(disk);
  if (::mount("none", disk.c_str(), "tmpfs", 0, "size=1m") != 0) {
    MESSAGE("a disk that is read-only can't be made here: skipped");
    return;
  }
  fs::copy_file(desk.path(), disk / "server.db");
  ::mount("none", disk.c_str(), "tmpfs", MS_REMOUNT | MS_RDONLY, "");
  {
    PumpedPoster poster;
    SqliteStore store(disk / "server.db", poster);
    std::string trouble;
    store.on_trouble = [&](const std::string& told) { trouble = told; };
    int told = -1;
    store.write({event(2)}, [&](bool written) { told = written ? 1 : 0; });
    REQUIRE(poster.run_until([&] { return told >= 0; }));
    CHECK(told == 0);
    CHECK(trouble == "The file 'server.db' can't be written to: it or its folder is read-only.");
  }
  ::umount(disk.c_str());
}

TEST_CASE("What was asked before the end is written, and nobody is told behind it") {
  SqliteDesk desk;
  int told = 0;
  for (int i = 0; i < 300; ++i) {
    desk.store().write({event(i)}, [&](bool) { ++told; });
  }
  desk.begin_again();
  CHECK(desk.audit()->size() == 300);
  CHECK(told == 0);
}

// The real journal: its threads, its files and what other programs do to the logs.

#define DOCTEST_CONFIG_IMPLEMENT_WITH_MAIN
#include <doctest/doctest.h>
#include <signal.h>

#include <fstream>

#include "base/failure.h"
#include "journal_desk.h"
#include "other_process.h"
#include "platform/journal/call_store.h"

using namespace lineweir;
using namespace lineweir::test;
namespace fs = std::filesystem;

namespace {

using Names = std::vector<std::string>;

Names numbered(int count) {
  Names names;
  for (int i = 0; i < count; ++i) names.push_back("caller " + std::to_string(i));
  return names;
}

// Waits until calls wait, or none does.
bool await_waiting(JournalDesk& desk, int calls) {
  return desk.loop.run_until([&] { return desk.journal->state().waiting == calls; });
}

int trouble(JournalDesk& desk) {
  const auto troubles = desk.journal->state().troubles;
  return troubles.empty() ? 0 : troubles.front().number;
}

// Another program, to be made before the journal's threads are: told to go on, it holds the log
// until it is told again.
OtherProcess holder(const JournalDesk& desk) {
  const std::string file = desk.path("calls.mdb");
  return OtherProcess([file](const auto& tell, const auto& await) {
    await();
    sqlite3* connection = nullptr;
    sqlite3_open(file.c_str(), &connection);
    sqlite3_exec(connection, "BEGIN IMMEDIATE", nullptr, nullptr, nullptr);
    tell(1);
    await();
    sqlite3_exec(connection, "COMMIT", nullptr, nullptr, nullptr);
    sqlite3_close(connection);
  });
}

}  // namespace

TEST_CASE("Calls come into their logs in their order, and nothing is left beside them") {
  JournalDesk desk;
  desk.make_log();
  desk.make_log("other.mdb");
  desk.start();
  for (const std::string& name : numbered(300)) {
    desk.put(name);
    desk.put(name, "other.mdb");
  }
  desk.stop();
  CHECK(desk.names() == numbered(300));
  CHECK(desk.names("other.mdb") == numbered(300));
  CHECK(desk.journal_files().empty());
  CHECK(desk.query("SELECT * FROM \"Lineweir Journals\"").empty());
  CHECK_FALSE(fs::exists(desk.path("calls.mdb-wal")));
}

TEST_CASE("A call is put in the place of its earlier record, whether that is logged or not") {
  JournalDesk desk;
  desk.make_log();
  desk.start();
  const auto first = call_record("calls.mdb", "Ann");
  desk.journal->put(first);
  desk.put("Bob");
  auto second = call_record("calls.mdb", "Ann Smith", "Salem");
  second.replaced = first.columns;
  desk.journal->put(second);
  desk.stop();
  desk.start();
  auto third = call_record("calls.mdb", "Ann Jones", "Salem");
  third.replaced = second.columns;
  desk.journal->put(third);
  third.replaced = call_record("calls.mdb", "nobody").columns;
  third.columns[0].value = "Carla";
  desk.journal->put(third);
  desk.stop();
  CHECK(desk.names() == Names{"Ann Jones", "Bob", "Carla"});
}

TEST_CASE("A copy of the log's file alone holds the calls while the console goes on") {
  JournalDesk desk;
  desk.make_log();
  desk.start();
  for (const std::string& name : numbered(20)) desk.put(name);
  // A log that takes no calls is told behind all that came before it.
  desk.put("nobody", "nowhere.mdb");
  REQUIRE(await_waiting(desk, 1));
  fs::copy_file(desk.path("calls.mdb"), desk.path("copy.mdb"));
  CHECK(desk.names("copy.mdb") == numbered(20));
}

TEST_CASE("A log that another program holds takes the calls when it is let go") {
  JournalDesk desk;
  desk.make_log();
  OtherProcess other = holder(desk);
  desk.start();
  other.go_on();
  REQUIRE(other.next() == 1);
  for (const std::string& name : numbered(3)) desk.put(name);
  REQUIRE(await_waiting(desk, 3));
  CHECK(trouble(desk) == failure_number::database_in_use);
  CHECK(desk.journal->state().troubles[0].reason ==
        "The file 'calls.mdb' is in use by another program.");

  SUBCASE("while the console runs") {
    other.go_on();
    REQUIRE(await_waiting(desk, 0));
    CHECK(desk.names() == numbered(3));
  }
  SUBCASE("after the console was started again") {
    desk.stop();
    CHECK(desk.journal_files().size() == 1);
    other.go_on();
    other.wait();
    desk.start();
    desk.put("caller 3");
    desk.stop();
    CHECK(desk.names() == numbered(4));
    CHECK(desk.journal_files().empty());
    CHECK(desk.query("SELECT * FROM \"Lineweir Journals\"").empty());
  }
}

TEST_CASE("A log that is deleted is not made again, and takes the calls when it is back") {
  JournalDesk desk;
  desk.make_log();
  desk.start();
  desk.put("caller 0");
  desk.put("nobody", "nowhere.mdb");
  REQUIRE(await_waiting(desk, 1));
  fs::rename(desk.path("calls.mdb"), desk.path("moved.mdb"));
  desk.put("caller 1");
  REQUIRE(await_waiting(desk, 2));
  CHECK_FALSE(fs::exists(desk.path("calls.mdb")));
  const auto troubles = desk.journal->state().troubles;
  REQUIRE(troubles.size() == 2);
  CHECK(troubles[0].number == failure_number::database_not_found);
  CHECK(troubles[0].reason == "The call log 'calls.mdb' has been moved or deleted.");

  SUBCASE("the same file") {
    fs::rename(desk.path("moved.mdb"), desk.path("calls.mdb"));
    REQUIRE(await_waiting(desk, 1));
    CHECK(desk.names() == numbered(2));
    CHECK(desk.replaced.empty());
  }
  SUBCASE("another one") {
    desk.make_log();
    REQUIRE(await_waiting(desk, 1));
    CHECK(desk.names() == Names{"caller 1"});
    REQUIRE(desk.loop.run_until([&] { return !desk.replaced.empty(); }));
    CHECK(desk.replaced == Names{"calls.mdb"});
  }
}

TEST_CASE("A backup in the place of the log is noticed before the next call, which goes there") {
  JournalDesk desk;
  desk.make_log();
  desk.make_log("backup.mdb");
  desk.start();
  desk.put("caller 0");
  desk.put("nobody", "nowhere.mdb");
  REQUIRE(await_waiting(desk, 1));
  SUBCASE("as another file") { fs::rename(desk.path("backup.mdb"), desk.path("calls.mdb")); }
  SUBCASE("written over the same file") {
    std::ifstream backup(desk.path("backup.mdb"), std::ios::binary);
    std::ofstream(desk.path("calls.mdb"), std::ios::binary | std::ios::trunc) << backup.rdbuf();
  }
  desk.put("caller 1");
  REQUIRE(desk.loop.run_until([&] { return !desk.replaced.empty(); }));
  CHECK(desk.replaced == Names{"calls.mdb"});
  desk.put("caller 2");
  desk.stop();
  CHECK(desk.names() == Names{"caller 1", "caller 2"});
  CHECK(desk.query("PRAGMA integrity_check") == Names{"ok"});
}

TEST_CASE("Two consoles log, one shows its log and ends, a third program reads: nothing is lost") {
  constexpr int rounds = 200;
  JournalDesk desk;
  desk.make_log();
  const auto log_call = [&](platform::DatabaseEngine& engine, const std::string& name) {
    platform::CallStore(engine, "calls.mdb", log_table)
        .put(std::vector<platform::JournalRecord>{{{}, {}, call_record("calls.mdb", name)}});
  };
  OtherProcess second([&](const auto& tell, const auto& await) {
    platform::SqliteEngine engine(desk.folder.path(), utf8_letters(), std::chrono::seconds(1));
    for (int round = 0; round < rounds; ++round) {
      await();
      log_call(engine, "b" + std::to_string(round));
      tell(round);
    }
  });
  OtherProcess reader([&](const auto& tell, const auto& await) {
    for (int round = 0; round < rounds; ++round) {
      await();
      tell(static_cast<int>(desk.names().size()));
    }
  });
  platform::SqliteEngine engine(desk.folder.path(), utf8_letters(), std::chrono::seconds(1));
  platform::CallStore first(engine, "calls.mdb", log_table);
  const auto put = [&](const std::string& name) {
    first.put(std::vector<platform::JournalRecord>{{{}, {}, call_record("calls.mdb", name)}});
  };
  for (int round = 0; round < rounds; ++round) {
    put("a" + std::to_string(round));
    {
      // The first one shows its log, and chooses the same file again.
      const auto viewer = engine.open("calls.mdb");
      CHECK(viewer->open_recordset(log_table)->count() == 3 * round + 1);
      CHECK(engine.is_database("calls.mdb"));
    }
    second.go_on();
    REQUIRE(second.next() == round);
    put("c" + std::to_string(round));
    reader.go_on();
    REQUIRE(reader.next() == 3 * round + 3);
  }
  CHECK(second.wait() == 0);
  CHECK(reader.wait() == 0);
}

TEST_CASE("Calls that wait for one log go to another one instead, once") {
  JournalDesk desk;
  desk.start();
  for (const std::string& name : numbered(3)) desk.put(name);
  REQUIRE(await_waiting(desk, 3));
  desk.make_log("other.mdb");
  desk.put("earlier", "other.mdb");
  desk.journal->redirect("calls.mdb", "other.mdb");
  desk.put("later", "other.mdb");
  REQUIRE(await_waiting(desk, 0));
  desk.stop();
  CHECK(desk.journal_files().empty());
  CHECK(desk.query("SELECT Name FROM Calls WHERE Name LIKE 'caller%' ORDER BY rowid",
                   "other.mdb") == numbered(3));
  CHECK(desk.names("other.mdb").size() == 5);
}

TEST_CASE("A call for another log that is killed on its way is in one of them and not in both") {
  JournalDesk desk;
  OtherProcess console([&](const auto& tell, const auto& await) {
    desk.start();
    for (const std::string& name : numbered(3)) desk.put(name);
    await_waiting(desk, 3);
    desk.journal->redirect("calls.mdb", "other.mdb");
    desk.put("nobody", "nowhere.mdb");
    await_waiting(desk, 4);
    tell(1);
    await();
  });
  REQUIRE(console.next() == 1);
  console.kill();
  console.wait();
  desk.make_log();
  desk.make_log("other.mdb");
  desk.start();
  desk.stop();
  CHECK(desk.names() == Names{});
  CHECK(desk.names("other.mdb") == numbered(3));
}

TEST_CASE("Two consoles in one folder write to one log") {
  JournalDesk desk;
  desk.make_log();
  std::vector<std::unique_ptr<OtherProcess>> consoles;
  for (const std::string letter : {"a", "b"}) {
    consoles.push_back(std::make_unique<OtherProcess>([&, letter](const auto&, const auto& await) {
      desk.start();
      await();
      for (const std::string& name : numbered(500)) desk.put(letter + name);
      desk.stop();
    }));
  }
  for (const auto& console : consoles) console->go_on();
  for (const auto& console : consoles) CHECK(console->wait() == 0);
  // What one could not bring into the log since the other held it comes with the next start.
  desk.start();
  desk.stop();
  for (const std::string letter : {"a", "b"}) {
    Names expected;
    for (const std::string& name : numbered(500)) expected.push_back(letter + name);
    CHECK(desk.query("SELECT Name FROM Calls WHERE Name LIKE '" + letter + "%' ORDER BY rowid") ==
          expected);
  }
  CHECK(desk.journal_files().empty());
}

TEST_CASE("A folder that takes no journal: the calls come into their log all the same") {
  JournalDesk desk;
  desk.make_log();
  const TemporaryDirectory logs(memory_disk());
  fs::copy_file(desk.path("calls.mdb"), logs.path() / "calls.mdb");
  desk.start();
  const std::string log = (logs.path() / "calls.mdb").string();
  fs::remove_all(desk.folder.path());
  desk.put("caller 0", log);
  desk.put("caller 1", (logs.path() / "nowhere.mdb").string());
  REQUIRE(desk.loop.run_until([&] { return !desk.journal->state().journal_trouble.empty(); }));
  CHECK(desk.journal->state().journal_trouble == "The calls can't be kept in " +
                                                     desk.folder.path().string() +
                                                     ": No such file or directory.");
  fs::create_directory(desk.folder.path());
  REQUIRE(desk.loop.run_until([&] { return desk.journal->state().journal_trouble.empty(); }));
  CHECK(desk.names(log) == Names{"caller 0"});
}

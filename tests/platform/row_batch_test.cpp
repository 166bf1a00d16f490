#include <doctest/doctest.h>
#include <sqlite3.h>

#include <chrono>
#include <functional>
#include <thread>

#include "platform/sqlite/sqlite_engine.h"
#include "temporary_directory.h"

using namespace lineweir;
using namespace lineweir::platform;

namespace {

using Stage = RowBatch::Stage;

struct BatchFixture {
  explicit BatchFixture(BatchWork work = BatchWork::OnThreads)
      : engine(directory.path(), utf8_letters(), LockWait::zero(), nullptr, work),
        database(engine.create("calls.lwl")) {
    database->create_table("Calls", {{"Name", 10}, {"Number", 15}});
    database->index_numbers("Calls", 1);
    rows = database->open_recordset("Calls");
  }

  std::vector<std::string> names() {
    std::vector<std::string> found;
    rows->scan({false, std::nullopt, 1000000, {0}},
               [&](RowId, auto values) { found.emplace_back(values[0]); });
    return found;
  }

  TemporaryDirectory directory;
  SqliteEngine engine;
  std::unique_ptr<Database> database;
  std::unique_ptr<Recordset> rows;
};

// Another program that is writing to the file.
class Writer {
 public:
  explicit Writer(const std::filesystem::path& file) {
    REQUIRE(sqlite3_open(file.c_str(), &connection_) == SQLITE_OK);
    REQUIRE(sqlite3_exec(connection_, "BEGIN IMMEDIATE", nullptr, nullptr, nullptr) == SQLITE_OK);
  }
  ~Writer() { sqlite3_close(connection_); }
  void finish() { sqlite3_exec(connection_, "COMMIT", nullptr, nullptr, nullptr); }

 private:
  sqlite3* connection_ = nullptr;
};

// A thread tells of nothing: it is asked until it is there.
bool reaches(const RowBatch& batch, const std::function<bool(Stage)>& wanted) {
  const auto limit = std::chrono::steady_clock::now() + std::chrono::seconds(30);
  while (!wanted(batch.progress().stage)) {
    if (std::chrono::steady_clock::now() > limit) return false;
    std::this_thread::yield();
  }
  return true;
}

bool reaches(const RowBatch& batch, Stage stage) {
  return reaches(batch, [stage](Stage present) { return present == stage; });
}

TEST_CASE("Rows are stored all together and in their order, those told apart if they are wanted") {
  for (const auto work : {BatchWork::OnThreads, BatchWork::AtOnce}) {
    for (const bool apart_too : {false, true}) {
      BatchFixture test(work);
      const auto batch = test.database->collect_rows("calls");
      std::vector<std::string> expected;
      for (int i = 0; i < 12000; ++i) {
        const bool apart = i % 3 == 0;
        batch->add({"n" + std::to_string(i), "555-0" + std::to_string(i)}, apart);
        if (!apart || apart_too) expected.push_back("n" + std::to_string(i));
      }
      CHECK(test.names().empty());
      batch->store(apart_too);
      REQUIRE(reaches(*batch, Stage::Stored));
      CHECK(batch->progress().done == 12000);
      CHECK(test.names() == expected);
      int found = 0;
      test.rows->find_number(1, "55507", 10, {0}, [&](RowId, auto) { ++found; });
      CHECK(found == 1);
    }
  }
}

TEST_CASE("Rows that aren't stored leave nothing, and nobody waits for them") {
  BatchFixture test;
  {
    const auto batch = test.database->collect_rows("Calls");
    for (int i = 0; i < 1000; ++i) batch->add({"a", ""}, false);
    REQUIRE(reaches(*batch, [&](Stage) { return batch->waiting() == 0; }));
    // Others write meanwhile.
    test.rows->add_new();
    test.rows->set_field("Name", "other");
    test.rows->update();
  }
  CHECK(test.names() == std::vector<std::string>{"other"});
}

TEST_CASE("A batch waits for another program that is writing, and can be cancelled meanwhile") {
  for (const int round : {0, 1, 2, 3}) {
    const auto work = round < 2 ? BatchWork::OnThreads : BatchWork::AtOnce;
    const bool cancelled = round % 2 == 1;
    BatchFixture test(work);
    const auto batch = test.database->collect_rows("Calls");
    batch->add({"a", ""}, false);
    REQUIRE(reaches(*batch, [&](Stage) { return batch->waiting() == 0; }));
    Writer writer(test.directory.path() / "calls.lwl");
    batch->store(false);
    REQUIRE(reaches(*batch, Stage::Waiting));
    if (cancelled) {
      batch->cancel();
      CHECK(reaches(*batch, Stage::Cancelled));
      writer.finish();
      CHECK(test.names().empty());
    } else {
      writer.finish();
      CHECK(reaches(*batch, Stage::Stored));
      CHECK(test.names() == std::vector<std::string>{"a"});
    }
  }
}

TEST_CASE("Nothing is stored once another file or none lies under the name") {
  for (const auto work : {BatchWork::OnThreads, BatchWork::AtOnce}) {
    for (const bool replaced : {false, true}) {
      BatchFixture test(work);
      const auto batch = test.database->collect_rows("Calls");
      batch->add({"a", ""}, false);
      REQUIRE(reaches(*batch, [&](Stage) { return batch->waiting() == 0; }));
      const auto file = test.directory.path() / "calls.lwl";
      std::filesystem::rename(file, test.directory.path() / "moved.lwl");
      if (replaced) test.engine.create("calls.lwl")->create_table("Calls", {{"Name", 10}});
      batch->store(false);
      REQUIRE(reaches(*batch, Stage::Failed));
      CHECK(batch->progress().failure->number() == failure_number::database_not_found);
      CHECK(batch->progress().failure->what() ==
            std::string("The file 'calls.lwl' has been moved or deleted."));
      CHECK(test.names().empty());
      CHECK(std::filesystem::exists(file) == replaced);
    }
  }
}

TEST_CASE("A long storing can be cancelled, and stores nothing or all") {
  BatchFixture test;
  const auto batch = test.database->collect_rows("Calls");
  for (int i = 0; i < 100000; ++i) batch->add({"a", ""}, false);
  batch->store(false);
  REQUIRE(reaches(*batch, [](Stage stage) { return stage != Stage::Collecting; }));
  batch->cancel();
  REQUIRE(reaches(*batch,
                  [](Stage stage) { return stage == Stage::Cancelled || stage == Stage::Stored; }));
  const std::size_t stored = test.names().size();
  CHECK(stored == (batch->progress().stage == Stage::Stored ? 100000 : 0));
}

TEST_CASE("A failure is kept, and the table stays as it is") {
  BatchFixture test;
  const auto batch = test.database->collect_rows("No such table");
  REQUIRE(reaches(*batch, Stage::Failed));
  CHECK(batch->progress().failure->number() == failure_number::no_such_table);
  batch->add({"a", ""}, false);
  batch->store(true);
  CHECK(batch->progress().stage == Stage::Failed);
}

}  // namespace

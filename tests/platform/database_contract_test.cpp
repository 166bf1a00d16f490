#include <doctest/doctest.h>

#include <fstream>

#include "platform/database.h"
#include "platform/scripted/memory_databases.h"
#include "platform/sqlite/sqlite_engine.h"
#include "support/failure_number.h"
#include "temporary_directory.h"

using namespace lineweir;
using lineweir::test::failure_number_of;
using namespace lineweir::platform;

namespace {

// What every database engine has to keep, on the disk and in memory.
struct InMemory {
  // As a kill does: nothing that was begun is tidied up.
  void leave_without_table(const std::string& path) {
    engine.create(path)->create_table("Any", {});
    engine.find(path)->tables.clear();
  }

  MemoryDatabases engine;
};

struct OnDisk {
  void leave_without_table(const std::string& path) { std::ofstream made(directory.path() / path); }

  TemporaryDirectory directory;
  SqliteEngine engine{directory.path()};
};

const std::vector<DatabaseColumn> people = {{"Name", 5}, {"City", 0}, {"Number", 15}};
constexpr const char* table = "People at home";

template <class Kind>
struct Fixture : Kind {
  Fixture() {
    database = this->engine.create("people.any");
    database->create_table(table, people);
    rows = database->open_recordset(table);
  }

  RowId add(const std::string& name, const std::string& city = {}, const std::string& number = {}) {
    rows->add_new();
    rows->set_field(0, name);
    rows->set_field(1, city);
    rows->set_field(2, number);
    return rows->update();
  }

  // The names that a scan gives, in its order.
  std::vector<std::string> names(RowScan scan = {}) {
    std::vector<std::string> found;
    scan.columns = {0};
    rows->scan(scan, [&](RowId, auto values) { found.emplace_back(values[0]); });
    return found;
  }

  std::vector<std::string> numbered(const std::string& number, int limit = 100) {
    std::vector<std::string> found;
    rows->find_number(2, number, limit, {0},
                      [&](RowId, auto values) { found.emplace_back(values[0]); });
    return found;
  }

  std::unique_ptr<Database> database;
  std::unique_ptr<Recordset> rows;
};

using Names = std::vector<std::string>;

}  // namespace

TYPE_TO_STRING(Fixture<InMemory>);
TYPE_TO_STRING(Fixture<OnDisk>);

TEST_CASE_TEMPLATE("Rows exchange their places with all that they hold", Kind, Fixture<InMemory>,
                   Fixture<OnDisk>) {
  Kind test;
  std::vector<RowId> ids;
  for (const char* name : {"Ann", "Bea", "Cid", "Dan"}) ids.push_back(test.add(name, name));
  test.database->in_transaction([&] { test.rows->take_places({ids[3], ids[0], ids[1]}); });
  CHECK(test.names() == Names{"Dan", "Ann", "Cid", "Bea"});
  CHECK(test.rows->row(ids[0])->at(1) == "Dan");
  CHECK(test.add("Eva") > ids[3]);
}

TEST_CASE_TEMPLATE("A file that doesn't exist is failure 3024, and one that does isn't made again",
                   Kind, Fixture<InMemory>, Fixture<OnDisk>) {
  Kind test;
  CHECK(failure_number_of([&] { test.engine.open("nobody.any"); }) == 3024);
  CHECK(failure_number_of([&] { test.engine.create("people.any"); }) == 3204);
  CHECK(test.engine.open("people.any")->table_columns(table) == people);
}

TEST_CASE_TEMPLATE("A new file without a table doesn't stay", Kind, Fixture<InMemory>,
                   Fixture<OnDisk>) {
  Kind test;
  test.engine.create("empty.any").reset();
  CHECK(failure_number_of([&] { test.engine.open("empty.any"); }) == 3024);
}

TEST_CASE_TEMPLATE("A file that a program was killed in while it made it is made anew", Kind,
                   Fixture<InMemory>, Fixture<OnDisk>) {
  Kind test;
  test.leave_without_table("begun.any");
  CHECK(failure_number_of([&] { test.engine.open("begun.any")->open_recordset(table); }) == 3078);
  test.engine.create("begun.any")->create_table(table, people);
  CHECK(test.engine.open("begun.any")->table_columns(table) == people);
  CHECK(failure_number_of([&] { test.engine.create("begun.any"); }) == 3204);
}

TEST_CASE_TEMPLATE("A table keeps its columns, their order and sizes; unusable names make none",
                   Kind, Fixture<InMemory>, Fixture<OnDisk>) {
  Kind test;
  CHECK(test.rows->fields() == people);
  CHECK(test.database->table_columns("people AT HOME") == people);
  CHECK(failure_number_of([&] { test.database->table_columns("Pets"); }) == 3078);
  CHECK(failure_number_of([&] { test.database->open_recordset("Pets"); }) == 3078);
  CHECK(failure_number_of([&] {
          test.database->create_table("Twice", {{"City", 1}, {"CITY", 2}});
        }) == 3191);
  CHECK(failure_number_of([&] { test.database->create_table("No name", {{"", 1}}); }) == 3191);
}

TEST_CASE_TEMPLATE("Rows are added field by field, by name and by position", Kind,
                   Fixture<InMemory>, Fixture<OnDisk>) {
  Kind test;
  test.rows->add_new();
  test.rows->set_field("nAmE", "Jane");
  test.rows->set_field(2, "555-0100");
  CHECK(test.rows->field(0) == "Jane");
  CHECK(test.rows->field(1) == "");
  const RowId id = test.rows->update();

  CHECK(test.rows->count() == 1);
  CHECK(*test.rows->row(id) == Names{"Jane", "", "555-0100"});
  CHECK_FALSE(test.rows->row(id + 1));
  CHECK(failure_number_of([&] { test.rows->update(); }) == 3020);
  CHECK(failure_number_of([&] { test.rows->set_field(0, "x"); }) == 3020);
  CHECK(failure_number_of([&] { test.rows->field(0); }) == 3020);
  test.rows->add_new();
  CHECK(failure_number_of([&] { test.rows->set_field(3, "x"); }) == 3265);
  CHECK(failure_number_of([&] { test.rows->set_field(-1, "x"); }) == 3265);
  CHECK(failure_number_of([&] { test.rows->set_field("Street", "x"); }) == 3265);
  test.rows->refresh();
  CHECK(failure_number_of([&] { test.rows->update(); }) == 3020);
}

TEST_CASE_TEMPLATE("A value is cut at the size of its column, between characters", Kind,
                   Fixture<InMemory>, Fixture<OnDisk>) {
  Kind test;
  const std::string long_text(10000, 'x');
  const RowId id = test.add(
      "\xC3\x89\xC3\x89\xE2\x82\xAC"
      "abcd",
      long_text);
  CHECK(*test.rows->row(id) == Names{"\xC3\x89\xC3\x89\xE2\x82\xAC"
                                     "ab",
                                     long_text, ""});
  CHECK(test.names() == Names{"\xC3\x89\xC3\x89\xE2\x82\xAC"
                              "ab"});
}

TEST_CASE_TEMPLATE("Any characters come back as they were stored", Kind, Fixture<InMemory>,
                   Fixture<OnDisk>) {
  Kind test;
  const std::string text("'\";--\n\0\x02%_ NULL", 15);
  const RowId id = test.add("O'Ha\"", text);
  CHECK(*test.rows->row(id) == Names{"O'Ha\"", text, ""});
}

TEST_CASE_TEMPLATE("A row can be changed and removed", Kind, Fixture<InMemory>, Fixture<OnDisk>) {
  Kind test;
  const RowId jane = test.add("Jane", "Peoria");
  const RowId jim = test.add("Jim", "Cairo");
  test.rows->edit(jane);
  CHECK(test.rows->field(1) == "Peoria");
  test.rows->set_field("City", "Rome");
  CHECK(test.rows->update() == jane);
  CHECK(*test.rows->row(jane) == Names{"Jane", "Rome", ""});
  CHECK(*test.rows->row(jim) == Names{"Jim", "Cairo", ""});

  test.rows->edit(jane);
  test.rows->set_field(0, "Joan");
  test.rows->remove(jane);
  CHECK(failure_number_of([&] { test.rows->update(); }) == 3021);
  CHECK(failure_number_of([&] { test.rows->edit(jane); }) == 3021);
  CHECK(failure_number_of([&] { test.rows->remove(jane); }) == 3021);
  CHECK(test.names() == Names{"Jim"});
}

TEST_CASE_TEMPLATE("Two hands that change different fields of a row both win", Kind,
                   Fixture<InMemory>, Fixture<OnDisk>) {
  Kind test;
  const RowId id = test.add("Jane", "Peoria");
  auto other = test.engine.open("people.any");
  auto other_rows = other->open_recordset(table);
  test.rows->edit(id);
  other_rows->edit(id);
  test.rows->set_field(0, "Joan");
  other_rows->set_field(1, "Rome");
  other_rows->update();
  test.rows->update();
  CHECK(*test.rows->row(id) == Names{"Joan", "Rome", ""});
}

TEST_CASE_TEMPLATE("Rows are read in pages from either end", Kind, Fixture<InMemory>,
                   Fixture<OnDisk>) {
  Kind test;
  std::vector<RowId> ids;
  for (const char* name : {"a", "b", "c", "d", "e"}) ids.push_back(test.add(name));
  CHECK(std::is_sorted(ids.begin(), ids.end()));
  test.rows->remove(ids[1]);

  CHECK(test.names() == Names{"a", "c", "d", "e"});
  CHECK(test.names({false, std::nullopt, 2, {}}) == Names{"a", "c"});
  CHECK(test.names({false, ids[2], 2, {}}) == Names{"d", "e"});
  CHECK(test.names({false, ids[4], 2, {}}) == Names{});
  CHECK(test.names({true, std::nullopt, 2, {}}) == Names{"e", "d"});
  CHECK(test.names({true, ids[3], 100, {}}) == Names{"c", "a"});
  CHECK(test.names({true, ids[0], 100, {}}) == Names{});
  CHECK(test.names({true, std::nullopt, 0, {}}) == Names{});
  CHECK(test.rows->scan({false, std::nullopt, 3, {}}, [](RowId, auto) {}) == 3);
  CHECK(test.rows->scan({false, std::nullopt, 100, {}}, [](RowId, auto) {}) == 4);
  CHECK(failure_number_of([&] {
          test.rows->scan({false, std::nullopt, 3, {3}}, [](RowId, auto) {});
        }) == 3265);
}

TEST_CASE_TEMPLATE("A scan gives the wanted columns in the wanted order", Kind, Fixture<InMemory>,
                   Fixture<OnDisk>) {
  Kind test;
  const RowId id = test.add("Jane", "Rome", "7");
  Names seen;
  RowId seen_id = 0;
  test.rows->scan({false, std::nullopt, 5, {2, 0, 2}}, [&](RowId row, auto values) {
    seen_id = row;
    seen.assign(values.begin(), values.end());
  });
  CHECK(seen_id == id);
  CHECK(seen == Names{"7", "Jane", "7"});
}

TEST_CASE_TEMPLATE("What a visitor throws ends the scan and comes out of it", Kind,
                   Fixture<InMemory>, Fixture<OnDisk>) {
  Kind test;
  test.add("a");
  test.add("b");
  int visits = 0;
  CHECK(failure_number_of([&] {
          test.rows->scan({}, [&](RowId, auto) {
            ++visits;
            throw Failure(9, "Enough");
          });
        }) == 9);
  CHECK(visits == 1);
  CHECK(test.names() == Names{"a", "b"});
}

TEST_CASE_TEMPLATE("A number is found however it was written, the newest row first", Kind,
                   Fixture<InMemory>, Fixture<OnDisk>) {
  Kind test;
  test.database->index_numbers(table, 2);
  test.database->index_numbers(table, 2);
  test.add("old", "", "(312) 555-0100");
  test.add("other", "", "312-555-0101");
  test.add("new", "", "312.555.0100");
  CHECK(test.numbered("3125550100") == Names{"new", "old"});
  CHECK(test.numbered("+312/555 0100") == Names{"new", "old"});
  CHECK(test.numbered("312 555 0100", 1) == Names{"new"});
  CHECK(test.numbered("5550100") == Names{});
  test.add("dash", "", "312\u2013555\u00a00100x");
  CHECK(test.numbered("T 312:555,0100") == Names{"dash", "new", "old"});
  CHECK(failure_number_of([&] { test.database->index_numbers(table, 3); }) == 3265);
}

TEST_CASE_TEMPLATE("A column is renamed where it stands and keeps what it holds", Kind,
                   Fixture<InMemory>, Fixture<OnDisk>) {
  Kind test;
  test.database->index_numbers(table, 2);
  const RowId id = test.add("Jane", "Rome", "555 0100");
  test.database->rename_column(table, 1, "Home \"town\"");
  test.database->rename_column(table, 2, "Phone");
  CHECK(test.database->table_columns(table) ==
        std::vector<DatabaseColumn>{{"Name", 5}, {"Home \"town\"", 0}, {"Phone", 15}});
  CHECK(*test.rows->row(id) == Names{"Jane", "Rome", "555 0100"});

  // A recordset that was open goes on, under the old names until it is refreshed.
  test.rows->add_new();
  test.rows->set_field("City", "Cairo");
  test.rows->update();
  test.rows->refresh();
  CHECK(test.rows->fields()[1].name == "Home \"town\"");
  test.rows->add_new();
  CHECK(failure_number_of([&] { test.rows->set_field("City", "Cairo"); }) == 3265);
  CHECK(test.numbered("5550100") == Names{"Jane"});

  CHECK(failure_number_of([&] { test.database->rename_column(table, 1, "NAME"); }) == 3191);
  CHECK(failure_number_of([&] { test.database->rename_column(table, 1, ""); }) == 3191);
  CHECK(failure_number_of([&] { test.database->rename_column(table, 3, "x"); }) == 3265);
  test.database->rename_column(table, 0, "NAME");
  CHECK(test.database->table_columns(table)[0].name == "NAME");
}

TEST_CASE_TEMPLATE("A transaction is stored whole or not at all", Kind, Fixture<InMemory>,
                   Fixture<OnDisk>) {
  Kind test;
  test.add("first");
  CHECK(failure_number_of([&] {
          test.database->in_transaction([&] {
            test.add("lost");
            throw Failure(9, "Stop");
          });
        }) == 9);
  CHECK(test.names() == Names{"first"});
  test.database->in_transaction([&] {
    test.add("second");
    test.add("third");
  });
  CHECK(test.names() == Names{"first", "secon", "third"});
}

TEST_CASE_TEMPLATE("Each change of a file can be told by every one that has it open", Kind,
                   Fixture<InMemory>, Fixture<OnDisk>) {
  Kind test;
  auto other = test.engine.open("people.any");
  auto other_rows = other->open_recordset(table);
  const auto before = test.database->change_stamp();
  const auto before_other = other->change_stamp();
  CHECK(test.database->change_stamp() == before);
  test.add("a");
  const auto between = test.database->change_stamp();
  CHECK(between != before);
  CHECK(other->change_stamp() != before_other);
  other_rows->add_new();
  other_rows->update();
  CHECK(test.database->change_stamp() != between);
}

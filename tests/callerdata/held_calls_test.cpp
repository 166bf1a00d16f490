#include "callerdata/held_calls.h"

#include <doctest/doctest.h>

#include "callerdata/call_log.h"
#include "forms/call_log_columns.h"
#include "platform/scripted/memory_databases.h"

namespace lineweir::test {
namespace {

using Texts = std::vector<std::string>;

struct HeldLog {
  HeldLog() : database(engine.create("log")) {
    database->create_table(std::string(call_log_table), new_log_columns("User"));
    rows = database->open_recordset(std::string(call_log_table));
  }

  void add(const std::string& name, const std::string& station = "") {
    rows->add_new();
    rows->set_field(0, name);
    rows->set_field(7, station);
    rows->update();
  }
  int look() {
    int slices = 0;
    for (held.begin(*rows); held.working(); ++slices) held.work();
    return slices;
  }
  static Texts call(const std::string& name, const std::string& station = "") {
    Texts texts(call_log_columns.size());
    texts[0] = name;
    texts[7] = station;
    return texts;
  }

  platform::MemoryDatabases engine;
  std::unique_ptr<platform::Database> database;
  std::unique_ptr<platform::Recordset> rows;
  HeldCalls held;
};

TEST_SUITE("callerdata/held calls") {
  TEST_CASE("a call is held where all of its texts are, but for blanks behind them") {
    HeldLog log;
    log.add("Ann", "KLWR      ");
    log.look();
    CHECK_FALSE(log.held.take(log.call("Ann")));
    CHECK_FALSE(log.held.take(log.call("ann", "KLWR")));
    CHECK(log.held.take(log.call("Ann", "KLWR")));
  }

  TEST_CASE("each row stands for one call, until all are put back") {
    HeldLog log;
    log.add("Ann");
    log.add("Bob");
    log.add("Ann");
    log.look();
    for (int round = 0; round < 2; ++round) {
      CHECK(log.held.take(log.call("Ann")));
      CHECK(log.held.take(log.call("Bob")));
      CHECK(log.held.take(log.call("Ann")));
      CHECK_FALSE(log.held.take(log.call("Ann")));
      CHECK_FALSE(log.held.take(log.call("Bob")));
      log.held.put_back();
    }
  }

  TEST_CASE("a long log is looked at in slices, and many calls that are alike are no burden") {
    HeldLog log;
    for (int i = 0; i < 9000; ++i) log.add(i % 2 == 0 ? "private" : std::to_string(i));
    CHECK(log.look() > 3);
    CHECK(log.held.percent() == 100);
    for (int i = 0; i < 4500; ++i) REQUIRE(log.held.take(log.call("private")));
    CHECK_FALSE(log.held.take(log.call("private")));
  }

  TEST_CASE("an empty log holds nothing") {
    HeldLog log;
    log.look();
    CHECK_FALSE(log.held.take(log.call("Ann")));
    log.held.forget();
    CHECK_FALSE(log.held.take(log.call("Ann")));
  }

  TEST_CASE(
      "what was looked at is known no more when it is forgotten, or when another log begins") {
    HeldLog log;
    log.add("Ann");
    log.look();
    CHECK(log.held.take(log.call("Ann")));
    log.held.put_back();
    log.held.forget();
    CHECK_FALSE(log.held.take(log.call("Ann")));
    HeldLog other;
    other.add("Bob");
    log.look();
    CHECK(log.held.take(log.call("Ann")));
    for (log.held.begin(*other.rows); log.held.working();) log.held.work();
    CHECK_FALSE(log.held.take(log.call("Ann")));
    CHECK(log.held.take(log.call("Bob")));
  }

  TEST_CASE("how far it is, is told from nothing to all") {
    HeldLog log;
    for (int i = 0; i < 10000; ++i) log.add(std::to_string(i));
    std::vector<int> percents;
    for (log.held.begin(*log.rows); log.held.working(); log.held.work()) {
      percents.push_back(log.held.percent());
    }
    CHECK(percents.at(0) == 0);
    CHECK(percents.at(1) == 40);
    CHECK(percents.at(2) == 80);
    // While they are put in order nothing is left to look at.
    CHECK(percents.back() == 100);
    CHECK(log.held.percent() == 100);
    HeldLog empty;
    empty.held.begin(*empty.rows);
    CHECK(empty.held.percent() == 100);
  }

  TEST_CASE("a row that was removed since is held no more") {
    HeldLog log;
    log.add("Ann");
    log.add("Bob");
    log.look();
    log.rows->remove(1);
    CHECK_FALSE(log.held.take(log.call("Ann")));
    CHECK(log.held.take(log.call("Bob")));
  }
}

}  // namespace
}  // namespace lineweir::test

#include "platform/postgres_store/postgres_store.h"

#include <doctest/doctest.h>
#include <signal.h>

#include <fstream>
#include <set>

#include "platform/postgres/postgres_desk.h"
#include "platform/pumped_poster.h"
#include "platform/sqlite_store/sqlite_store.h"

using namespace lineweir;
using namespace lineweir::platform;
using lineweir::test::PostgresCluster;

namespace {

bool has(const std::string& text, const std::string& part) {
  return text.find(part) != std::string::npos;
}

// Nothing of it is told to be there.
bool fails(PostgresDesk& desk) {
  return !desk.load() && !desk.write({event(900)}) && !desk.calls() && !desk.audit() &&
         !desk.verify() && !desk.backup(desk.file("none")).empty();
}

// Another server's store in the same database.
struct Second {
  explicit Second(PostgresDesk& desk)
      : watch(desk.loop()),
        store(*PostgresAddress::read(desk.url()), {desk.loop(), watch, desk.loop()}) {}

  AsioDescriptorWatch watch;
  PostgresStore store;
};

}  // namespace

TEST_CASE("Whatever bytes a text holds, and however many, it comes back as it was") {
  PostgresDesk desk;
  std::string all;
  for (int byte = 0; byte < 256; ++byte) all += static_cast<char>(byte);
  CallRecord call = full_call(1);
  call.id = std::numeric_limits<std::int64_t>::max();
  call.number = all;
  call.told_by = std::string("\0", 1);
  call.told[3] = std::string(2'000'000, '\xE9');
  call.told[4] = "\U0010FFFF\U0010FF00";
  call.steps[0].user = "\x80";
  call.ended = Moment{std::numeric_limits<std::int64_t>::max()};
  Account account = full_account("Zo\xEB");
  account.password_hash = all;
  account.profile = all;
  account.rights = {{0, all}};
  const GroupMemory group{
      .group = 250, .next_call = 0, .message = all, .show_times = {"", "\xFF", all}};
  AuditEvent told = event(1);
  told.detail = all;
  REQUIRE(desk.write({call, account, full_account("Zoë"), group, told}));
  desk.begin_again();
  CHECK(desk.calls() == std::vector{call});
  CHECK(desk.load()->accounts == std::vector{full_account("Zoë"), account});
  CHECK(desk.load()->groups == std::vector{group});
  CHECK(desk.audit()->front().event == told);
  CHECK(desk.verify()->first_wrong == 0);
  REQUIRE(desk.write({AccountRemoval{account.name}}));
  CHECK(desk.load()->accounts == std::vector{full_account("Zoë")});
}

TEST_CASE("Another program reads the tables and understands them") {
  PostgresDesk desk;
  REQUIRE(desk.write({full_call(4), full_account("Zoë"), event(1)}));
  CHECK(desk.run("SELECT line, number, answered - began, caller_name FROM calls") ==
        "1|0555 01|5000|field '0\n");
  CHECK(desk.run("SELECT began AT TIME ZONE 'UTC', told_by FROM call_list") ==
        "2023-11-14 22:17:20|Zoë\n");
  CHECK(desk.run("SELECT who, action FROM audit") == "Zoë|on air\n");
  CHECK(desk.run("SELECT version FROM store_version") == "3\n");
}

TEST_CASE("Each entry of the audit that is changed or removed in the database is named") {
  PostgresDesk desk;
  for (int i = 1; i <= 4; ++i) REQUIRE(desk.write({event(i)}));
  desk.run(
      "CREATE TABLE whole AS SELECT * FROM audit; "
      "CREATE TABLE whole_end AS SELECT * FROM audit_end");
  for (const char* change :
       {"UPDATE audit SET id = id || 'x'", "UPDATE audit SET at = at + 1",
        "UPDATE audit SET who = 'nobody'", "UPDATE audit SET action = 'login'",
        "UPDATE audit SET detail = ''", "UPDATE audit SET hash = '00'", "DELETE FROM audit"}) {
    for (int number = 1; number <= 4; ++number) {
      CAPTURE(change);
      CAPTURE(number);
      desk.run(
          "DELETE FROM audit; INSERT INTO audit SELECT * FROM whole; DELETE FROM audit_end; "
          "INSERT INTO audit_end SELECT * FROM whole_end");
      REQUIRE(desk.verify()->first_wrong == 0);
      desk.run(change + (" WHERE number = " + std::to_string(number)));
      CHECK(desk.verify()->first_wrong == number);
      // The audit goes on, and the fault stays where it is.
      REQUIRE(desk.write({event(100)}));
      CHECK(desk.verify()->first_wrong == number);
    }
  }
  desk.run("DELETE FROM audit_end");
  CHECK(desk.write({event(101)}));
  CHECK(desk.audit()->back().event == event(101));
}

TEST_CASE("A long audit is verified piece by piece") {
  PostgresDesk desk;
  std::vector<StoreChange> events;
  for (int i = 1; i <= 1700; ++i) events.emplace_back(event(i));
  REQUIRE(desk.write(events));
  CHECK(desk.verify()->entries == 1700);
  CHECK(desk.verify()->first_wrong == 0);
  desk.run("UPDATE audit SET who = 'x' WHERE number = 1501");
  CHECK(desk.verify()->first_wrong == 1501);
}

TEST_CASE("Two servers that begin at once on an empty database make one store and keep one audit") {
  for (int round = 0; round < 3; ++round) {
    PostgresDesk desk;
    Second second(desk);
    int left = 200;
    int failed = 0;
    const auto done = [&](bool written) {
      --left;
      if (!written) ++failed;
    };
    for (int i = 0; i < 100; ++i) {
      desk.store().write({event(2 * i), full_call(2 * i + 1)}, done);
      second.store.write({event(2 * i + 1), full_call(2 * i + 2)}, done);
    }
    REQUIRE(desk.run_until([&] { return left == 0; }));
    CHECK(failed == 0);
    CHECK(desk.verify()->entries == 200);
    CHECK(desk.verify()->first_wrong == 0);
    CHECK(desk.calls()->size() == 200);
    CHECK(desk.run("SELECT count(*) FROM store_version") == "1\n");
  }
}

TEST_CASE("A store of the first version gets what later ones have, and keeps what it holds") {
  PostgresDesk desk;
  REQUIRE(desk.write({event(1)}));
  CallRecord call = full_call(1);
  call.number = "+1 312 555-0100";
  call.told[told_phone_number] = "none";
  REQUIRE(desk.write({call, full_call(2)}));
  const auto keys = [&] { return desk.run("SELECT caller FROM calls ORDER BY id"); };
  const std::string known = keys();
  desk.end();
  desk.run(
      "DROP TABLE leaders, leader_proofs, flagged_callers, studio_places; "
      "DROP SEQUENCE leader_epochs; ALTER TABLE calls DROP COLUMN caller; "
      "UPDATE store_version SET version = 1");
  desk.begin_again();
  CHECK(desk.write({event(2)}));
  CHECK(desk.run("SELECT version FROM store_version") == "3\n");
  CHECK(keys() == known);
  CHECK(desk.run("SELECT count(*) FROM leaders") == "0\n");
  CHECK(desk.verify()->entries == 2);
}

TEST_CASE(
    "What one server writes the others of the store are told, and what is missed as a whole") {
  PostgresDesk desk;
  REQUIRE(desk.write({full_account("a"), full_account("b")}));
  Second second(desk);
  std::vector<StoreNews> told;
  second.store.on_news = [&](const StoreNews& news) { told.push_back(news); };
  const auto next = [&] {
    REQUIRE(desk.run_until([&] { return !told.empty(); }));
    const StoreNews news = told.front();
    told.erase(told.begin());
    return news;
  };
  // It has begun, and doesn't know what it has missed.
  std::optional<bool> began;
  second.store.write({event(1)}, [&](bool written) { began = written; });
  CHECK(next().accounts == std::vector{full_account("a"), full_account("b")});
  REQUIRE(desk.run_until([&] { return began.has_value(); }));

  const StudioPlace place{.group = 4, .name = "Studio 4", .address = "b:2001"};
  Account changed = full_account("a");
  changed.profile = "new";
  REQUIRE(desk.write({AccountProfile{"a", "new"}, AccountRemoval{"b"}, full_flag("555"), place}));
  StoreNews news = next();
  CHECK_FALSE(news.all);
  CHECK(news.accounts == std::vector{changed});
  CHECK(news.removed_accounts == std::vector<std::string>{"b"});
  CHECK(news.flagged_callers == std::vector{full_flag("555")});
  CHECK(news.studio_places == std::vector{place});

  // Nobody needs these at once.
  REQUIRE(desk.write({AccountSeen{"a", Moment{9}}, full_call(1), event(2)}));
  const FlaggedCaller none{.key = "555"};
  const StudioPlace nowhere{.group = 4};
  REQUIRE(desk.write({none, nowhere}));
  news = next();
  CHECK(news == StoreNews{.flagged_callers = {none}, .studio_places = {nowhere}});

  desk.run("SELECT pg_terminate_backend(pid) FROM pg_stat_activity WHERE pid <> pg_backend_pid()");
  news = next();
  CHECK(news.all);
  changed.last_seen = Moment{9};
  CHECK(news.accounts == std::vector{changed});
  CHECK(news.flagged_callers.empty());
}

TEST_CASE("What two servers write at the same moment is heard by both") {
  PostgresDesk desk;
  Second second(desk);
  std::set<std::string> heard_here;
  std::set<std::string> heard_there;
  const auto note = [](std::set<std::string>& heard) {
    return [&heard](const StoreNews& news) {
      for (const FlaggedCaller& caller : news.flagged_callers) heard.insert(caller.key);
    };
  };
  second.store.on_news = note(heard_there);
  desk.store().on_news = note(heard_here);
  std::set<std::string> written;
  for (int round = 0; round < 40; ++round) {
    const std::string here = "1" + std::to_string(round);
    const std::string there = "2" + std::to_string(round);
    int done = 0;
    desk.store().write({full_flag(here), event(2 * round + 1)}, [&](bool) { ++done; });
    second.store.write({full_flag(there), event(2 * round + 2)}, [&](bool) { ++done; });
    written.insert({here, there});
    REQUIRE(desk.run_until([&] { return done == 2; }));
    CHECK(desk.run_until([&] { return heard_here == written && heard_there == written; }));
  }
  desk.store().on_news = nullptr;
}

TEST_CASE("A backup that is restored is news for the other servers") {
  PostgresDesk desk;
  REQUIRE(desk.write({full_account("a"), full_flag("555")}));
  const std::string file = desk.file("backup.db");
  REQUIRE(desk.backup(file) == "");
  desk.run("DELETE FROM lineweir.accounts; DELETE FROM lineweir.flagged_callers");
  Second second(desk);
  std::vector<StoreNews> told;
  second.store.on_news = [&](const StoreNews& news) { told.push_back(news); };
  std::optional<bool> began;
  second.store.write({event(1)}, [&](bool written) { began = written; });
  REQUIRE(desk.run_until([&] { return began.has_value() && !told.empty(); }));
  told.clear();
  REQUIRE(desk.restore(file) == "");
  REQUIRE(desk.run_until([&] { return !told.empty(); }));
  CHECK(told.front().all);
  CHECK(told.front().accounts == std::vector{full_account("a")});
  CHECK(told.front().flagged_callers == std::vector{full_flag("555")});
}

TEST_CASE("A store of a newer version, or another program's, is refused and not touched") {
  PostgresDesk desk;
  REQUIRE(desk.write({event(1)}));
  desk.end();
  desk.run("UPDATE store_version SET version = 99");
  desk.begin_again();
  CHECK(fails(desk));
  CHECK(has(desk.trouble(), "was written by a newer version of this program (its version is 99"));
  desk.run("UPDATE store_version SET version = 3");
  CHECK(desk.write({event(2)}));
  CHECK(desk.trouble() == "");

  PostgresDesk other;
  PostgresCluster::run(other.url(), "CREATE SCHEMA lineweir; CREATE TABLE lineweir.theirs (a int)");
  CHECK(fails(other));
  CHECK(has(other.trouble(), "has a schema \"lineweir\" of another program"));
}

TEST_CASE("An empty database becomes a store step by step, and a step that fails leaves it") {
  const std::string url = PostgresCluster::the().new_database();
  const auto one = std::to_array<const char*>(
      {"CREATE TABLE lineweir.one (a bigint)", "INSERT INTO lineweir.one VALUES (7)"});
  const auto two = std::to_array<const char*>(
      {"ALTER TABLE lineweir.one ADD COLUMN b bigint", "UPDATE lineweir.one SET b = a + 1"});
  const auto wrong =
      std::to_array<const char*>({"CREATE TABLE lineweir.three (c bigint)", "SELECT nothing"});
  const auto right = std::to_array<const char*>({"CREATE TABLE lineweir.three (c bigint)"});
  AsioLoop loop;
  AsioDescriptorWatch watch(loop);
  const auto upgrade = [&](const std::vector<PostgresStep>& steps,
                           MissingStore missing = MissingStore::Make) {
    PostgresConnection connection(*PostgresAddress::read(url), {loop, watch, loop});
    std::optional<std::string> told;
    connection.open([&](const std::string&) {
      bring_up_to_date(connection, steps, missing, [&](std::string failure) { told = failure; });
    });
    REQUIRE(run_loop_until(loop, [&] { return told.has_value(); }));
    return *told;
  };
  CHECK(has(upgrade({one}, MissingStore::Refuse), "has no store in it"));
  CHECK(upgrade({one}) == "");
  CHECK(has(upgrade({one, two, wrong}), "refused what was asked"));
  CHECK(PostgresCluster::run(url, "SELECT version FROM lineweir.store_version") == "1\n");
  CHECK(upgrade({one, two}) == "");
  CHECK(upgrade({one, two, right}, MissingStore::Refuse) == "");
  CHECK(upgrade({one, two, right}) == "");
  CHECK(PostgresCluster::run(url, "SELECT * FROM lineweir.one") == "7|8\n");
  CHECK(PostgresCluster::run(url, "SELECT version FROM lineweir.store_version") == "3\n");
  CHECK(has(upgrade({one, two}), "its version is 3, 2 is the newest known"));
}

TEST_CASE("Nothing is made in the place of a store that has gone") {
  PostgresDesk desk;
  REQUIRE(desk.write({event(1)}));
  desk.run(
      "ALTER SCHEMA lineweir RENAME TO away; SELECT pg_terminate_backend(pid) FROM "
      "pg_stat_activity WHERE pid <> pg_backend_pid() AND datname = current_database()");
  CHECK(fails(desk));
  CHECK(has(desk.trouble(), "has no store in it"));
  desk.run("ALTER SCHEMA away RENAME TO lineweir");
  CHECK(desk.write({event(2)}));
  CHECK(desk.verify()->entries == 2);
}

TEST_CASE("A write of which one change is impossible is not done at all, and others are") {
  PostgresDesk desk;
  REQUIRE(desk.load());
  desk.run("ALTER TABLE calls ADD CONSTRAINT not_that_one CHECK (id <> 13)");
  std::string told;
  const auto tell = [&](bool written) { told += written ? '+' : '-'; };
  desk.store().write({event(1), full_call(12)}, tell);
  desk.store().write({event(2), full_call(13)}, tell);
  desk.store().write({event(3), full_call(14)}, tell);
  REQUIRE(desk.run_until([&] { return told.size() == 3; }));
  CHECK(told == "+-+");
  CHECK(has(desk.troubles(), "not_that_one"));
  CHECK(desk.trouble() == "");
  CHECK(desk.calls()->size() == 2);
  CHECK(desk.verify()->entries == 2);
  CHECK(desk.verify()->first_wrong == 0);
}

TEST_CASE("A database that refuses what is written is not well again as it can be read") {
  PostgresDesk desk;
  REQUIRE(desk.write({event(1)}));
  desk.run("ALTER TABLE calls ADD CONSTRAINT not_that_one CHECK (id <> 13)");
  CHECK_FALSE(desk.write({full_call(13)}));
  CHECK(desk.audit()->size() == 1);
  CHECK(has(desk.trouble(), "not_that_one"));
  desk.run("ALTER TABLE calls DROP CONSTRAINT not_that_one");
  CHECK(desk.write({full_call(13)}));
  CHECK(desk.trouble() == "");
}

TEST_CASE("A write whose connection has broken is not done behind what came after it") {
  PostgresDesk desk({.answer = Milliseconds{3000}});
  REQUIRE(desk.write({full_call(1)}));
  CallRecord before = full_call(2);
  before.number = "before";
  CallRecord after = full_call(2);
  after.number = "after";
  // Its process at the database stands still before it has begun with the write.
  const std::string process = desk.run(
      "SELECT pid FROM pg_stat_activity WHERE datname = current_database() AND "
      "application_name = 'lineweir'");
  const pid_t hung = std::stoi(process);
  ::kill(hung, SIGSTOP);
  CHECK_FALSE(desk.write({before, event(1)}));
  CHECK(has(desk.troubles(), "has not answered for 3 seconds"));
  // The same again, as whoever keeps a store does, and what comes behind it.
  CHECK(desk.write({before, event(1)}));
  CHECK(desk.write({after, event(2)}));
  ::kill(hung, SIGCONT);
  REQUIRE(desk.run_until([&] {
    return desk.run("SELECT count(*) FROM pg_stat_activity WHERE pid = " + process) == "0\n";
  }));
  CHECK(desk.calls()->back() == after);
  CHECK(desk.audit()->size() == 2);
  CHECK(desk.verify()->first_wrong == 0);
}

TEST_CASE("A session that isn't the writer's any more writes nothing and is had anew") {
  PostgresDesk desk;
  REQUIRE(desk.write({event(1)}));
  desk.run("UPDATE writers SET session = session + 7");
  CHECK_FALSE(desk.write({event(2)}));
  CHECK(desk.write({event(2)}));
  desk.run("DELETE FROM writers");
  CHECK_FALSE(desk.write({event(3)}));
  CHECK(desk.write({event(3)}));
  CHECK(desk.verify()->entries == 3);
}

TEST_CASE("Backups of both kinds of store are restored into the other") {
  PostgresDesk desk;
  std::vector<StoreChange> changes = {full_account("Zoë"), full_account("amy"), full_flag("555"),
                                      GroupMemory{.group = 1,
                                                  .next_call = -1,
                                                  .message = std::string("m\0\xFF", 3),
                                                  .show_times = {"a", "", "b"}}};
  for (int i = 1; i <= 1200; ++i) {
    changes.emplace_back(full_call(i));
    changes.emplace_back(event(i));
  }
  CallRecord open = full_call(5000);
  open.ended = Moment{0};
  changes.emplace_back(open);
  REQUIRE(desk.write(changes));
  // What somebody has done to the audit is copied too.
  desk.run("UPDATE audit SET who = 'nobody' WHERE number = 700");
  REQUIRE(desk.backup(desk.file("database.db")) == "");

  PumpedPoster poster;
  SqliteStore file(desk.file("server.db"), poster);
  std::optional<std::string> told;
  const auto wait = [&] {
    REQUIRE(poster.run_until([&] { return told.has_value(); }));
    return *std::exchange(told, std::nullopt);
  };
  file.restore(desk.file("database.db"), [&](const std::string& failure) { told = failure; });
  REQUIRE(wait() == "");
  file.backup(desk.file("file.db"), [&](const std::string& failure) { told = failure; });
  REQUIRE(wait() == "");

  const auto state = desk.load();
  const auto calls = desk.calls();
  const auto audit = desk.audit();
  desk.begin_empty();
  REQUIRE(desk.restore(desk.file("file.db")) == "");
  CHECK(desk.load()->accounts == state->accounts);
  CHECK(desk.load()->open_calls == state->open_calls);
  CHECK(desk.load()->groups == state->groups);
  CHECK(state->flagged_callers.size() == 1);
  CHECK(desk.load()->flagged_callers == state->flagged_callers);
  CHECK(desk.calls() == calls);
  CHECK(desk.audit() == audit);
  CHECK(desk.verify()->first_wrong == 700);
  CHECK(desk.verify()->entries == 1200);
}

TEST_CASE("What is no backup is not restored, and the store stays as it is") {
  PostgresDesk desk;
  REQUIRE(desk.write({event(1)}));
  std::ofstream(desk.file("text")) << "no database";
  std::ofstream(desk.file("empty")) << "";
  for (const char* name : {"text", "empty", "missing", "."}) {
    CAPTURE(name);
    CHECK(desk.restore(desk.file(name)) != "");
    CHECK(desk.trouble() == "");
  }
  std::ofstream(desk.file("taken")) << "mine";
  CHECK(desk.backup(desk.file("taken")) ==
        "The file 'taken' is there already; it was not touched.");
  CHECK(desk.backup(desk.file("no/b.db")) ==
        "The file 'b.db' can't be made: No such file or directory.");
  CHECK(desk.directory().names() == std::vector<std::string>{"empty", "taken", "text"});
  CHECK(desk.verify()->entries == 1);
}

#define DOCTEST_CONFIG_IMPLEMENT_WITH_MAIN
#include "platform/sqlite/sqlite_engine.h"

#include <doctest/doctest.h>
#include <sqlite3.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <fstream>
#include <sstream>

#include "base/failure.h"
#include "letters/code_page_letters.h"
#include "temporary_directory.h"

using namespace lineweir;
using namespace lineweir::platform;
namespace fs = std::filesystem;

namespace {

struct Caught {
  int number = 0;
  std::string sentence;
};

Caught failure_of(const std::function<void()>& action) {
  try {
    action();
  } catch (const Failure& failure) {
    return {failure.number(), failure.what()};
  }
  return {};
}

struct SqliteFixture {
  TemporaryDirectory directory;
  SqliteEngine engine{directory.path()};

  std::string path(const std::string& name) const { return (directory.path() / name).string(); }

  void write(const std::string& name, const std::string& content) const {
    std::ofstream(path(name), std::ios::binary) << content;
  }
  std::string content(const std::string& name) const { return directory.content(name); }
  std::vector<std::string> names() const { return directory.names(); }

  void make_log(const std::string& name) {
    const auto database = engine.create(name);
    database->create_table("Rows", {{"Text", 30}});
    add(*database, "first");
  }
  static void add(Database& database, const std::string& text) {
    const auto rows = database.open_recordset("Rows");
    rows->add_new();
    rows->set_field(0, text);
    rows->update();
  }

  // What another SQLite program sees in a file.
  std::string query(const std::string& name, const std::string& sql) const {
    sqlite3* connection = nullptr;
    REQUIRE(sqlite3_open(path(name).c_str(), &connection) == SQLITE_OK);
    std::string text;
    char* error = nullptr;
    sqlite3_exec(
        connection, sql.c_str(),
        [](void* out, int count, char** values, char**) {
          auto& line = *static_cast<std::string*>(out);
          for (int i = 0; i < count; ++i) {
            line += values[i] == nullptr ? "NULL" : values[i];
            line += i + 1 < count ? '|' : '\n';
          }
          return 0;
        },
        &text, &error);
    CHECK(error == nullptr);
    sqlite3_close(connection);
    return text;
  }
};

// The disk under SQLite is full for as long as this object lives.
class FullDisk {
 public:
  FullDisk() {
    for (const auto& [name, call] : calls) set(name, call);
  }
  ~FullDisk() {
    for (const auto& [name, call] : calls) set(name, nullptr);
  }
  FullDisk(const FullDisk&) = delete;
  FullDisk& operator=(const FullDisk&) = delete;

 private:
  struct Call {
    const char* name;
    sqlite3_syscall_ptr function;
  };

  static ssize_t no_room(int, const void*, size_t) {
    errno = ENOSPC;
    return -1;
  }
  static ssize_t no_room_at(int, const void*, size_t, off_t) {
    errno = ENOSPC;
    return -1;
  }
  static void set(const char* name, sqlite3_syscall_ptr function) {
    sqlite3_vfs* files = sqlite3_vfs_find(nullptr);
    files->xSetSystemCall(files, name, function);
  }

  static inline const std::initializer_list<Call> calls = {
      {"write", reinterpret_cast<sqlite3_syscall_ptr>(&no_room)},
      {"pwrite", reinterpret_cast<sqlite3_syscall_ptr>(&no_room_at)},
      {"pwrite64", reinterpret_cast<sqlite3_syscall_ptr>(&no_room_at)}};
};

}  // namespace

TEST_CASE_FIXTURE(SqliteFixture, "A log is one file, which any SQLite program reads") {
  make_log("calls.anything");
  CHECK(names() == std::vector<std::string>{"calls.anything"});
  CHECK(query("calls.anything", "SELECT sql FROM sqlite_schema") ==
        "CREATE TABLE \"Rows\" (\"Text\" VARCHAR(30))\n");
  CHECK(query("calls.anything", "SELECT * FROM Rows") == "first\n");
  CHECK(query("calls.anything", "PRAGMA integrity_check") == "ok\n");
}

TEST_CASE_FIXTURE(SqliteFixture, "A file written while it is open is seen by others at once") {
  make_log("calls.lwl");
  const auto database = engine.open("calls.lwl");
  add(*database, "second");
  CHECK(query("calls.lwl", "SELECT * FROM Rows") == "first\nsecond\n");
  CHECK(query("calls.lwl", "PRAGMA journal_mode") == "wal\n");
}

TEST_CASE_FIXTURE(SqliteFixture, "Paths are relative to the working directory, of any case") {
  make_log("Calls.LWL");
  CHECK(engine.open("calls.lwl") != nullptr);
  CHECK(engine.open(path("calls.lwl")) != nullptr);
}

TEST_CASE_FIXTURE(SqliteFixture, "A file that isn't a database says so and stays as it is") {
  write("letter.doc", std::string(5000, 'x'));
  const Caught caught = failure_of([&] { engine.open("letter.doc"); });
  CHECK(caught.number == 3343);
  CHECK(caught.sentence == "The file 'letter.doc' is not a database.");
  CHECK(content("letter.doc") == std::string(5000, 'x'));
  CHECK(names() == std::vector<std::string>{"letter.doc"});

  CHECK(failure_of([&] { engine.open("."); }).number == 3343);
  CHECK(failure_of([&] { engine.open("/dev/null"); }).number == 3343);
}

TEST_CASE_FIXTURE(SqliteFixture, "A database of the older Access kind is told by its header") {
  write("old.mdb",
        std::string("\x00\x01\x00\x00Standard Jet DB\x00\x01", 21) + std::string(8000, '\0'));
  const std::string before = content("old.mdb");
  const Caught caught = failure_of([&] { engine.open("old.mdb"); });
  CHECK(caught.number == 3344);
  CHECK(caught.sentence == "The file 'old.mdb' is a database of the older Access kind.");
  CHECK(content("old.mdb") == before);
}

TEST_CASE_FIXTURE(SqliteFixture, "Short and damaged files are survived") {
  make_log("calls.lwl");
  const std::string whole = content("calls.lwl");
  write("empty", "");
  CHECK(failure_of([&] { engine.open("empty")->open_recordset("Rows"); }).number == 3078);
  CHECK(content("empty").empty());
  for (const std::size_t length : {1UL, 15UL, 99UL, 3000UL}) {
    CAPTURE(length);
    write("short", whole.substr(0, length));
    CHECK(failure_of([&] { engine.open("short")->open_recordset("Rows"); }).number != 0);
    CHECK(content("short") == whole.substr(0, length));
  }
  std::string damaged = whole;
  std::fill(damaged.begin() + 100, damaged.end(), '\xFF');
  write("damaged", damaged);
  const Caught caught = failure_of([&] { engine.open("damaged")->open_recordset("Rows"); });
  CHECK(caught.number == 3049);
  CHECK(caught.sentence == "The database 'damaged' is damaged.");
}

TEST_CASE_FIXTURE(SqliteFixture, "Looking into another program's database changes nothing in it") {
  query("other.db", "CREATE TABLE bookmarks (url TEXT)");
  const std::string before = content("other.db");
  const Caught caught = failure_of([&] { engine.open("other.db")->open_recordset("Rows"); });
  CHECK(caught.number == 3078);
  CHECK(caught.sentence == "The file 'other.db' holds no table \"Rows\".");
  CHECK(content("other.db") == before);
}

TEST_CASE_FIXTURE(SqliteFixture, "A full disk takes no new file and no row, and says so") {
  make_log("calls.lwl");
  make_log("other.lwl");
  const std::string sentence = "There is no room left on the disk for '";
  const auto database = engine.open("calls.lwl");
  {
    const FullDisk full;
    const Caught made = failure_of([&] {
      engine.create("new.lwl")->create_table("T", {{"A", 1}});
    });
    CHECK(made.number == 3026);
    CHECK(made.sentence == sentence + "new.lwl'.");
    // A file that nobody has open can't be chosen: what its users share needs a little room.
    const Caught opened = failure_of([&] { engine.open("other.lwl")->open_recordset("Rows"); });
    CHECK(opened.number == 3026);
    CHECK(opened.sentence == sentence + "other.lwl'.");
    // Reading what is open needs none, and neither does opening it once more.
    CHECK(*database->open_recordset("Rows")->row(1) == std::vector<std::string>{"first"});
    CHECK(engine.open("calls.lwl")->open_recordset("Rows")->count() == 1);
    const Caught added = failure_of([&] { add(*database, "second"); });
    CHECK(added.number == 3026);
    CHECK(added.sentence == sentence + "calls.lwl'.");
  }
  CHECK_FALSE(fs::exists(path("new.lwl")));
  CHECK(query("calls.lwl", "SELECT * FROM Rows") == "first\n");
  CHECK(engine.open("other.lwl")->open_recordset("Rows")->count() == 1);
}

TEST_CASE_FIXTURE(SqliteFixture, "A row that found no room can be stored when there is some") {
  make_log("calls.lwl");
  const auto database = engine.open("calls.lwl");
  const auto rows = database->open_recordset("Rows");
  rows->add_new();
  rows->set_field(0, "second");
  {
    const FullDisk full;
    CHECK(failure_of([&] { rows->update(); }).number == 3026);
  }
  rows->update();
  CHECK(query("calls.lwl", "SELECT * FROM Rows") == "first\nsecond\n");
}

TEST_CASE_FIXTURE(SqliteFixture, "A read-only file or folder says so") {
  make_log("calls.lwl");
  fs::permissions(directory.path(), fs::perms{0555});
  fs::permissions(path("calls.lwl"), fs::perms{0444});
  const pid_t child = ::fork();
  if (child == 0) {
    // Root may write everything.
    const uid_t nobody = 65534;
    if (::geteuid() == 0 && ::setuid(nobody) != 0) ::_exit(1);
    const Caught opened = failure_of([&] { engine.open("calls.lwl")->open_recordset("Rows"); });
    const Caught made = failure_of([&] { engine.create("new.lwl"); });
    const bool as_told =
        opened.number == 3027 && made.number == 3027 &&
        opened.sentence ==
            "The file 'calls.lwl' can't be written to: it or its folder is read-only." &&
        made.sentence == "The file 'new.lwl' could not be made: Permission denied." &&
        engine.is_database("calls.lwl");
    ::_exit(as_told ? 0 : 2);
  }
  int status = 0;
  REQUIRE(::waitpid(child, &status, 0) == child);
  CHECK(status == 0);
  fs::permissions(directory.path(), fs::perms{0700});
  CHECK(query("calls.lwl", "SELECT * FROM Rows") == "first\n");
}

TEST_CASE_FIXTURE(SqliteFixture, "A file that was moved away takes no rows unseen") {
  make_log("calls.lwl");
  const auto database = engine.open("calls.lwl");
  fs::rename(path("calls.lwl"), path("moved.lwl"));
  const Caught caught = failure_of([&] { add(*database, "lost"); });
  CHECK(caught.number == 3024);
  CHECK(caught.sentence == "The file 'calls.lwl' has been moved or deleted.");
}

TEST_CASE_FIXTURE(SqliteFixture, "Another program may change the table's columns meanwhile") {
  make_log("calls.lwl");
  const auto database = engine.open("calls.lwl");
  const auto rows = database->open_recordset("Rows");
  rows->add_new();
  rows->set_field(0, "second");
  query("calls.lwl", "ALTER TABLE Rows ADD COLUMN Extra TEXT DEFAULT 'x'");
  query("calls.lwl", "ALTER TABLE Rows RENAME COLUMN Text TO Words");
  rows->update();
  CHECK(query("calls.lwl", "SELECT * FROM Rows") == "first|x\nsecond|\n");
}

TEST_CASE_FIXTURE(SqliteFixture, "Columns that have the names of row numbers are only columns") {
  using Names = std::pair<std::string, std::string>;
  for (const auto& [one, other] :
       {Names{"rowid", "_rowid_"}, Names{"rowid", "oid"}, Names{"_rowid_", "oid"}}) {
    CAPTURE(one);
    CAPTURE(other);
    const auto database = engine.create(one + other);
    database->create_table("Rows", {{one, 5}, {other, 5}});
    const auto rows = database->open_recordset("Rows");
    rows->add_new();
    rows->set_field(one, "a");
    const RowId id = rows->update();
    CHECK(id == 1);
    CHECK(*rows->row(id) == std::vector<std::string>{"a", ""});
  }
}

TEST_CASE_FIXTURE(SqliteFixture, "Values that others stored as numbers or as nothing are texts") {
  query("calls.lwl", "CREATE TABLE Rows (Text, Number INTEGER)");
  query("calls.lwl", "INSERT INTO Rows VALUES (NULL, 12), (x'41', 1.5)");
  const auto database = engine.open("calls.lwl");
  const auto rows = database->open_recordset("Rows");
  CHECK(*rows->row(1) == std::vector<std::string>{"", "12"});
  CHECK(*rows->row(2) == std::vector<std::string>{"A", "1.5"});
}

TEST_CASE_FIXTURE(SqliteFixture,
                  "A log's name is UTF-8 on the disk, a text of a set in the console") {
  const CodePageLetters polish(*find_code_page("windows-1250"));
  SqliteEngine polish_engine(directory.path(), polish);
  const std::string lodz = polish.from_utf8("Łódź.lwl");
  polish_engine.create(lodz)->create_table("Rows", {{"Text", 4}});
  CHECK(fs::exists(directory.path() / "Łódź.lwl"));
  const auto rows = polish_engine.open(lodz)->open_recordset("Rows");
  CHECK(rows->fields().size() == 1);
}

TEST_CASE_FIXTURE(SqliteFixture, "A column's size counts characters, not bytes") {
  const auto database = engine.create("calls.lwl");
  database->create_table("Rows", {{"Text", 4}});
  const auto rows = database->open_recordset("Rows");
  rows->add_new();
  rows->set_field("Text", "Łódźka");
  CHECK(*rows->row(rows->update()) == std::vector<std::string>{"Łódź"});
}

TEST_CASE_FIXTURE(SqliteFixture, "Whether a file is a database, whatever it holds") {
  make_log("calls.lwl");
  const auto open = engine.open("calls.lwl");
  add(*open, "second");
  write("letter.doc", std::string(5000, 'x'));
  write("empty", "");
  write("old.mdb", std::string("\x00\x01\x00\x00Standard Jet DB\x00\x01", 21));
  query("other.db", "CREATE TABLE bookmarks (url TEXT)");
  // Cut behind its first page, and held by another program.
  write("cut.db", content("other.db").substr(0, 4096));
  query("held.db", "CREATE TABLE bookmarks (url TEXT)");
  sqlite3* holder = nullptr;
  REQUIRE(sqlite3_open(path("held.db").c_str(), &holder) == SQLITE_OK);
  sqlite3_exec(holder, "BEGIN EXCLUSIVE", nullptr, nullptr, nullptr);
  CHECK(failure_of([&] { engine.open("cut.db"); }).number == 3049);
  CHECK(failure_of([&] { engine.open("held.db"); }).number == 3260);
  for (const char* name : {"calls.lwl", "CALLS.lwl", "old.mdb", "other.db", "cut.db", "held.db"}) {
    CAPTURE(name);
    CHECK(engine.is_database(name));
  }
  for (const char* name : {"letter.doc", "empty", "nowhere", ".", "/dev/null"}) {
    CAPTURE(name);
    CHECK_FALSE(engine.is_database(name));
  }
  sqlite3_close(holder);
}

TEST_CASE_FIXTURE(SqliteFixture, "What is kept beside an open database counts as one") {
  GuardedFiles guard;
  SqliteEngine guarding(directory.path(), utf8_letters(), LockWait::zero(), &guard);
  make_log("calls.lwl");
  const auto open = guarding.open("calls.lwl");
  add(*open, "second");
  for (const char* name : {"calls.lwl", "calls.lwl-wal", "calls.lwl-shm", "calls.lwl-journal"}) {
    CAPTURE(name);
    CHECK(guarding.is_database(name));
  }
}

TEST_CASE_FIXTURE(SqliteFixture,
                  "A file that is locked is in use at once, and nobody waits for it") {
  make_log("calls.lwl");
  const auto database = engine.open("calls.lwl");
  add(*database, "second");
  const auto other = engine.open("calls.lwl");
  int waited = 0;
  database->in_transaction([&] {
    const auto rows = other->open_recordset("Rows");
    CHECK(rows->count() == 2);
    rows->add_new();
    const Caught caught = failure_of([&] { rows->update(); });
    CHECK(caught.number == 3260);
    CHECK(caught.sentence == "The file 'calls.lwl' is in use by another program.");
    CHECK(failure_of([&] { other->rename_column("Rows", 0, "Words"); }).number == 3260);
    ++waited;
  });
  CHECK(waited == 1);
}

TEST_CASE_FIXTURE(SqliteFixture, "What stands under a database's name is told without a touch") {
  make_log("calls.lwl");
  const auto database = engine.open("calls.lwl");
  CHECK(database->standing() == FileStanding::Same);
  add(*database, "second");
  CHECK(database->checkpoint());
  CHECK(database->standing() == FileStanding::Same);
  fs::copy_file(path("calls.lwl"), path("copy.lwl"));
  CHECK(query("copy.lwl", "SELECT * FROM Rows") == "first\nsecond\n");

  fs::last_write_time(path("calls.lwl"), fs::file_time_type::clock::now() + std::chrono::hours(1));
  CHECK(database->standing() == FileStanding::Written);
  CHECK(database->checkpoint());
  CHECK(database->standing() == FileStanding::Same);
  fs::rename(path("copy.lwl"), path("calls.lwl"));
  CHECK(database->standing() == FileStanding::Replaced);
  CHECK(database->checkpoint());
  CHECK(database->standing() == FileStanding::Replaced);
  CHECK(engine.open("calls.lwl")->identity() != database->identity());
  fs::remove(path("calls.lwl"));
  CHECK(database->standing() == FileStanding::Gone);
}

// The hot list on a disk on which other programs work too.

#include "messages/hot_list_file.h"

#include <doctest/doctest.h>
#include <sqlite3.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <set>
#include <string>

#include "base/failure.h"
#include "in_child.h"
#include "letters/code_page_letters.h"
#include "letters/code_pages.h"
#include "platform/sqlite/sqlite_engine.h"
#include "temporary_directory.h"

using namespace lineweir;

namespace {

namespace fs = std::filesystem;
using Texts = std::vector<std::string>;

// Another program on the file.
class OtherProgram {
 public:
  explicit OtherProgram(const fs::path& file) {
    REQUIRE(sqlite3_open(file.c_str(), &connection_) == SQLITE_OK);
  }
  ~OtherProgram() { sqlite3_close(connection_); }
  OtherProgram(const OtherProgram&) = delete;
  OtherProgram& operator=(const OtherProgram&) = delete;

  void run(const char* statement) {
    CAPTURE(statement);
    CHECK(sqlite3_exec(connection_, statement, nullptr, nullptr, nullptr) == SQLITE_OK);
  }

 private:
  sqlite3* connection_ = nullptr;
};

struct DiskList {
  explicit DiskList(const char* name = "hot.lwb") : file(folder.path() / name) {}

  void make() {
    list.create("hot.lwb");
    list.open("hot.lwb");
    for (const char* text : {"One", "Two", "Three"}) list.add(text);
  }
  int failure_of(const std::function<void()>& body) const {
    try {
      body();
    } catch (const Failure& failure) {
      CHECK_FALSE(std::string(failure.what()).empty());
      return failure.number();
    }
    return 0;
  }

  TemporaryDirectory folder;
  fs::path file;
  platform::SqliteEngine databases{folder.path()};
  CodePageLetters letters{default_code_page()};
  HotListFile list{databases, letters};
};

}  // namespace

TEST_SUITE("hot list on a disk") {
  TEST_CASE("it is one table of one column, and a copy of the file holds all of it") {
    DiskList disk;
    disk.make();
    disk.list.move(2, 0);
    const fs::path copy = disk.folder.path() / "copy.lwb";
    fs::copy_file(disk.file, copy);
    HotListFile copied(disk.databases, disk.letters);
    copied.open("copy.lwb");
    CHECK(copied.entries() == Texts{"Three", "One", "Two"});
    CHECK(disk.databases.open("copy.lwb")->table_columns("Messages") ==
          std::vector<platform::DatabaseColumn>{{"Message", 254}});
  }

  TEST_CASE("the letters of the console survive, and a long message is cut") {
    DiskList disk;
    disk.make();
    std::string all;
    for (int code = 1; code < 256; ++code) all += static_cast<char>(code);
    disk.list.add(all);
    HotListFile again(disk.databases, disk.letters);
    again.open("hot.lwb");
    CHECK(again.entries().back() == all.substr(0, 254));
  }

  TEST_CASE("what another program does with SQL is followed") {
    DiskList disk;
    disk.make();
    CHECK_FALSE(disk.list.follow());
    OtherProgram other(disk.file);
    other.run("UPDATE Messages SET Message = 'Changed' WHERE Message = 'Two'");
    CHECK(disk.list.follow());
    CHECK(disk.list.entries() == Texts{"One", "Changed", "Three"});
    CHECK_FALSE(disk.list.follow());
    // A row without a text is an empty message.
    other.run("INSERT INTO Messages (Message) VALUES (NULL)");
    CHECK(disk.list.follow());
    CHECK(disk.list.entries().back() == "");
  }

  TEST_CASE("a file that another program has locked is told, and works again when it is free") {
    DiskList disk;
    disk.make();
    {
      OtherProgram other(disk.file);
      other.run("BEGIN EXCLUSIVE");
      const auto in_use = failure_number::database_in_use;
      CHECK(disk.failure_of([&] { disk.list.add("Four"); }) == in_use);
      CHECK(disk.failure_of([&] { disk.list.remove(0); }) == in_use);
      CHECK(disk.failure_of([&] { disk.list.move(0, 2); }) == in_use);
      CHECK(disk.list.entries() == Texts{"One", "Two", "Three"});
    }
    disk.list.add("Four");
    CHECK(disk.list.entries() == Texts{"One", "Two", "Three", "Four"});
  }

  TEST_CASE("a file that is gone is told, and nothing is written into the void") {
    DiskList disk;
    disk.make();
    fs::remove(disk.file);
    CHECK_FALSE(disk.list.follow());
    CHECK(disk.failure_of([&] { disk.list.add("Four"); }) == failure_number::database_not_found);
    CHECK(disk.failure_of([&] { disk.list.remove(0); }) == failure_number::database_not_found);
    CHECK(disk.failure_of([&] { disk.list.move(0, 1); }) == failure_number::database_not_found);
    CHECK(disk.list.entries() == Texts{"One", "Two", "Three"});
    CHECK_FALSE(fs::exists(disk.file));
  }

  TEST_CASE("a file that takes its place is the list from then on") {
    DiskList disk;
    disk.make();
    {
      HotListFile other(disk.databases, disk.letters);
      other.create("new.lwb");
      other.open("new.lwb");
      other.add("New");
    }
    fs::rename(disk.folder.path() / "new.lwb", disk.file);
    SUBCASE("when it is looked at") { CHECK(disk.list.follow()); }
    SUBCASE("when it is changed") { disk.list.add("Newer"); }
    CHECK(disk.list.entries().front() == "New");
  }

  TEST_CASE("a file that is no hot list is refused, and stays as it is") {
    const auto check = [](const char* content_or_table, bool database, int number) {
      CAPTURE(content_or_table);
      DiskList disk;
      if (database) {
        OtherProgram(disk.file).run(content_or_table);
      } else {
        std::ofstream(disk.file) << content_or_table;
      }
      const auto size = fs::file_size(disk.file);
      CHECK(disk.failure_of([&] { disk.list.open("hot.lwb"); }) == number);
      CHECK_FALSE(disk.list.is_open());
      CHECK(fs::file_size(disk.file) == size);
    };
    check("plain text, and enough of it to be more than nothing", false,
          failure_number::not_a_database);
    check("CREATE TABLE Calls (Message TEXT)", true, failure_number::no_such_table);
    check("CREATE TABLE Messages (Words TEXT)", true, failure_number::no_such_table);
    check("", false, failure_number::no_such_table);
  }

  TEST_CASE("moving a message leaves every row as it is, whatever it holds") {
    DiskList disk;
    OtherProgram other(disk.file);
    other.run(
        "CREATE TABLE Messages (Message TEXT, maker TEXT);"
        "INSERT INTO Messages VALUES ('one', 'of one'), ('\u0417\u0430\u017c\u00f3\u0142\u0107', "
        "'of two'), "
        "(NULL, 'of three'), (x'00ff', 'of four'), (hex(zeroblob(300)), 'of five');");
    const auto rows = [&] {
      std::multiset<std::string> found;
      sqlite3* connection = nullptr;
      REQUIRE(sqlite3_open(disk.file.c_str(), &connection) == SQLITE_OK);
      sqlite3_exec(
          connection, "SELECT quote(Message) || quote(maker) FROM Messages",
          [](void* set, int, char** values, char**) {
            static_cast<std::multiset<std::string>*>(set)->insert(values[0]);
            return 0;
          },
          &found, nullptr);
      sqlite3_close(connection);
      return found;
    };
    const auto before = rows();
    REQUIRE(before.size() == 5);
    disk.list.open("hot.lwb");
    CHECK(disk.list.move(0, 4));
    CHECK(disk.list.entries().back() == "one");
    CHECK(disk.list.move(4, 1));
    CHECK(disk.list.entries().at(1) == "one");
    CHECK(rows() == before);
  }

  TEST_CASE("a list of another maker is one, whatever else it holds") {
    DiskList disk;
    OtherProgram(disk.file).run(
        "CREATE TABLE messages (maker TEXT, MESSAGE TEXT, used INTEGER);"
        "INSERT INTO messages VALUES ('x', 'Seven', 1), ('y', 'Nine', 2);");
    disk.list.open("hot.lwb");
    CHECK(disk.list.entries() == Texts{"Seven", "Nine"});
    CHECK(disk.list.move(0, 1));
    disk.list.add("Ten");
    CHECK(disk.list.entries() == Texts{"Nine", "Seven", "Ten"});
  }

  TEST_CASE("a read-only file is told") {
    DiskList disk;
    disk.make();
    disk.list.close();
    fs::permissions(disk.file, fs::perms{0444});
    fs::permissions(disk.folder.path(), fs::perms{0777});
    const int number = test::in_child_without_power([&] {
      const int failure = disk.failure_of([&] { disk.list.open("hot.lwb"); });
      return failure == failure_number::database_read_only ? 1 : 0;
    });
    CHECK(number == 1);
  }

  TEST_CASE("a folder, or nothing, is no list") {
    DiskList disk;
    CHECK(disk.failure_of([&] { disk.list.open("hot.lwb"); }) ==
          failure_number::database_not_found);
    CHECK(disk.failure_of([&] { disk.list.open("."); }) != 0);
    CHECK(disk.failure_of([&] { disk.list.create("nowhere/hot.lwb"); }) != 0);
  }
}

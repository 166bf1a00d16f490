// Profiles that name files of the disk which are neither plans nor logs: nothing of them is opened,
// changed or waited for.

#include <doctest/doctest.h>
#include <sqlite3.h>
#include <sys/stat.h>

#include <filesystem>
#include <fstream>
#include <map>
#include <sstream>
#include <string>

#include "core/console.h"
#include "platform/disk/disk_files.h"
#include "platform/scripted/scripted_platform.h"
#include "platform/sqlite/sqlite_engine.h"
#include "support/profile_blocks.h"
#include "temporary_directory.h"

using namespace lineweir;
using test::EditedProfile;

namespace {

namespace fs = std::filesystem;

struct DiskDesk {
  DiskDesk() { console.startup.Main("D"); }

  std::string path(const std::string& name) const { return (folder.path() / name).string(); }
  void write(const std::string& name, const std::string& content) const {
    std::ofstream(path(name), std::ios::binary) << content;
  }
  // By name the content of each file there is.
  std::map<std::string, std::string> contents() const {
    std::map<std::string, std::string> found;
    for (const auto& entry : fs::directory_iterator(folder.path())) {
      if (!entry.is_regular_file() || entry.path().filename() == "LWDebug.txt") continue;
      std::ostringstream content;
      content << std::ifstream(entry.path(), std::ios::binary).rdbuf();
      found[entry.path().filename().string()] = content.str();
    }
    return found;
  }

  TemporaryDirectory folder;
  platform::GuardedFiles guard;
  platform::DiskFiles files{folder.path(), utf8_letters(), &guard};
  platform::SqliteEngine databases{folder.path(), utf8_letters(), std::chrono::milliseconds::zero(),
                                   &guard, platform::BatchWork::AtOnce};
  // Its journal has the log open until it goes.
  platform::ScriptedPlatform rest;
  Console console{rest.services(files, databases)};
};

void make_database_of_another_program(const std::string& path) {
  sqlite3* connection = nullptr;
  REQUIRE(sqlite3_open(path.c_str(), &connection) == SQLITE_OK);
  CHECK(sqlite3_exec(connection,
                     "CREATE TABLE Letters (Sender, Text); INSERT INTO Letters VALUES (1, 2)",
                     nullptr, nullptr, nullptr) == SQLITE_OK);
  sqlite3_close(connection);
}

}  // namespace

TEST_CASE("what is no plan and no log is left alone, whichever of the two a profile calls it") {
  DiskDesk desk;
  make_database_of_another_program(desk.path("letters.db"));
  desk.write("letter.txt", "Dear Ann, thank you for the call.");
  desk.write("hidden", "");
  fs::create_directory(desk.path("folder"));
  REQUIRE(::mkfifo(desk.path("pipe").c_str(), 0600) == 0);
  fs::create_symlink("letter.txt", desk.path("link"));
  fs::create_symlink("nowhere.txt", desk.path("dangling"));
  // A file of one hole, which to read would take for ever.
  desk.write("hole.txt", "");
  fs::resize_file(desk.path("hole.txt"), std::uintmax_t{1} << 40);
  desk.console.Lineweir.SaveSettingsMenu.on_click();

  fs::rename(desk.path("hole.txt"), desk.path("folder/hole.txt"));
  const auto before = desk.contents();
  int looked_at = 0;
  for (const std::string name : {"letters.db",
                                 "letter.txt",
                                 "hidden",
                                 "folder",
                                 "pipe",
                                 "link",
                                 "dangling",
                                 "Writ.inf",
                                 "folder/hole.txt",
                                 "folder/new.txt",
                                 "/dev/zero",
                                 "/dev/null",
                                 "/dev/tty",
                                 "/dev/full",
                                 "/proc/self/mem",
                                 "/proc/kmsg",
                                 "/proc/self/environ",
                                 ".",
                                 "..",
                                 "/",
                                 "~",
                                 "a\\b"}) {
    for (const std::size_t field : {5U, 6U}) {
      CAPTURE(name);
      CAPTURE(field);
      EditedProfile(desk.console).field(field, name).apply();
      CHECK(desk.console.show_plan.TheDataFileName == "NoName.TXT");
      CHECK_FALSE(desk.console.call_log.chosen());
      ++looked_at;
    }
  }
  CHECK(looked_at == 44);
  desk.console.show_plan.save_plan({});
  auto after = desk.contents();
  after.erase("NoName.txt");
  auto unchanged = before;
  unchanged.erase("NoName.txt");
  CHECK(after == unchanged);
}

TEST_CASE("a log can't be made the plan, nor the plan the log") {
  DiskDesk desk;
  REQUIRE(desk.console.call_log_file.CreateDatabase("calls.mdb"));
  EditedProfile(desk.console).field(6, "calls.mdb").apply();
  REQUIRE(desk.console.call_log.chosen());
  EditedProfile(desk.console).field(5, "calls.mdb").apply();
  CHECK(desk.console.show_plan.TheDataFileName == "NoName.TXT");
  CHECK(desk.console.call_log.chosen());

  desk.console.show_plan.save_plan_as("morning.txt", {});
  const auto plan = desk.files.read("morning.txt");
  EditedProfile(desk.console).field(6, "morning.txt").apply();
  CHECK_FALSE(desk.console.call_log.chosen());
  CHECK(desk.files.read("morning.txt") == plan);
}

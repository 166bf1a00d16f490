#include <doctest/doctest.h>
#include <signal.h>
#include <stdlib.h>

#include <filesystem>
#include <fstream>

#include "studio/serial_client.h"
#include "studio/studio_process.h"
#include "studio/temporary_folder.h"

namespace {

// The transcript without its times.
std::string next_record(StudioProcess& desk) {
  const auto line = desk.line();
  return line ? line->substr(line->find(' ') + 1) : "nothing";
}

std::string keys_file(const TemporaryFolder& folder, const char* text) {
  const std::string path = folder.path("keys.txt");
  std::ofstream(path) << text;
  return path;
}

}  // namespace

TEST_SUITE("desk/program") {
  TEST_CASE("keys of a script arrive one by one, and lamps are told as they change") {
    const TemporaryFolder folder;
    const std::string keys = keys_file(folder, "0.1 main 3\n0.1 next\n0.1 dial #\n");
    StudioProcess desk({"--script", keys, "--log", "-"});
    SerialClient console(desk.device());
    CHECK(console.receive(3) == "\3XH");
    for (const char* record : {"key main 3", "key next", "key dial #"}) {
      CHECK(next_record(desk) == record);
    }
    console.send("\x0C\x08\xC2");
    console.send("\x0C\x08\xC2zz\xFE");
    CHECK(next_record(desk) == "lamp main 3 AIR");
    CHECK(next_record(desk) == "lamp conf 3 on");
    CHECK(next_record(desk) == "noise 3");
    desk.signal(SIGTERM);
    CHECK(desk.line() == "  line    1     2     3     4     5     6     7     8     9     10");
    CHECK(desk.line() == "  main  [    ][    ][AIR ][    ][    ][    ][    ][    ][    ][    ]");
    CHECK(desk.wait() == 0);
  }

  TEST_CASE("a link stands while it runs, and the script may end it") {
    const TemporaryFolder folder;
    const std::string link = folder.path("desk");
    const std::string keys = keys_file(folder, "0.3 line 20\n0.9 quit\n");
    StudioProcess desk({"--lines", "20", "--link", link, "--script", keys});
    const std::string device = desk.device();
    CHECK(std::filesystem::read_symlink(link) == device);
    SerialClient console(link);
    CHECK(console.receive(1) == "\x27");
    CHECK(desk.wait() == 0);
    CHECK_FALSE(std::filesystem::exists(std::filesystem::symlink_status(link)));
  }

  TEST_CASE("a script that isn't understood ends it") {
    const TemporaryFolder folder;
    StudioProcess desk({"--script", keys_file(folder, "1 line 5\n")});
    CHECK(desk.wait() == 1);
  }
}

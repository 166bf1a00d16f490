#include "driver/interpreter.h"

#include <doctest/doctest.h>

#include <filesystem>
#include <fstream>
#include <sstream>

#include "driver_fixture.h"
#include "platform/temporary_directory.h"

namespace lineweir::test {
namespace {

TEST_CASE_FIXTURE(DriverFixture, "Empty lines and comments have no reply") {
  CHECK_FALSE(driver::carry_out(session, ""));
  CHECK_FALSE(driver::carry_out(session, "   \t"));
  CHECK_FALSE(driver::carry_out(session, "\r"));
  CHECK_FALSE(driver::carry_out(session, "# \"a comment"));
}

TEST_CASE_FIXTURE(DriverFixture, "A line may end as on other systems") {
  CHECK(say("clock\r") == "= \"2026-01-05 10:00:00\"");
}

TEST_CASE_FIXTURE(DriverFixture, "What isn't understood is told, and how it is used") {
  CHECK(say("fly") == "error no such command: fly");
  CHECK(say("Clock") == "error no such command: Clock");
  CHECK(say("\x01\xFF") == "error no such command: \\u0001\\u00ff");
  CHECK(say("advance 1 2") == "error usage: advance MS");
  CHECK(say("advance ten") == "error not a value: ten");
  CHECK(say("clock \"abc") == "error a value without an end: \"abc");
  CHECK(fails("fly"));
  CHECK(fails("expect clock \"\""));
  CHECK_FALSE(fails("expect clock \"2026-01-05 10:00:00\""));
}

TEST_CASE_FIXTURE(DriverFixture, "All lines are carried out, whatever becomes of one") {
  std::istringstream lines("# a case\nclock\n\nfly\nexpect clock \"x\"\nadvance 1000\nclock");
  std::ostringstream replies;
  std::ostringstream complaints;
  CHECK_FALSE(driver::carry_out_all(session, lines, "case.txt", replies, complaints));
  CHECK(replies.str() ==
        "= \"2026-01-05 10:00:00\"\n"
        "error no such command: fly\n"
        "error expected \"x\" got \"2026-01-05 10:00:00\"\n"
        "ok\n"
        "= \"2026-01-05 10:00:01\"\n");
  CHECK(complaints.str() ==
        "case.txt:4: fly\n    error no such command: fly\n"
        "case.txt:5: expect clock \"x\"\n"
        "    error expected \"x\" got \"2026-01-05 10:00:00\"\n");
}

TEST_CASE_FIXTURE(DriverFixture,
                  "A script includes others, whose first failure is told with its place") {
  const TemporaryDirectory folder;
  const auto write = [&](const char* name, const char* text) {
    std::filesystem::create_directories((folder.path() / name).parent_path());
    std::ofstream(folder.path() / name) << text;
  };
  write("parts/later.txt", "advance 1000\ninclude \"more.txt\"\n");
  write("parts/more.txt", "# Beside the script that names it.\nadvance 1000\n");
  write("wrong.txt", "advance 1000\n\nexpect clock \"never\"\nadvance 5000\n");
  write("loop.txt", "include \"loop.txt\"\n");
  const auto include = [&](const char* name) {
    return driver::carry_out(session, "include \"" + std::string(name) + "\"", folder.path());
  };
  CHECK(include("parts/later.txt")->line == "ok");
  CHECK(say("clock") == "= \"2026-01-05 10:00:02\"");
  CHECK(include("wrong.txt")->line ==
        "error wrong.txt:3: error expected \"never\" got \"2026-01-05 10:00:03\"");
  CHECK(include("wrong.txt")->failed);
  CHECK(say("clock") == "= \"2026-01-05 10:00:04\"");
  CHECK(include("loop.txt")->failed);
  CHECK(include("none.txt")->line == "error none.txt can't be read");
}

}  // namespace
}  // namespace lineweir::test

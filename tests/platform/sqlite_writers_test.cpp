#include <doctest/doctest.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <cstdio>
#include <map>
#include <optional>
#include <random>

#include "base/failure.h"
#include "platform/sqlite/sqlite_engine.h"
#include "temporary_directory.h"

using namespace lineweir;
using namespace lineweir::platform;

namespace {

constexpr int rows_in_all = 10000;
constexpr unsigned longest_life_in_rows = 100;

// A row that tells whether it is whole: the writer, its number, and a filling that follows from it.
std::string filling(const std::string& writer, int number) {
  return std::string(static_cast<std::size_t>(number % 90 + 1), writer[0]) + std::to_string(number);
}

// Adds rows from a number on and tells each number through the pipe once its row is stored.
[[noreturn]] void write_rows(SqliteEngine& engine, const std::string& writer, int first, int end,
                             int stored) {
  try {
    const auto database = engine.open("calls.lwl");
    const auto rows = database->open_recordset("Rows");
    for (int number = first; number < end; ++number) {
      rows->add_new();
      rows->set_field("Writer", writer);
      rows->set_field("Number", std::to_string(number));
      rows->set_field("Filling", filling(writer, number));
      rows->update();
      if (::write(stored, &number, sizeof number) != sizeof number) ::_exit(3);
    }
  } catch (const Failure& failure) {
    std::fprintf(stderr, "%s: %s\n", writer.c_str(), failure.what());
    ::_exit(2);
  }
  ::_exit(0);
}

struct Writer {
  pid_t process = -1;
  int stored = -1;

  Writer(SqliteEngine& engine, const std::string& name, int first, int end) {
    std::array<int, 2> ends{};
    REQUIRE(::pipe(ends.data()) == 0);
    process = ::fork();
    REQUIRE(process >= 0);
    if (process == 0) {
      ::close(ends[0]);
      write_rows(engine, name, first, end, ends[1]);
    }
    ::close(ends[1]);
    stored = ends[0];
  }

  // The next number that was told; nothing once the writer has ended.
  std::optional<int> next_stored() const {
    int number = 0;
    if (::read(stored, &number, sizeof number) != sizeof number) return std::nullopt;
    return number;
  }

  int wait() const {
    int status = 0;
    REQUIRE(::waitpid(process, &status, 0) == process);
    return status;
  }
};

}  // namespace

TEST_CASE("Two programs write ten thousand rows, one of them killed again and again") {
  // A killed program loses nothing that it handed to the system, so that a disk in memory, which
  // takes a thousandth of the time, tells the same.
  const std::filesystem::path memory_disk = "/dev/shm";
  const TemporaryDirectory directory(
      std::filesystem::exists(memory_disk) ? memory_disk : std::filesystem::temp_directory_path());
  // Each waits for the other, as the thread does that writes a console's log.
  SqliteEngine engine(directory.path(), utf8_letters(), std::chrono::seconds(5));
  engine.create("calls.lwl")
      ->create_table("Rows", {{"Writer", 10}, {"Number", 10}, {"Filling", 100}});

  const int half = rows_in_all / 2;
  const Writer steady(engine, "steady", 0, half);
  std::mt19937 random(20260105);
  int kills = 0;
  int next = 0;
  while (next < half) {
    const Writer mortal(engine, "mortal", next, half);
    const int kill_behind = next + static_cast<int>(random() % longest_life_in_rows);
    while (const auto number = mortal.next_stored()) {
      next = *number + 1;
      if (next == kill_behind) ::kill(mortal.process, SIGKILL);
    }
    ::close(mortal.stored);
    const int status = mortal.wait();
    kills += WIFSIGNALED(status) ? 1 : 0;
    CHECK((WIFSIGNALED(status) || status == 0));
  }
  int steady_end = 0;
  while (const auto number = steady.next_stored()) steady_end = *number + 1;
  ::close(steady.stored);
  CHECK(steady.wait() == 0);
  CHECK(steady_end == half);
  MESSAGE("killed " << kills << " times");
  CHECK(kills > 5);

  // Each row that was told of is there and whole. A row whose writer was killed between storing
  // and telling was written again by the next one.
  std::map<std::string, std::map<int, int>> copies;
  const auto database = engine.open("calls.lwl");
  const auto rows = database->open_recordset("Rows");
  rows->scan({false, std::nullopt, 2 * rows_in_all, {0, 1, 2}}, [&](RowId, auto values) {
    const std::string writer(values[0]);
    const int number = std::stoi(std::string(values[1]));
    CHECK(values[2] == filling(writer, number));
    ++copies[writer][number];
  });
  CHECK(copies["steady"].size() == half);
  CHECK(copies["mortal"].size() == half);
  CHECK(rows->count() >= rows_in_all);
  CHECK(rows->count() <= rows_in_all + kills);
}

#define DOCTEST_CONFIG_IMPLEMENT_WITH_MAIN
#include <doctest/doctest.h>
#include <malloc.h>

#include <string>

#include "forms/pictures.h"
#include "lines/status_letters.h"
#include "soak/crew.h"

namespace lineweir::test {
namespace {

using namespace std::chrono_literals;

constexpr int line_count = 10;

// Callers who ring often and lose their patience soon.
studio::ExchangeOptions busy_lines() {
  studio::ExchangeOptions options;
  options.seed = 11;
  options.callers = {200ms, 3000ms, 4000ms};
  return options;
}

std::string letters_of(const StudioDesk& desk) {
  std::string letters;
  for (int line = 0; line < line_count; ++line) {
    letters += desk.console.lines.StatusLetter(line);
  }
  return letters;
}

std::string expected_letters(const StudioDesk& desk) {
  std::string letters;
  for (int line = 0; line < line_count; ++line) letters += desk.expected_letter(line);
  return letters;
}

// The strip that a row shows, and the one that its line's letter asks for.
bool strip_fits(const StudioDesk& desk, int line) {
  const std::string& strip = desk.console.Lineweir.DataRow(line).picture;
  const char letter = desk.console.lines.StatusLetter(line);
  const bool on_air = letter == 'N' || letter == 'C' || letter == 'L' || letter == 'K';
  if (on_air) return strip == pictures::DataRowRed;
  // A next call that leaves its state is no longer marked, though another is chosen a tick later.
  const bool next = desk.console.lines.TheNextCall == line && letter == 'S';
  return strip == (next ? pictures::DataRowGreen : pictures::DataRowWhite);
}

TEST_CASE("a hundred thousand calls: each that was noted is logged once, and memory stays") {
  constexpr std::size_t callers = 100'000;
  StudioDesk desk(busy_lines());
  Crew crew(desk);
  std::size_t memory_at_first = 0;
  while (crew.noted_callers() < callers) {
    desk.pass(100ms);
    crew.work();
    if (crew.noted_callers() == callers / 10) memory_at_first = mallinfo2().uordblks;
  }
  const std::size_t memory_at_last = mallinfo2().uordblks;
  CHECK(desk.console.decoder.serial_buffer.text().size() < 10);

  // The list of noted callers is the test's own.
  constexpr std::size_t allowance = 2 * callers + 64 * 1024;
  CHECK(memory_at_last < memory_at_first + allowance);

  for (int i = 0; i < 100; ++i) {
    crew.drop_all();
    desk.pass(100ms);
  }
  crew.take_log();
  CHECK(crew.logged_otherwise_than_once() == 0);
}

TEST_CASE("through an hour of a busy show the rows tell what the studio's own table says") {
  studio::ExchangeOptions options;
  options.seed = 5;
  options.callers.call_every = 6000ms;
  options.auto_operator.emplace();
  StudioDesk desk(options);
  int compared = 0;
  int apart = 0;
  bool was_apart = false;
  std::string seen;
  for (auto passed = 0ms; passed < 1h; passed += 20ms) {
    desk.pass(20ms);
    // A report takes its time on the line; where that stays silent the tables must agree.
    if (!desk.quiet()) {
      was_apart = false;
      continue;
    }
    ++compared;
    const std::string letters = letters_of(desk);
    for (const char letter : letters) {
      if (seen.find(letter) == std::string::npos) seen += letter;
    }
    const bool is_apart = letters != expected_letters(desk);
    if (is_apart && was_apart) ++apart;
    was_apart = is_apart;
    for (int line = 0; line < line_count; ++line) {
      CAPTURE(line);
      CAPTURE(letters);
      REQUIRE(strip_fits(desk, line));
    }
  }
  CHECK(apart == 0);
  CHECK(compared > 100'000);
  for (const char letter : std::string(" RPOHSNCLK")) {
    CAPTURE(letter);
    CHECK(seen.find(letter) != std::string::npos);
  }
}

}  // namespace
}  // namespace lineweir::test

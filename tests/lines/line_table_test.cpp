#include "lines/line_table.h"

#include <doctest/doctest.h>

#include "support/failure_number.h"

namespace lineweir::test {
namespace {

TEST_SUITE("lines/line table") {
  TEST_CASE("at first there are ten idle lines and no next call") {
    const LineTable lines;
    CHECK(lines.LineCount == 10);
    CHECK(lines.TheNextCall == -1);
    CHECK_FALSE(lines.NextCallSet);
    CHECK_FALSE(lines.FreshConnect);
    CHECK(lines.CurrentDataLine == 0);
    CHECK(lines.ThePhoneFlag == 1);
    CHECK(lines.RingConfirm.size() == 26);
    for (int line = 0; line < 10; ++line) {
      CHECK(lines.StatusLetter(line) == ' ');
      CHECK(lines.CallerData(line) == CallerRecord());
      CHECK(lines.HoldStamp(line).empty());
      CHECK(lines.ClockBase(line).empty());
      CHECK(lines.ClockRunning(line) == 0);
    }
  }

  TEST_CASE("growing keeps what the lines hold and adds idle ones") {
    LineTable lines;
    lines.StatusLetter(9) = 'S';
    lines.CallerData(9).set(CallerField::City, "Springfield");
    lines.HoldStamp(9) = "1/5/2026 10:00:00 AM";
    lines.ClockBase(9) = "10:00:00";
    lines.ClockRunning(9) = 1;

    lines.resize(20);

    CHECK(lines.LineCount == 20);
    CHECK(lines.StatusLetter(9) == 'S');
    CHECK(lines.CallerData(9)[CallerField::City] == "Springfield");
    CHECK(lines.HoldStamp(9) == "1/5/2026 10:00:00 AM");
    CHECK(lines.ClockBase(9) == "10:00:00");
    CHECK(lines.ClockRunning(9) == 1);
    CHECK(lines.StatusLetter(19) == ' ');
    CHECK(lines.CallerData(19) == CallerRecord());
    CHECK(lines.ClockRunning(19) == 0);
  }

  TEST_CASE("shrinking forgets the lines above") {
    LineTable lines;
    lines.resize(20);
    lines.StatusLetter(3) = 'H';
    lines.StatusLetter(15) = 'N';
    lines.resize(10);
    CHECK(lines.StatusLetter(3) == 'H');
    lines.resize(20);
    CHECK(lines.StatusLetter(15) == ' ');
  }

  TEST_CASE("a line outside the table is failure 9 in every array") {
    LineTable lines;
    for (const int line : {-1, 10, 20, 1000000}) {
      CHECK(failure_number_of([&] { lines.StatusLetter(line) = 'N'; }) == 9);
      CHECK(failure_number_of([&] { lines.CallerData(line).clear(); }) == 9);
      CHECK(failure_number_of([&] { lines.HoldStamp(line).clear(); }) == 9);
      CHECK(failure_number_of([&] { lines.ClockBase(line).clear(); }) == 9);
      CHECK(failure_number_of([&] { lines.ClockRunning(line) = 1; }) == 9);
    }
    const LineTable& looked_at = lines;
    CHECK(failure_number_of([&] { looked_at.StatusLetter(10); }) == 9);
  }
}

}  // namespace
}  // namespace lineweir::test

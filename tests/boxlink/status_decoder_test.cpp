#include "boxlink/status_decoder.h"

#include <doctest/doctest.h>

#include "support/call_log_file.h"
#include "support/full_line.h"
#include "support/scripted_console.h"

namespace lineweir::test {
namespace {

constexpr int decoded_line = 5;
std::string report(char letter) { return std::string{letter, '0'} + std::to_string(decoded_line); }

// A console whose line 5 holds something everywhere, so that what a report leaves alone shows as
// well as what it changes.
struct PreparedConsole : ScriptedConsole {
  explicit PreparedConsole(char letter = 'Y') {
    choose_log(*this);
    fill_line(*this, decoded_line, letter, RowColor::Green);
    before = line_picture(console, decoded_line);
  }

  std::string changed(const LinePicture& expected) {
    return differences(line_picture(console, decoded_line), expected);
  }

  LinePicture before;
};

void set_white_row(LinePicture& picture, std::string_view icons) {
  set_row(picture, "White", icons, icons);
}

// The times that a record has, as one text.
std::string times_of(const std::vector<std::string>& logged_row) {
  return logged_row[10] + "|" + logged_row[11] + "|" + logged_row[12];
}

TEST_SUITE("boxlink/status decoder: letters") {
  TEST_CASE("F clears the line") {
    PreparedConsole test('Y');
    test.box_sends(report('F'));

    LinePicture expected = test.before;
    expected.letter = ' ';
    expected.next_call_set = false;
    expected.record = CallerRecord();
    expected.hold_stamp = "";
    expected.clock_running = 0;
    for (int column = 1; column < column_count; ++column) expected.caption(column) = "";
    set_white_row(expected, "");
    CHECK(test.changed(expected) == "");
    CHECK(logged_rows(test).size() == 1);
    CHECK(test.console.decoder.serial_buffer.text() == "");
    CHECK(test.take_trace().empty());
  }

  TEST_CASE("N and C put the line on air on their hybrid") {
    for (const char letter : {'N', 'C'}) {
      CAPTURE(letter);
      PreparedConsole test;
      test.box_sends(report(letter));

      LinePicture expected = test.before;
      expected.letter = letter;
      expected.next_call_set = false;
      expected.record.set(CallerField::TimePlacedOnAir, now_as_clock);
      expected.record.set(CallerField::TimeOnHold, "00:01:30");
      expected.clock_running = 1;
      expected.clock_base = now_as_base;
      expected.caption(status_column) = "On Air";
      set_row(expected, "Red", letter == 'N' ? "RedIcon" : "", letter == 'C' ? "RedIcon" : "");
      CHECK(test.changed(expected) == "");
      CHECK(logged_rows(test).empty());
    }
  }

  TEST_CASE("a line that never waited goes on air without a time on hold") {
    PreparedConsole test;
    test.console.lines.HoldStamp(decoded_line) = "";
    test.console.lines.CallerData(decoded_line).set(CallerField::TimeOnHold, "");
    test.box_sends(report('N'));
    CHECK(test.console.lines.CallerData(decoded_line)[CallerField::TimeOnHold] == "");
  }

  TEST_CASE("S makes the line ready from now") {
    PreparedConsole test;
    test.box_sends(report('S'));

    LinePicture expected = test.before;
    expected.letter = 'S';
    expected.hold_stamp = now_as_stamp;
    expected.record.set(CallerField::TimeOnAir, "00:01:00");
    expected.clock_running = 1;
    expected.clock_base = now_as_base;
    expected.caption(status_column) = "Ready";
    set_white_row(expected, "YellowIcon");
    CHECK(test.changed(expected) == "");
    CHECK(logged_rows(test).empty());
  }

  TEST_CASE("S closes no time on air for a line that wasn't") {
    for (const auto* never : {"", "   "}) {
      PreparedConsole test;
      test.console.lines.CallerData(decoded_line).set(CallerField::TimePlacedOnAir, never);
      test.console.lines.CallerData(decoded_line).set(CallerField::TimeOnAir, "");
      test.box_sends(report('S'));
      CHECK(test.console.lines.CallerData(decoded_line)[CallerField::TimeOnAir] == "");
      CHECK(test.take_trace().empty());
    }
  }

  TEST_CASE("R begins a new call") {
    PreparedConsole test;
    test.box_sends(report('R'));

    LinePicture expected = test.before;
    expected.letter = 'R';
    expected.next_call_set = false;
    expected.record = CallerRecord();
    expected.hold_stamp = "";
    expected.clock_running = 1;
    expected.clock_base = now_as_base;
    expected.caption(status_column) = "";
    for (int column = 3; column < column_count; ++column) expected.caption(column) = "";
    expected.blink_enabled = true;
    set_white_row(expected, "YellowIcon");
    CHECK(test.changed(expected) == "");
    CHECK(logged_rows(test).size() == 1);
  }

  TEST_CASE("E clears the record but not the hold stamp") {
    PreparedConsole test;
    test.box_sends(report('E'));

    LinePicture expected = test.before;
    expected.letter = 'E';
    expected.record = CallerRecord();
    expected.clock_running = 0;
    expected.caption(status_column) = "";
    expected.caption(time_column) = "";
    set_white_row(expected, "GreenIcon");
    CHECK(test.changed(expected) == "");
    CHECK(logged_rows(test).size() == 1);
  }

  TEST_CASE("P, O and H stop the row's clock") {
    for (const char letter : {'P', 'O', 'H'}) {
      CAPTURE(letter);
      PreparedConsole test;
      test.box_sends(report(letter));

      LinePicture expected = test.before;
      expected.letter = letter;
      expected.clock_running = 0;
      expected.caption(status_column) = letter == 'H' ? "Held" : "";
      expected.caption(time_column) = "";
      set_white_row(expected, "GreenIcon");
      CHECK(test.changed(expected) == "");
      CHECK(logged_rows(test).empty());
    }
  }

  TEST_CASE("B makes the line busy, and the next call nothing") {
    PreparedConsole test;
    test.box_sends(report('B'));

    LinePicture expected = test.before;
    expected.letter = ' ';
    expected.next_call_set = false;
    expected.next_call = -1;
    expected.record = CallerRecord();
    expected.hold_stamp = "";
    expected.clock_base = "";
    expected.clock_running = 0;
    expected.caption(status_column) = "Set Busy";
    expected.caption(time_column) = "";
    set_white_row(expected, "BlueIcon");
    CHECK(test.changed(expected) == "");
    CHECK(logged_rows(test).size() == 1);
  }

  TEST_CASE("a line is busy until it is free") {
    PreparedConsole test;
    test.box_sends(report('B'));
    CHECK(test.console.lines.SetBusy(decoded_line) == 1);
    test.box_sends(report('F'));
    CHECK(test.console.lines.SetBusy(decoded_line) == 0);
  }

  TEST_CASE("B right after a connect keeps the caller's data but not the times") {
    PreparedConsole test;
    test.console.lines.FreshConnect = true;
    test.box_sends(report('B'));

    CallerRecord expected = test.before.record;
    expected.clear_times();
    // The record was logged before.
    expected.set(CallerField::CallDate, "1/5/2026");
    CHECK(test.console.lines.CallerData(decoded_line) == expected);
    CHECK(test.console.lines.HoldStamp(decoded_line) == "");
    CHECK(test.console.lines.FreshConnect);
  }

  TEST_CASE("the other letters of a connect clear all the same") {
    for (const char letter : {'F', 'R', 'E'}) {
      CAPTURE(letter);
      PreparedConsole test;
      test.console.lines.FreshConnect = true;
      test.box_sends(report(letter));
      CHECK(test.console.lines.CallerData(decoded_line) == CallerRecord());
    }
  }

  TEST_CASE("every other character is stored and nothing else happens") {
    for (int code = 0; code < 256; ++code) {
      const char letter = static_cast<char>(code);
      if (std::string_view("FNCSREPOHB").find(letter) != std::string_view::npos) continue;
      CAPTURE(code);
      static PreparedConsole test;
      test.console.lines.StatusLetter(decoded_line) = 'H';
      test.box_sends(report(letter));

      LinePicture expected = test.before;
      expected.letter = letter;
      REQUIRE(test.changed(expected) == "");
      REQUIRE(test.console.decoder.serial_buffer.text() == "");
    }
  }

  TEST_CASE("a report that says what is known already does nothing") {
    for (const char letter : std::string("NCSREPOHLKY ")) {
      CAPTURE(letter);
      PreparedConsole test(letter);
      test.box_sends(report(letter));
      CHECK(test.changed(test.before) == "");
      CHECK(test.console.decoder.serial_buffer.text() == "");
    }
  }

  TEST_CASE("F and B are changes each time, since they are never stored") {
    for (const char letter : {'F', 'B'}) {
      CAPTURE(letter);
      PreparedConsole test(letter == 'F' ? ' ' : 'R');
      test.box_sends(report(letter));
      const LinePicture once = line_picture(test.console, decoded_line);
      test.console.lines.CallerData(decoded_line).set(CallerField::City, "Springfield");
      test.console.Lineweir.LineTime(decoded_line).caption = "0:00:07";
      test.box_sends(report(letter));
      CHECK(test.changed(once) == "");
      CHECK(logged_rows(test).size() == 2);
    }
  }

  TEST_CASE("a report for another line leaves the next call alone") {
    for (const char letter : std::string("FNCSREPOHBLKY")) {
      CAPTURE(letter);
      PreparedConsole test;
      test.console.lines.TheNextCall = 2;
      test.box_sends(report(letter));
      CHECK(test.console.lines.TheNextCall == 2);
      CHECK(test.console.lines.NextCallSet);
    }
  }

  TEST_CASE("the data form doesn't open on this link") {
    for (const char old : {'R', 'H', ' '}) {
      for (const char letter : {'O', 'P'}) {
        PreparedConsole test(old);
        test.console.Lineweir.AutoDataEntry.checked = true;
        test.box_sends(report(letter));
        CHECK_FALSE(test.console.Form4.visible);
      }
    }
  }

  TEST_CASE("no other row changes") {
    PreparedConsole test;
    std::vector<LinePicture> before;
    for (int other = 0; other < 10; ++other) before.push_back(line_picture(test.console, other));
    for (const char letter : std::string("NHSCRPEOBF")) test.box_sends(report(letter));
    for (int other = 0; other < 10; ++other) {
      if (other == decoded_line) continue;
      LinePicture expected = before[static_cast<std::size_t>(other)];
      expected.next_call = test.console.lines.TheNextCall;
      expected.next_call_set = test.console.lines.NextCallSet;
      expected.blink_enabled = test.console.Lineweir.Timer5.enabled;
      CHECK(differences(line_picture(test.console, other), expected) == "");
    }
  }
}

TEST_SUITE("boxlink/status decoder: times of a call") {
  // Times on hold, placed on air and on air, as they are logged when the line goes free.
  std::string logged_times(char old, std::string_view stamp, std::string_view placed) {
    PreparedConsole test(old);
    CallerRecord& record = test.console.lines.CallerData(decoded_line);
    record.set(CallerField::TimeOnHold, "h");
    record.set(CallerField::TimeOnAir, "a");
    record.set(CallerField::TimePlacedOnAir, placed);
    test.console.lines.HoldStamp(decoded_line) = stamp;
    test.box_sends(report('F'));
    return times_of(logged_rows(test).at(0));
  }

  TEST_CASE("a freed line closes the time that its old letter was counting") {
    const std::string_view stamp = "1/5/2026 9:58:30 AM";
    const std::string_view placed = "09:59:00 AM";
    CHECK(logged_times('S', stamp, placed) == "00:01:30|09:59:00 AM|a");
    CHECK(logged_times('N', stamp, placed) == "h|09:59:00 AM|00:01:00");
    CHECK(logged_times('C', stamp, placed) == "h|09:59:00 AM|00:01:00");
    for (const char other : std::string("HPOERLKY ")) {
      CAPTURE(other);
      CHECK(logged_times(other, stamp, placed) == "h|09:59:00 AM|a");
    }
  }

  TEST_CASE("without a beginning there is no time to close") {
    CHECK(logged_times('S', "", "09:59:00 AM") == "h|09:59:00 AM|a");
    CHECK(logged_times('N', "1/5/2026 9:58:30 AM", "") == "h||a");
    CHECK(logged_times('C', "", "") == "h||a");
  }

  TEST_CASE("a call across midnight counts by the times of day alone") {
    CHECK(logged_times('S', "1/4/2026 11:00:00 PM", "") == "13:00:00||a");
  }

  TEST_CASE("a whole call: ringing, ready, on air, ready again, freed") {
    ScriptedConsole test;
    choose_log(test);
    const auto at = [&](int hour, int minute, int second) {
      test.platform.clock.put({2026, 1, 5, hour, minute, second});
    };
    at(10, 0, 0);
    test.box_sends("R03");
    test.console.lines.CallerData(3).set(CallerField::CallerName, "Ann");
    test.console.Lineweir.LineName(3).caption = "Ann";
    at(10, 1, 0);
    test.box_sends("S03");
    at(10, 3, 30);
    test.box_sends("N03");
    CHECK(test.console.lines.CallerData(3)[CallerField::TimeOnHold] == "00:02:30");
    at(10, 8, 0);
    test.box_sends("S03");
    CHECK(test.console.lines.CallerData(3)[CallerField::TimeOnAir] == "00:04:30");
    at(10, 9, 15);
    test.box_sends("F03");

    const auto rows = logged_rows(test);
    REQUIRE(rows.size() == 1);
    CHECK(rows[0][0] == "Ann");
    CHECK(times_of(rows[0]) == "00:01:15|10:03:30 AM|00:04:30");
  }
}

TEST_SUITE("boxlink/status decoder: the stream") {
  TEST_CASE("idle lines that report free are changes, and the buffer empties") {
    ScriptedConsole test;
    choose_log(test);
    test.console.Lineweir.LineStatus(1).caption = "left over";
    test.box_sends("F00F01F02");
    CHECK(test.console.Lineweir.LineStatus(1).caption == "");
    CHECK(test.console.decoder.serial_buffer.text() == "");
    CHECK(logged_rows(test).empty());
  }

  TEST_CASE("of two reports of a line in one event only the last is seen") {
    PreparedConsole test;
    test.box_sends("S05H05");
    CHECK(test.console.lines.StatusLetter(decoded_line) == 'H');
    CHECK(test.console.lines.HoldStamp(decoded_line) == test.before.hold_stamp);
    CHECK(test.console.decoder.serial_buffer.text() == "");
  }

  TEST_CASE("a cut report waits for its rest") {
    PreparedConsole test;
    test.box_sends("S0");
    CHECK(test.changed(test.before) == "");
    CHECK(test.console.decoder.serial_buffer.text() == "S0");
    test.box_sends("5");
    CHECK(test.console.lines.StatusLetter(decoded_line) == 'S');
  }

  TEST_CASE("lines are handled in their order, whatever the order on the wire") {
    ScriptedConsole test;
    choose_log(test);
    for (const int freed : {0, 1}) {
      const std::string name = "caller " + std::to_string(freed);
      test.console.lines.CallerData(freed).set(CallerField::CallerName, name);
      test.console.Lineweir.LineName(freed).caption = name;
    }
    test.box_sends("F01F00");
    const auto rows = logged_rows(test);
    REQUIRE(rows.size() == 2);
    CHECK(rows[0][0] == "caller 0");
    CHECK(rows[1][0] == "caller 1");
  }

  TEST_CASE("with 20 lines the tokens of the upper ten still report lines 0 and 1") {
    ScriptedConsole test;
    test.console.layout.set_line_count(20);
    test.box_sends("H012");
    CHECK(test.console.lines.StatusLetter(12) == ' ');
    CHECK(test.console.lines.StatusLetter(1) == 'H');
    CHECK(test.take_trace().empty());
  }

  TEST_CASE("only received data is acted on") {
    PreparedConsole test;
    test.platform.comm1.open();
    const auto on_comm = test.platform.comm1.on_comm;
    test.platform.comm1.on_comm.forget_handler();
    test.platform.comm1.arrive("N05");
    test.platform.loop.run_pending();
    for (const int other : {0, 1, 3, 4, 5, 6, 7, 1001, 1009, -2}) {
      on_comm(other);
    }
    CHECK(test.changed(test.before) == "");
    on_comm(2);
    CHECK(test.console.lines.StatusLetter(decoded_line) == 'N');
  }

  TEST_CASE("two consoles in one process know nothing of each other") {
    PreparedConsole one;
    PreparedConsole other;
    one.box_sends("N05S0");
    CHECK(one.console.lines.StatusLetter(decoded_line) == 'N');
    CHECK(other.changed(other.before) == "");
    CHECK(other.console.decoder.serial_buffer.text() == "");
    CHECK(logged_rows(other).empty());
    other.box_sends("5F05");
    CHECK(one.console.lines.StatusLetter(decoded_line) == 'N');
    CHECK(one.console.decoder.serial_buffer.text() == "S0");
  }
}

TEST_SUITE("boxlink/status decoder: waiting for the line monitor") {
  TEST_CASE("what the box answers is thrown away") {
    PreparedConsole test;
    test.box_sends("N0");
    test.console.decoder.LineMonitorWait = true;
    test.box_sends("H05Line monitor ONS05");
    CHECK_FALSE(test.console.decoder.LineMonitorWait);
    CHECK(test.changed(test.before) == "");
    CHECK(test.console.decoder.serial_buffer.text() == "N0");
    test.box_sends("5");
    CHECK(test.console.lines.StatusLetter(decoded_line) == 'N');
  }

  TEST_CASE("the answer may come in pieces") {
    PreparedConsole test;
    test.platform.comm1.open();
    test.platform.loop.schedule(platform::Milliseconds(30),
                                [&] { test.platform.comm1.arrive("nitor O"); });
    test.platform.loop.schedule(platform::Milliseconds(60),
                                [&] { test.platform.comm1.arrive("N05"); });
    test.console.decoder.LineMonitorWait = true;
    test.box_sends("05Line mo");
    CHECK_FALSE(test.console.decoder.LineMonitorWait);
    CHECK(test.console.decoder.serial_buffer.text() == "");
    CHECK(test.changed(test.before) == "");
    CHECK(test.platform.loop.now() < platform::Milliseconds(1000));
  }

  TEST_CASE("without an answer the wait ends after 5 seconds") {
    PreparedConsole test;
    test.console.decoder.LineMonitorWait = true;
    const auto start = test.platform.loop.now();
    test.box_sends("noise");
    const auto waited = test.platform.loop.now() - start;
    CHECK_FALSE(test.console.decoder.LineMonitorWait);
    CHECK(waited > platform::Milliseconds(5000));
    CHECK(waited < platform::Milliseconds(5200));
    CHECK(test.console.decoder.serial_buffer.text() == "");
    test.box_sends("N05");
    CHECK(test.console.lines.StatusLetter(decoded_line) == 'N');
  }
}

TEST_SUITE("boxlink/status decoder: failures") {
  TEST_CASE("a failure is reported, and the buffer stays until a try goes well") {
    PreparedConsole test('S');
    test.console.lines.HoldStamp(decoded_line) = "yesterday";
    test.box_sends("F05");
    auto trace = test.take_trace();
    REQUIRE(trace.size() == 1);
    CHECK(trace[0].starts_with("Lineweir_Comm1_OnComm Error - "));
    CHECK(test.console.decoder.serial_buffer.text() == "F05");
    CHECK(test.console.lines.StatusLetter(decoded_line) == 'S');

    test.box_sends("x");
    CHECK(test.take_trace().size() == 1);
    CHECK(test.console.decoder.serial_buffer.text() == "F05x");

    test.console.lines.HoldStamp(decoded_line) = "";
    test.box_sends("y");
    CHECK(test.take_trace().empty());
    CHECK(test.console.lines.StatusLetter(decoded_line) == ' ');
    CHECK(test.console.decoder.serial_buffer.text() == "xy");
    CHECK(logged_rows(test).size() == 1);
  }

  TEST_CASE("a log that takes no calls is no failure of the report that frees the line") {
    PreparedConsole test;
    test.console.Lineweir.Data1.database_name = "nowhere.lwl";
    test.box_sends("F05");
    CHECK(test.console.decoder.serial_buffer.text() == "");
    CHECK(test.console.lines.StatusLetter(decoded_line) == ' ');
    CHECK(test.console.lines.CallerData(decoded_line)[CallerField::City] == "");
    CHECK(test.platform.journal.state().waiting == 1);
  }

  TEST_CASE("a letter that was stored before its failure isn't a change at the next try") {
    PreparedConsole test;
    test.console.lines.HoldStamp(decoded_line) = "yesterday";
    test.box_sends("N05");
    CHECK(test.take_trace().size() == 1);
    CHECK(test.console.lines.StatusLetter(decoded_line) == 'N');
    test.box_sends("N04");
    CHECK(test.take_trace().empty());
    CHECK(test.console.decoder.serial_buffer.text() == "");
    CHECK(test.console.lines.CallerData(decoded_line)[CallerField::City] == "rec City");
  }

  TEST_CASE("lines before the failing one are done, lines behind it wait") {
    PreparedConsole test;
    test.console.lines.HoldStamp(decoded_line) = "yesterday";
    test.box_sends("N06N05H04");
    CHECK(test.console.lines.StatusLetter(4) == 'H');
    CHECK(test.console.lines.StatusLetter(6) == ' ');
    test.console.lines.HoldStamp(decoded_line) = "";
    test.box_sends("-");
    CHECK(test.console.lines.StatusLetter(6) == 'N');
  }

  TEST_CASE("a stamp that is no time is reported as any failure") {
    PreparedConsole test;
    test.console.lines.HoldStamp(decoded_line) = "yesterday";
    test.box_sends("N05");
    CHECK(test.take_trace() ==
          std::vector<std::string>{"Lineweir_Comm1_OnComm Error - Type mismatch"});
    CHECK(test.console.decoder.serial_buffer.text() == "N05");
  }

  TEST_CASE("a report above the array's bound is a range failure") {
    ScriptedConsole test;
    // The table as it would be with fewer elements than the count says.
    test.console.lines.StatusLetter.resize(5);
    test.box_sends("N05");
    CHECK(test.take_trace() ==
          std::vector<std::string>{"Lineweir_Comm1_OnComm Error - Subscript out of range"});
    CHECK(test.console.decoder.serial_buffer.text() == "N05");
  }

  TEST_CASE("without the trace a failure is silent and the console goes on") {
    ScriptedConsole test("");
    test.console.lines.HoldStamp(decoded_line) = "yesterday";
    test.box_sends("N05");
    CHECK(test.take_trace().empty());
    test.console.lines.HoldStamp(decoded_line) = "";
    test.box_sends("H06");
    CHECK(test.console.lines.StatusLetter(6) == 'H');
  }
}

}  // namespace
}  // namespace lineweir::test

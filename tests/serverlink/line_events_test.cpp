#include "serverlink/line_events.h"

#include <doctest/doctest.h>

#include <string>
#include <vector>

#include "support/call_log_file.h"
#include "support/line_picture.h"
#include "support/scripted_console.h"

namespace lineweir::test {
namespace {

constexpr int line = 5;
constexpr std::string_view now_as_base = "10:00:00";
constexpr std::string_view now_as_clock = "10:00:00 AM";
constexpr std::string_view now_as_stamp = "1/5/2026 10:00:00 AM";
const std::string reported_letters = "FNCLKSREHPOYB\x83Z";
const std::string stored_letters = " NCLKSREHPOYB\x81";

bool one_of(char letter, std::string_view letters) {
  return letters.find(letter) != std::string_view::npos;
}

// What a report meets.
struct Situation {
  char letter = 'N';
  char old = 'Y';
  int kind = 1;
  bool fresh = false;
  bool next = true;
  bool bar = true;
  bool handset_1 = false;
};

// A console whose line 5 holds something everywhere, so that what a report leaves alone shows as
// well as what it changes. The other lines have no item in the text.
struct EventDesk : ScriptedConsole {
  EventDesk() {
    choose_log(*this);
    console.Lineweir.Timer1.enabled = false;
  }

  LinePicture prepare(const Situation& given) {
    MainForm& form = console.Lineweir;
    LineTable& lines = console.lines;
    lines.StatusLetter(line) = given.old;
    lines.ThePhoneFlag = given.kind;
    lines.FreshConnect = given.fresh;
    form.MitelPhone1.checked = given.handset_1;
    form.NextBarDisable.checked = !given.bar;
    CallerRecord& record = lines.CallerData(line);
    for (const auto& rule : caller_fields) record.set(rule.field, "rec " + std::string(rule.name));
    record.set(CallerField::TimeOnHold, "00:00:01");
    record.set(CallerField::TimePlacedOnAir, "09:59:00 AM");
    record.set(CallerField::TimeOnAir, "00:00:02");
    lines.HoldStamp(line) = "1/5/2026 9:58:30 AM";
    lines.ClockBase(line) = "09:00:00";
    lines.ClockRunning(line) = 7;
    lines.RingConfirm[line] = true;
    lines.TheNextCall = given.next ? line : 2;
    lines.NextCallSet = true;
    for (int column = 0; column < column_count; ++column) {
      form.column_labels(column)(line).caption = "row " + std::to_string(column);
    }
    console.rows.set_row_color(line, RowColor::Red);
    console.rows.DrawMark(line);
    console.rows.HybridPictureSet(line, 4, 0);
    form.Timer5.enabled = false;
    return line_picture(console, line);
  }

  void report(char letter) {
    std::string text(3 * line, '\0');
    text += letter;
    text += "05";
    report_text(text);
  }
  void report_text(const std::string& text) {
    console.line_events.TheStatusText = text;
    console.Lineweir.Timer4.on_timer();
  }
};

void set_row(LinePicture& picture, std::string_view color, std::string_view icon1,
             std::string_view icon2) {
  picture.strip = "DataRow" + std::string(color);
  picture.strip_image = picture.strip;
  picture.mark = "Mark" + std::string(color);
  picture.icon1 = icon1;
  picture.icon2 = icon2;
}

// What a report must leave, told letter by letter.
LinePicture expected_after(const Situation& given, const LinePicture& before) {
  LinePicture picture = before;
  const char letter = given.letter;
  const bool from_lock = one_of(given.old, "LK");
  const bool holds = given.kind == 2;
  if (letter == given.old || (letter == 'F' && given.old == ' ')) return picture;
  picture.letter = letter == 'F' ? ' ' : letter;

  const auto release_next = [&] {
    if (!given.next) return;
    picture.next_call = no_line;
    picture.next_call_set = false;
  };
  const auto close_times = [&](std::string_view air_letters) {
    if (given.old == 'S') picture.record.set(CallerField::TimeOnHold, "00:01:30");
    if (one_of(given.old, air_letters)) picture.record.set(CallerField::TimeOnAir, "00:01:00");
  };
  const auto clear_data = [&] {
    // The date is filled in when the record is logged.
    picture.record.set(CallerField::CallDate, "1/5/2026");
    if (!given.fresh) picture.record.clear_data_fields();
    picture.record.clear_times();
  };
  const auto blank_from = [&](int first_column) {
    for (int column = first_column; column < column_count; ++column) picture.caption(column) = "";
  };
  const auto next_or_white = [&](std::string_view icons) {
    if (!given.next) return set_row(picture, "White", icons, icons);
    set_row(picture, given.bar ? "Green" : "Red", icons, icons);
    picture.caption(status_column) = "Next";
  };
  const auto base_unless_rung = [&] {
    if (!given.fresh && given.old != 'R') picture.clock_base = now_as_base;
  };

  switch (letter) {
    case 'F':
      release_next();
      close_times("NCLK");
      clear_data();
      picture.hold_stamp = "";
      picture.clock_running = 0;
      if (!given.fresh) blank_from(1);
      set_row(picture, "White", "", "");
      picture.clock_base = "";
      return picture;
    case 'N':
    case 'C': {
      release_next();
      if (!from_lock) {
        picture.record.set(CallerField::TimePlacedOnAir, now_as_clock);
        picture.record.set(CallerField::TimeOnHold, "00:01:30");
      }
      picture.clock_running = 1;
      if (!given.fresh && !from_lock) picture.clock_base = now_as_base;
      picture.caption(status_column) = "On Air";
      if (letter == 'N') {
        set_row(picture, "Red", "RedIcon", "");
      } else if (given.kind == 3 && given.handset_1) {
        picture.caption(status_column) = "";
        set_row(picture, "White", "GreenIcon", "GreenIcon");
      } else {
        set_row(picture, "Red", "", "RedIcon");
      }
      return picture;
    }
    case 'L':
    case 'K':
      picture.clock_running = 1;
      picture.caption(status_column) = "Locked";
      set_row(picture, "Red", letter == 'L' ? "RedIcon" : "", letter == 'K' ? "RedIcon" : "");
      return picture;
    case 'S':
      picture.hold_stamp = now_as_stamp;
      picture.record.set(CallerField::TimeOnAir, "00:01:00");
      picture.clock_running = 1;
      base_unless_rung();
      picture.caption(status_column) = "Ready";
      next_or_white("YellowIcon");
      return picture;
    case 'R':
      release_next();
      close_times("NC");
      if (!holds) {
        picture.record = CallerRecord();
        picture.hold_stamp = "";
        if (!given.fresh) blank_from(3);
      }
      picture.clock_running = 1;
      if (!given.fresh) picture.clock_base = now_as_base;
      picture.caption(status_column) = "";
      picture.blink_enabled = true;
      set_row(picture, "White", "YellowIcon", "YellowIcon");
      return picture;
    case 'E':
      picture.caption(status_column) = "";
      picture.caption(time_column) = "";
      if (holds) {
        picture.clock_running = 1;
        next_or_white("GreenIcon");
      } else {
        release_next();
        clear_data();
        picture.clock_running = 0;
        picture.clock_base = "";
        set_row(picture, "White", "GreenIcon", "GreenIcon");
      }
      return picture;
    case 'H':
      picture.caption(status_column) = "Held";
      picture.hold_stamp = now_as_stamp;
      picture.record.set(CallerField::TimeOnAir, "00:01:00");
      base_unless_rung();
      picture.clock_running = 1;
      picture.caption(time_column) = "";
      next_or_white("GreenIcon");
      return picture;
    case 'P':
    case 'O':
      picture.caption(status_column) = "";
      picture.clock_running = 1;
      picture.caption(time_column) = "";
      next_or_white("GreenIcon");
      return picture;
    case 'Y':
      picture.clock_running = 1;
      picture.caption(time_column) = "";
      next_or_white("GreenIcon");
      picture.caption(status_column) = "Locked";
      return picture;
    case 'B':
      release_next();
      close_times("NC");
      clear_data();
      picture.hold_stamp = "";
      picture.caption(status_column) = "Set Busy";
      picture.clock_running = 0;
      picture.caption(time_column) = "";
      picture.clock_base = "";
      set_row(picture, "White", "BlueIcon", "BlueIcon");
      return picture;
    default:
      picture.caption(status_column) = "";
      picture.clock_running = 1;
      picture.caption(time_column) = "";
      picture.clock_base = "";
      next_or_white("GreenIcon");
      return picture;
  }
}

// With equipment of kind 2 a held caller with data is taken for a screened one.
Situation as_taken(Situation given) {
  if (given.letter == 'H' && given.kind == 2) given.letter = 'S';
  return given;
}

TEST_SUITE("serverlink/line events: letters") {
  TEST_CASE("every letter after every letter, with every kind of equipment") {
    EventDesk desk;
    for (const char letter : reported_letters) {
      for (const char old : stored_letters) {
        for (int kind = 1; kind <= 4; ++kind) {
          for (const bool fresh : {false, true}) {
            for (const bool next : {false, true}) {
              const Situation given{letter, old, kind, fresh, next};
              const LinePicture before = desk.prepare(given);
              desk.report(letter);
              CAPTURE(letter);
              CAPTURE(old);
              CAPTURE(kind);
              CAPTURE(fresh);
              CAPTURE(next);
              REQUIRE(differences(line_picture(desk.console, line),
                                  expected_after(as_taken(given), before)) == "");
              REQUIRE_FALSE(desk.console.lines.FreshConnect);
              REQUIRE_FALSE(desk.console.lines.RingConfirm[line]);
            }
          }
        }
      }
    }
  }

  TEST_CASE("without the bar the next call keeps its strip and is told by its text") {
    EventDesk desk;
    for (const char letter : std::string("SHPOEYZ")) {
      Situation given{letter, 'R', 2};
      given.bar = false;
      const LinePicture before = desk.prepare(given);
      desk.report(letter);
      CAPTURE(letter);
      CHECK(differences(line_picture(desk.console, line),
                        expected_after(as_taken(given), before)) == "");
    }
  }

  TEST_CASE("C is the producer's handset at position 1 of equipment of kind 3") {
    EventDesk desk;
    for (int kind = 1; kind <= 4; ++kind) {
      Situation given{'C', 'S', kind};
      given.handset_1 = true;
      const LinePicture before = desk.prepare(given);
      desk.report('C');
      CAPTURE(kind);
      CHECK(differences(line_picture(desk.console, line), expected_after(given, before)) == "");
    }
  }

  TEST_CASE("the calls that end are logged, once each") {
    for (const char letter : reported_letters) {
      for (const int kind : {1, 2}) {
        EventDesk desk;
        desk.prepare({letter, 'N', kind});
        desk.report(letter);
        desk.report(letter);
        const bool ends = one_of(letter, "FB") || (one_of(letter, "RE") && kind != 2);
        CAPTURE(letter);
        CHECK(logged_rows(desk).size() == (ends ? 1 : 0));
      }
    }
  }

  TEST_CASE("F on an idle line does nothing and logs nothing") {
    EventDesk desk;
    const LinePicture before = desk.prepare({'F', ' '});
    desk.report('F');
    CHECK(differences(line_picture(desk.console, line), before) == "");
    CHECK(logged_rows(desk).empty());
  }

  TEST_CASE("a call answered from the ring keeps its clock, a new call starts it") {
    EventDesk desk;
    desk.prepare({'S', 'R'});
    desk.report('S');
    CHECK(desk.console.lines.ClockBase(line) == "09:00:00");
    desk.prepare({'S', 'R'});
    desk.console.lines.ClockBase(line) = "";
    desk.report('S');
    CHECK(desk.console.lines.ClockBase(line) == now_as_base);
  }
}

TEST_SUITE("serverlink/line events: texts") {
  std::string all_letters(const Console& console) {
    std::string letters;
    for (int i = 0; i < console.lines.LineCount; ++i) letters += console.lines.StatusLetter(i);
    return letters;
  }

  TEST_CASE("the item's place gives the line, its digits don't count") {
    EventDesk desk;
    desk.report_text("N99C??SxxR  H00P77O00E00Y00B00");
    CHECK(all_letters(desk.console) == "NCSRHPOEYB");
  }

  TEST_CASE("a line whose item is missing, or has the code 0, isn't touched") {
    for (const std::string& text : {std::string(), std::string("F00F01F02F03F04"),
                                    std::string(18, '\0'), std::string("F00F01F02F03F04\0", 16)}) {
      EventDesk desk;
      const LinePicture before = desk.prepare({'N', 'S'});
      desk.report_text(text);
      CHECK(differences(line_picture(desk.console, line), before) == "");
      CHECK(desk.console.lines.RingConfirm[line]);
    }
  }

  TEST_CASE("an item that is cut short counts by its letter") {
    EventDesk desk;
    desk.report_text("N");
    CHECK(all_letters(desk.console) == "N         ");
    desk.report_text("N00C");
    CHECK(all_letters(desk.console) == "NC        ");
  }

  TEST_CASE("only blanks are trimmed from the text") {
    EventDesk desk;
    desk.report_text("   N00C01   ");
    CHECK(all_letters(desk.console) == "NC        ");
    desk.report_text("\tN00");
    CHECK(desk.console.lines.StatusLetter(0) == '\t');
  }

  TEST_CASE("letters of code 128 and above are stored") {
    EventDesk desk;
    desk.report_text(
        "\x80"
        "00\xFF"
        "01");
    CHECK(desk.console.lines.StatusLetter(0) == '\x80');
    CHECK(desk.console.lines.StatusLetter(1) == '\xFF');
    CHECK(desk.console.lines.ClockRunning(0) == 1);
  }

  TEST_CASE("twenty lines") {
    EventDesk desk;
    desk.console.layout.set_line_count(20);
    desk.console.layout.RedefineScreen();
    std::string text;
    for (int i = 0; i < 20; ++i) text += i % 2 == 0 ? "R00" : "S00";
    desk.report_text(text);
    CHECK(all_letters(desk.console) == "RSRSRSRSRSRSRSRSRSRS");
  }

  TEST_CASE("the timer fires once, and a second text before it replaces the first") {
    EventDesk desk;
    desk.console.line_events.TheStatusText = "N00";
    desk.console.Lineweir.Timer4.enabled = true;
    desk.console.line_events.TheStatusText = "S00";
    desk.platform.loop.advance(platform::Milliseconds(9));
    CHECK(desk.console.lines.StatusLetter(0) == ' ');
    desk.platform.loop.advance(platform::Milliseconds(1));
    CHECK(desk.console.lines.StatusLetter(0) == 'S');
    CHECK_FALSE(desk.console.Lineweir.Timer4.enabled);
  }

  TEST_CASE("the text at the start frees ten lines") {
    EventDesk desk;
    desk.console.Lineweir.Timer4.on_timer();
    CHECK(all_letters(desk.console) == "          ");
  }
}

TEST_SUITE("serverlink/line events: equipment of kind 2") {
  void clear_row_texts(EventDesk & desk) {
    for (int column = 0; column < column_count; ++column) {
      desk.console.Lineweir.column_labels(column)(line).caption = "";
    }
  }

  TEST_CASE("a held caller counts as screened when a shown column behind the third has data") {
    struct Row {
      int column;
      std::string text;
      char letter;
    };
    for (const Row& row : {Row{column_of(CallerField::CallerName), "Ann", 'S'},
                           Row{column_of(CallerField::Comments), " x", 'S'},
                           Row{column_of(CallerField::CallerName), "   ", 'H'},
                           Row{column_of(CallerField::CallerName),
                               "\x1F"
                               "Ann",
                               'H'},
                           Row{column_of(CallerField::CallerName), "\xE9", 'S'},
                           Row{time_column, "0:01:00", 'H'}, Row{status_column, "Held", 'H'},
                           Row{user_column, "Ann", 'H'}, Row{number_column, "6", 'H'}}) {
      CAPTURE(row.column);
      CAPTURE(row.text);
      EventDesk desk;
      desk.prepare({'H', 'P', 2});
      clear_row_texts(desk);
      desk.console.Lineweir.column_labels(row.column)(line).caption = row.text;
      desk.report('H');
      CHECK(desk.console.lines.StatusLetter(line) == row.letter);
    }
  }

  TEST_CASE("with other kinds a held caller with data is held") {
    for (const int kind : {1, 3, 4}) {
      EventDesk desk;
      desk.prepare({'H', 'P', kind});
      desk.report('H');
      CHECK(desk.console.lines.StatusLetter(line) == 'H');
    }
  }

  TEST_CASE("a ring that follows hold counts in the second pass running") {
    for (const char old : {'H', 'S'}) {
      EventDesk desk;
      desk.prepare({'R', old, 2});
      desk.console.lines.RingConfirm[line] = false;
      const LinePicture before = line_picture(desk.console, line);
      desk.report('R');
      CHECK(differences(line_picture(desk.console, line), before) == "");
      CHECK(desk.console.lines.RingConfirm[line]);
      desk.report('R');
      CHECK(desk.console.lines.StatusLetter(line) == 'R');
      CHECK_FALSE(desk.console.lines.RingConfirm[line]);
    }
  }

  TEST_CASE("another report in between begins the count anew") {
    EventDesk desk;
    desk.prepare({'R', 'S', 2});
    desk.console.lines.RingConfirm[line] = false;
    for (int pass = 0; pass < 3; ++pass) {
      desk.report('R');
      CHECK(desk.console.lines.StatusLetter(line) == 'S');
      desk.report('S');
    }
  }

  TEST_CASE("a ring is taken at once from other letters and with other kinds") {
    EventDesk desk;
    for (const char old : std::string(" NPOE")) {
      desk.prepare({'R', old, 2});
      desk.console.lines.RingConfirm[line] = false;
      desk.report('R');
      CHECK(desk.console.lines.StatusLetter(line) == 'R');
    }
    desk.prepare({'R', 'H', 1});
    desk.console.lines.RingConfirm[line] = false;
    desk.report('R');
    CHECK(desk.console.lines.StatusLetter(line) == 'R');
  }
}

TEST_SUITE("serverlink/line events: the data form") {
  TEST_CASE("it opens when a line that rang, or was held in producer mode, is taken") {
    for (const char letter : std::string("PONSHEYBZ")) {
      for (const char old : std::string("RHS ")) {
        for (const bool producer : {false, true}) {
          for (const bool automatic : {false, true}) {
            for (const int kind : {1, 2}) {
              EventDesk desk;
              MainForm& form = desk.console.Lineweir;
              form.ScreenerMode.checked = producer;
              form.AutoDataEntry.checked = automatic;
              desk.prepare({letter, old, kind});
              desk.report(letter);
              const bool answers = one_of(letter, "POZ") || (letter == 'E' && kind == 2);
              const bool opens = automatic && answers && (old == 'R' || (old == 'H' && producer));
              CAPTURE(letter);
              CAPTURE(old);
              CHECK(desk.console.Form4.visible == opens);
              if (!opens) continue;
              CHECK(desk.console.Form4.caption == "Caller Data - Line 6");
              CHECK(desk.console.lines.CurrentDataLine == line);
            }
          }
        }
      }
    }
  }
}

TEST_SUITE("serverlink/line events: what the server is told") {
  TEST_CASE("a new ring tells that the line has no caller's data any more") {
    EventDesk desk;
    desk.platform.winsock1.stand_connected();
    desk.console.Lineweir.WinsockMenu.checked = true;
    desk.prepare({'R', 'N', 1});
    desk.report('R');
    CHECK(desk.platform.winsock1.take_writes() ==
          std::vector<std::string>{
              std::string("\x04\x04\x06\x05\x01\xFF\x00\xFF\x00\x00\x05\x05", 12)});
    desk.prepare({'R', 'N', 2});
    desk.report('R');
    CHECK(desk.platform.winsock1.take_writes().empty());
  }

  TEST_CASE("over remote objects the empty text is written to the line") {
    EventDesk desk;
    desk.platform.remote_objects.set_present(true);
    desk.console.remote.SerialInputObject =
        desk.platform.remote_objects.create("Quorlink.SerialInput");
    desk.console.Lineweir.NetworkConnectionOption.checked = true;
    desk.prepare({'R', 'N', 1});
    desk.report('R');
    const auto calls = desk.platform.remote_objects.take_calls();
    REQUIRE(calls.size() == 1);
    CHECK(calls[0].member == "CallerDataServer");
    CHECK(calls[0].arguments ==
          std::vector<platform::RemoteValue>{std::int64_t{6}, std::int64_t{1}, ""});
  }

  TEST_CASE("a lost connection is told to the user and the report is applied all the same") {
    EventDesk desk;
    std::vector<std::string> shown;
    desk.console.messages.on_shown = [&](const std::string& text) { shown.push_back(text); };
    desk.console.Lineweir.WinsockMenu.checked = true;
    desk.prepare({'R', 'N', 1});
    desk.report('R');
    CHECK(shown == std::vector<std::string>{"Lineweir is not currently connected to a server."});
    CHECK(desk.console.lines.StatusLetter(line) == 'R');
    CHECK(desk.console.Lineweir.CIcon1(line).picture == "YellowIcon");
  }
}

TEST_SUITE("serverlink/line events: failures") {
  TEST_CASE("a step that goes on failing is tried 21 times, reported, and the next goes on") {
    EventDesk desk;
    std::vector<std::string> trace;
    desk.console.program.DebugMode = true;
    desk.console.trace.on_line = [&](const std::string& text) { trace.push_back(text); };
    desk.prepare({'F', 'S', 1});
    desk.console.lines.HoldStamp(line) = "no time";
    desk.report('F');
    REQUIRE(trace.size() == 1);
    CHECK(trace[0].starts_with("Lineweir_Timer4_Timer Error - "));
    CHECK(desk.console.lines.StatusLetter(line) == ' ');
    CHECK(desk.console.lines.HoldStamp(line) == "");
    CHECK(logged_rows(desk).size() == 1);
  }

  TEST_CASE("a failure of one line doesn't keep the others from their reports") {
    EventDesk desk;
    desk.console.lines.StatusLetter(0) = 'S';
    desk.console.lines.HoldStamp(0) = "no time";
    desk.console.lines.FreshConnect = true;
    desk.report_text("F00N01");
    CHECK(desk.console.lines.StatusLetter(0) == ' ');
    CHECK(desk.console.lines.StatusLetter(1) == 'N');
    CHECK_FALSE(desk.console.lines.FreshConnect);
  }

  TEST_CASE("a call log that takes no calls doesn't keep the report waiting") {
    EventDesk desk;
    desk.prepare({'F', 'N', 1});
    desk.platform.failing_databases.fail(failure_number::database_in_use);
    const auto before = desk.platform.loop.now();
    desk.report('F');
    CHECK(desk.console.lines.StatusLetter(line) == ' ');
    CHECK(desk.platform.loop.now() - before < platform::Milliseconds(50));
    CHECK(logged_rows(desk).empty());
    desk.platform.failing_databases.fail(0);
    desk.platform.loop.advance(platform::Milliseconds(500));
    CHECK(logged_rows(desk).size() == 1);
  }
}

}  // namespace
}  // namespace lineweir::test

#include "callerdata/caller_notes.h"

#include <doctest/doctest.h>

#include <string>
#include <vector>

#include "forms/call_log_columns.h"
#include "support/call_log_file.h"
#include "support/obstinate_databases.h"
#include "support/scripted_console.h"

namespace lineweir::test {
namespace {

struct NoteDesk : ScriptedConsole {
  Label& note(int index) { return console.Lineweir.CallerNote(index); }

  void caller(int line, std::string_view name, std::string_view city, std::string_view comments,
              std::string_view number = "") {
    CallerRecord& record = console.lines.CallerData(line);
    record.set(CallerField::CallerName, name);
    record.set(CallerField::City, city);
    record.set(CallerField::Comments, comments);
    record.set(CallerField::PhoneNumber, number);
    console.Lineweir.LineName(line).caption = name;
    console.Lineweir.LineCity(line).caption = city;
    console.Lineweir.LineComments(line).caption = comments;
  }

  std::vector<std::string> notes() {
    platform.loop.advance(platform::Milliseconds(2000));
    std::vector<std::string> shown;
    for (int index = 0; index < most_caller_notes; ++index) {
      if (note(index).visible) shown.push_back(note(index).caption);
    }
    return shown;
  }

  void add_to_log(std::string_view number, std::string_view date, std::string_view on_air) {
    const auto database = platform.databases.open(log_path);
    const auto rows = database->open_recordset(std::string(call_log_table));
    rows->add_new();
    rows->set_field("PhoneNumber", std::string(number));
    rows->set_field("Date", std::string(date));
    rows->set_field("Time_Placed_On_Air", std::string(on_air));
    rows->update();
  }

  void use_log() {
    create_log(platform);
    console.Lineweir.Data1.database_name = log_path;
  }
};

TEST_SUITE("callerdata/caller notes") {
  TEST_CASE("callers on air in the order of their lines, then the next one") {
    NoteDesk desk;
    CHECK(desk.notes().empty());
    desk.caller(6, "Ann", "Leeds", "Ferries");
    desk.caller(1, "Bea", "", "");
    desk.caller(3, "Cyd", "Hull", "");
    desk.box_sends("N06S03C01");
    CHECK(desk.notes() ==
          std::vector<std::string>{"2 Bea", "7 Ann, Leeds \x96 Ferries", "4 Cyd, Hull"});
    CHECK(desk.note(0).fore_color == color_red);
    CHECK(desk.note(1).fore_color == color_red);
    CHECK(desk.note(2).fore_color == color_green);
    desk.box_sends("F06");
    CHECK(desk.notes() == std::vector<std::string>{"2 Bea", "4 Cyd, Hull"});
    desk.box_sends("N03F01");
    CHECK(desk.notes() == std::vector<std::string>{"4 Cyd, Hull"});
    CHECK(desk.note(0).fore_color == color_red);
  }

  TEST_CASE("a note follows what is typed, and a caller of whom nothing is known has none") {
    NoteDesk desk;
    desk.box_sends("N02");
    CHECK(desk.notes().empty());
    desk.caller(2, "Ann", "", "");
    CHECK(desk.notes() == std::vector<std::string>{"3 Ann"});
    desk.caller(2, "", "", "wants to sing");
    CHECK(desk.notes() == std::vector<std::string>{"3 wants to sing"});
  }

  TEST_CASE("a note is written anew at once when a caller's text changes") {
    NoteDesk desk;
    desk.box_sends("N02");
    desk.caller(2, "Ann", "", "");
    CHECK(desk.notes() == std::vector<std::string>{"3 Ann"});
    desk.console.lines.CallerData(2).set(CallerField::CallerName, "Bea");
    desk.console.Lineweir.LineName(2).caption = "Bea";
    desk.platform.loop.advance(platform::Milliseconds(1));
    CHECK(desk.note(0).caption == "3 Bea");
  }

  TEST_CASE("who comes on air again is looked up again") {
    NoteDesk desk;
    desk.use_log();
    desk.caller(2, "Ann", "", "", "555 0100");
    desk.box_sends("N02");
    CHECK(desk.notes() == std::vector<std::string>{"3 Ann \xb7 first call"});
    desk.box_sends("H02");
    desk.notes();
    desk.add_to_log("555 0100", "1/4/2026", "");
    desk.caller(2, "Ann", "", "", "555 0100");
    desk.box_sends("N02");
    CHECK(desk.notes() == std::vector<std::string>{"3 Ann \xb7 called once before, never on air"});
  }

  TEST_CASE("without a log nothing is looked up, and nothing of it is told") {
    NoteDesk desk;
    desk.box_sends("N02");
    desk.caller(2, "Ann", "", "", "555 0100");
    CHECK(desk.notes() == std::vector<std::string>{"3 Ann"});
    CHECK(desk.take_trace().empty());
  }

  TEST_CASE("what the log knew of one number isn't told of another while it can't be read") {
    NoteDesk desk;
    ObstinateDatabases databases(desk.platform.databases);
    desk.platform.failing_databases.use(databases);
    desk.use_log();
    desk.add_to_log("555 0100", "1/4/2026", "");
    desk.caller(2, "Ann", "", "", "555 0100");
    desk.box_sends("N02");
    CHECK(desk.notes() == std::vector<std::string>{"3 Ann \xb7 called once before, never on air"});
    databases.reading_fails = failure_number::database_in_use;
    desk.caller(2, "Bea", "", "", "555 0777");
    CHECK(desk.notes() == std::vector<std::string>{"3 Bea"});
    CHECK(desk.take_trace() ==
          std::vector<std::string>{"Lineweir_CallerNote_Change Error - It can't be read."});
    desk.console.Lineweir.Data1.database_name = "";
    desk.platform.failing_databases.use(desk.platform.databases);
  }

  TEST_CASE("what the log knows stands at the end") {
    NoteDesk desk;
    desk.use_log();
    desk.add_to_log("555-0100", "5/3/2026", "10:00:00 AM");
    desk.add_to_log("555-0100", "5/1/2026", "10:00:00 AM");
    desk.add_to_log("555-0101", "5/1/2026", "");
    desk.caller(2, "Ann", "Leeds", "", "5550100");
    desk.box_sends("N02");
    CHECK(desk.notes() ==
          std::vector<std::string>{"3 Ann, Leeds \xb7 on air 2 times before, last 5/3/2026"});
    desk.caller(2, "Bea", "", "", "5550101");
    CHECK(desk.notes() == std::vector<std::string>{"3 Bea \xb7 called once before, never on air"});
    desk.caller(2, "Cyd", "", "", "5550102");
    CHECK(desk.notes() == std::vector<std::string>{"3 Cyd \xb7 first call"});
  }

  TEST_CASE("a log that can't be read leaves the note without it, and the trace says why") {
    NoteDesk desk;
    desk.use_log();
    desk.platform.failing_databases.fail(failure_number::database_in_use);
    desk.caller(2, "Ann", "", "", "5550100");
    desk.box_sends("N02");
    CHECK(desk.notes() == std::vector<std::string>{"3 Ann"});
    CHECK(desk.take_messages().empty());
  }

  TEST_CASE("a note that is alone has both lines") {
    NoteDesk desk;
    const Place band = band_place(desk.console.program.VisibleLines);
    desk.caller(2, "Ann", "", "");
    desk.box_sends("N02");
    REQUIRE(desk.notes().size() == 1);
    CHECK(desk.note(0).top == band.top);
    CHECK(desk.note(0).width == band.width);
    CHECK(desk.note(0).height == band.height);
  }

  TEST_CASE("no more notes than there is room for") {
    NoteDesk desk;
    for (int line = 0; line < 6; ++line) desk.caller(line, "Caller", "", "");
    desk.box_sends("N00N01N02C03C04C05");
    CHECK(desk.notes().size() == most_caller_notes);
    desk.box_sends("S07");
    desk.caller(7, "Next", "", "");
    CHECK(desk.notes().size() == most_caller_notes);
    CHECK(desk.notes().back() == "8 Next");
    NoteDesk just_full;
    for (int line = 0; line < 4; ++line) just_full.caller(line, "Caller", "", "");
    just_full.box_sends("N00N01N02C03S07");
    just_full.caller(7, "Next", "", "");
    CHECK(just_full.notes().back() == "8 Next");
  }

  TEST_CASE("notes share two lines, and give the lower one to a notice") {
    NoteDesk desk;
    MainForm& form = desk.console.Lineweir;
    const int rows = desk.console.program.VisibleLines;
    const Place upper = band_line_place(rows, 0);
    const Place lower = band_line_place(rows, 1);
    desk.caller(0, "A caller of many words", "", "who has a lot to say");
    desk.caller(1, "B", "", "");
    desk.caller(2, "C", "", "");
    desk.box_sends("N00C01S02");
    REQUIRE(desk.notes().size() == 3);
    // The long one has a line to itself.
    CHECK(desk.note(0).top == upper.top);
    CHECK(desk.note(0).width == upper.width);
    CHECK(desk.note(1).top == lower.top);
    CHECK(desk.note(2).top == lower.top);
    CHECK(desk.note(2).left + desk.note(2).width == lower.left + lower.width);
    form.LogWaiting.caption = "Call log waiting: 2 calls";
    form.LogWaiting.visible = true;
    for (int index = 0; index < 3; ++index) CHECK(desk.note(index).top == upper.top);
    // The longer text has more room.
    CHECK(desk.note(0).width > 2 * desk.note(1).width);
    CHECK(form.LogWaiting.top == lower.top);
    CHECK(form.LogWaiting.width == lower.width);
    form.ServerSilence.caption = "No word from the server";
    form.ServerSilence.visible = true;
    CHECK(form.ServerSilence.top == lower.top);
    CHECK(form.ServerSilence.left == lower.left);
    CHECK(form.LogWaiting.left > form.ServerSilence.left + form.ServerSilence.width);
    form.LogWaiting.visible = false;
    form.ServerSilence.visible = false;
    CHECK(desk.note(2).top == lower.top);
  }

  TEST_CASE("the caller on the first line, and on the last, is noted as the next one") {
    NoteDesk desk;
    for (const int line : {0, 9}) {
      desk.caller(line, "Ann", "", "");
      desk.box_sends(line == 0 ? "S00" : "F00S09");
      desk.console.next_caller.pin(line);
      CHECK(desk.notes() == std::vector<std::string>{std::to_string(line + 1) + " Ann"});
    }
  }

  TEST_CASE("a console that ends before its notes are written anew ends quietly") {
    platform::ScriptedPlatform platform;
    {
      Console console(platform.services());
      console.startup.Main("");
      console.Lineweir.LineName(2).caption = "Ann";
    }
    platform.loop.advance(platform::Milliseconds(1000));
    CHECK(platform.loop.now() >= platform::Milliseconds(1000));
  }
}

}  // namespace
}  // namespace lineweir::test

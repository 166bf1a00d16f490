#include <doctest/doctest.h>

#include <algorithm>
#include <array>

#include "base/text.h"
#include "callerdata/call_log.h"
#include "callerdata/caller_history.h"
#include "callerdata/log_places.h"
#include "platform/log_columns.h"
#include "support/call_viewer.h"
#include "support/failure_number.h"

namespace lineweir::test {
namespace {

using Columns = std::vector<platform::DatabaseColumn>;
using Texts = std::vector<std::string>;

// The columns of a log to which a newer release has added some.
Columns with_further(const std::vector<int>& places) {
  Columns columns = new_log_columns("Sponsor");
  for (const int place : places) {
    columns.insert(columns.begin() + place, {"Further " + std::to_string(place), 50});
  }
  return columns;
}

// At the end; in the middle; in front; everywhere at once.
const std::vector<std::vector<int>> further_places = {{14}, {3}, {0}, {0, 4, 10, 17}};

// A console whose log has such columns, and holds one call of another console.
struct FurtherColumns : CallViewer {
  explicit FurtherColumns(const std::vector<int>& places) : columns(with_further(places)) {
    platform.databases.create("newer.lwl")->create_table(std::string(call_log_table), columns);
    platform.dialogs.answer_file("newer.lwl");
    platform.dialogs.answer_question(true);
    console.Lineweir.DatabasePathMenuItem.on_click();
  }

  int place_of(const std::string& name) const {
    const auto found = std::ranges::find(columns, name, &platform::DatabaseColumn::name);
    return static_cast<int>(found - columns.begin());
  }
  Texts row(std::size_t number) const {
    return platform.databases.rows("newer.lwl", call_log_table).at(number);
  }
  // Without the blanks behind fixed fields.
  Texts trimmed_row(std::size_t number) const {
    Texts texts = row(number);
    for (std::string& text : texts) text = trimmed_right(text);
    return texts;
  }
  std::string logged(std::size_t number, const std::string& name) const {
    return row(number).at(static_cast<std::size_t>(place_of(name)));
  }

  // A call on line 0 ends.
  platform::LoggedCall end_call(const std::string& name, const std::string& date) {
    platform::LoggedCall ended;
    console.call_log.on_call_ended = [&](const EndedCall& call) { ended = call.record; };
    platform.clock.put({2026, 1, date == "1/5/2026" ? 5 : 12, 10, 0, 0});
    CallerRecord& record = console.lines.CallerData(0);
    for (const CallerFieldRule& rule : entry_fields) record.set(rule.field, rule.name);
    record.set(CallerField::PhoneNumber, "312-555-0100");
    record.set(CallerField::TimeOnAir, "00:02:00");
    console.Lineweir.LineName(0).caption = name;
    console.Lineweir.LineCity(0).caption = "Salem";
    console.Lineweir.LineComments(0).caption = "shown";
    console.call_log.log(0);
    return ended;
  }

  Columns columns;
};

TEST_SUITE("callerdata/logs with further columns") {
  TEST_CASE("calls go into the columns of their names, and the others stay empty") {
    for (const auto& places : further_places) {
      CAPTURE(places.size());
      FurtherColumns test(places);
      CHECK(test.take_messages().empty());
      test.end_call("Ann", "1/5/2026");
      CHECK(test.logged(0, "Caller Name") == "Ann");
      CHECK(test.logged(0, "Street Address") == "StreetAddress");
      CHECK(test.logged(0, "City") == "Salem");
      CHECK(test.logged(0, "PhoneNumber") == "312-555-0100");
      CHECK(test.logged(0, "Comments") == "shown");
      CHECK(test.logged(0, "Date") == "1/5/2026");
      CHECK(test.logged(0, "Time_On_Air") == "00:02:00");
      CHECK(test.logged(0, "Sponsor").starts_with("UserField"));
      for (const platform::DatabaseColumn& column : test.columns) {
        if (column.name.starts_with("Further")) CHECK(test.logged(0, column.name) == "");
      }
      CHECK(test.platform.journal.state() == platform::CallJournalState{});
    }
  }

  TEST_CASE("what is saved after the call's end goes into its row") {
    for (const auto& places : further_places) {
      FurtherColumns test(places);
      const auto call = test.end_call("Ann", "1/5/2026");
      test.end_call("Bob", "1/5/2026");
      EntryTexts texts;
      texts[name_entry - 1] = "Ann Smith";
      texts[user_entry - 1] = "Gardening";
      CHECK(test.console.call_log.complete(call, texts));
      CHECK(test.platform.databases.rows("newer.lwl", call_log_table).size() == 2);
      CHECK(test.logged(0, "Caller Name") == "Ann Smith");
      CHECK(test.logged(0, "Sponsor").starts_with("Gardening"));
      CHECK(test.logged(0, "Time_On_Air") == "00:02:00");
      CHECK(test.logged(1, "Caller Name") == "Bob");
    }
  }

  TEST_CASE("a caller is known by the number") {
    for (const auto& places : further_places) {
      FurtherColumns test(places);
      test.end_call("Ann", "1/5/2026");
      test.wait();
      const auto history =
          find_history(test.console.call_log.recordset(), test.platform.letters, "3125550100");
      REQUIRE(history);
      CHECK(history_text(*history) == "Called once, never on air\r\nAnn, Salem");
    }
  }

  TEST_CASE("the user's field is compared, renamed, and stays where it is") {
    for (const auto& places : further_places) {
      FurtherColumns test(places);
      CHECK(test.console.Lineweir.CaptionLabel(user_column).caption == "Sponsor");
      test.console.call_log.rename_user_field("Hobby");
      const auto now =
          test.platform.databases.open("newer.lwl")->table_columns(std::string(call_log_table));
      CHECK(now[static_cast<std::size_t>(test.place_of("Sponsor"))].name == "Hobby");
    }
  }

  TEST_CASE("the viewer shows, searches and sorts by all columns") {
    for (const auto& places : further_places) {
      FurtherColumns test(places);
      test.end_call("Bob", "1/12/2026");
      test.end_call("Ann", "1/5/2026");
      test.open();
      test.wait();
      DatabaseViewerForm& form = test.form();
      CHECK(test.grid().headings.get().size() == test.columns.size());
      CHECK(form.DetailName.count() == static_cast<int>(test.columns.size()));
      test.grid().on_heading_click(test.place_of("Date"));
      test.wait();
      const int name = test.place_of("Caller Name");
      CHECK(test.grid().cell(1, name) == "Ann");
      CHECK(test.grid().cell(2, name) == "Bob");
      test.grid().select(2);
      // The columns that are known are read in their order, the further ones behind them.
      constexpr int user_field = 8;
      CHECK(form.DetailName(user_field).caption == "Sponsor");
      CHECK(form.DetailText(user_field).caption == "UserField");
      test.search("bob userfield");
      CHECK(test.grid().rows == 1);
      const auto comments = static_cast<std::size_t>(test.place_of("Comments"));
      CHECK(test.grid().column_widths[comments] == 3000);
    }
  }

  TEST_CASE("what is exported can be imported, and a text of a further column comes along") {
    for (const auto& places : further_places) {
      FurtherColumns test(places);
      test.end_call("Ann", "1/5/2026");
      const std::string further = "Further " + std::to_string(places.front());
      {
        const auto database = test.platform.databases.open("newer.lwl");
        const auto rows = database->open_recordset(std::string(call_log_table));
        rows->add_new();
        rows->set_field("Caller Name", "Carla");
        rows->set_field(further, "of a newer release");
        rows->update();
      }
      test.open();
      test.wait();
      test.platform.dialogs.answer_file("out.csv");
      test.form().ExportButton.on_click();
      test.wait();
      const auto exported = test.platform.files.read("out.csv");
      REQUIRE(exported);
      CHECK(exported->find("of a newer release") != std::string::npos);

      test.platform.dialogs.answer_file("out.csv");
      test.form().ImportButton.on_click();
      test.wait();
      CHECK(test.console.ImportPreview.ProblemList.list.get().empty());
      test.console.ImportPreview.HeldCheck.value = 1;
      test.console.ImportPreview.HeldCheck.on_click();
      test.console.ImportPreview.ImportOk.on_click();
      test.wait();
      // The newest is exported first.
      CHECK(test.row(2) == test.trimmed_row(1));
      CHECK(test.row(3) == test.trimmed_row(0));
    }
  }

  TEST_CASE("a file of an older release is imported, its one unknown name for the user's field") {
    FurtherColumns test({3});
    test.open();
    test.platform.files.replace("old.csv", "Caller Name,City,Hobby\r\nAnn,Salem,Chess\r\n");
    test.platform.dialogs.answer_file("old.csv");
    test.form().ImportButton.on_click();
    test.wait();
    test.console.ImportPreview.ImportOk.on_click();
    test.wait();
    CHECK(test.logged(0, "City") == "Salem");
    CHECK(test.logged(0, "Sponsor") == "Chess");
    CHECK(test.logged(0, "Further 3") == "");
  }

  TEST_CASE("each column is known by its name, the user's by its place behind the others") {
    const auto places = LogPlaces::in(with_further({3, 15}));
    REQUIRE(places);
    CHECK(places->of(CallerField::City) == 2);
    CHECK(places->of(CallerField::State) == 4);
    CHECK(places->of(CallerField::UserField) == 14);
    CHECK(places->column_at(0).kind == SortKind::Text);
    CHECK(places->column_at(10).kind == SortKind::Date);
    CHECK(places->column_at(11).kind == SortKind::Time);
    CHECK(places->column_at(12).kind == SortKind::Time);
    CHECK(places->column_at(13).kind == SortKind::Time);
    CHECK(places->column_at(14).kind == SortKind::Text);
    CHECK(places->column_at(3).kind == SortKind::Text);
    CHECK(places->column_at(15).grid_width > 0);
    CHECK(places->column_at(-1).kind == SortKind::Text);
    CHECK(places->column_at(99).kind == SortKind::Text);
  }

  TEST_CASE("a table that lacks a column of the log is none, whatever else it has") {
    for (std::size_t missing = 0; missing < caller_fields.size(); ++missing) {
      CAPTURE(missing);
      Columns columns = new_log_columns("Sponsor");
      columns.erase(columns.begin() + static_cast<std::ptrdiff_t>(missing));
      CHECK_FALSE(LogPlaces::in(columns));
      CHECK(failure_number_of([&] { require_log_columns(columns); }) == 3265);
    }
  }

  TEST_CASE("a column that came later than the user's field may be missing in an older file") {
    constexpr std::array<std::string_view, 4> names = {"Name", "", "Topic", "Mood"};
    const auto places = [&](const Columns& present) {
      return platform::places_of_columns(present, names).value_or(std::vector<int>());
    };
    CHECK(places({{"Name"}, {"Hobby"}}) == std::vector<int>{0, 1, -1, -1});
    CHECK(places({{"Name"}, {"Hobby"}, {"Mood"}}) == std::vector<int>{0, 1, -1, 2});
    CHECK(places({{"Name"}, {"Hobby"}, {"x"}, {"Topic"}, {"Mood"}}) ==
          std::vector<int>{0, 1, 3, 4});
    CHECK(places({{"Name"}}).empty());
  }
}

}  // namespace
}  // namespace lineweir::test

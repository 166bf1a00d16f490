#include "callerdata/log_viewer.h"

#include <doctest/doctest.h>

#include <algorithm>

#include "support/call_viewer.h"
#include "support/property_check.h"

namespace lineweir::test {
namespace {

using Names = std::vector<std::string>;

TEST_SUITE("callerdata/log viewer") {
  TEST_CASE("the menu item shows the log that is chosen, the newest call first") {
    CallViewer test;
    test.log_call("Ann", "Salem", "1/5/2026");
    test.log_call("Bob");
    test.open();
    CHECK(test.form().visible);
    CHECK(test.form().Data1.database_name == log_path);
    CHECK(test.form().Data1.record_source == test.console.Lineweir.Data1.record_source.get());
    CHECK(test.grid().headings.get().size() == 14);
    CHECK(test.grid().cell(0, 13) == "Sponsor");
    CHECK(test.names() == Names{"Bob", "Ann"});
    CHECK(test.grid().cell(2, 2) == "Salem");
    CHECK(test.form().CountLabel.caption == "2 calls");
  }

  TEST_CASE("without a log it says how to get one") {
    ScriptedConsole test;
    test.console.Lineweir.ShowDatabaseMenuItem.on_click();
    const DatabaseViewerForm& form = test.console.DatabaseViewer;
    CHECK(form.visible);
    CHECK(form.CountLabel.caption ==
          "No call log is chosen. Choose or create one with Options, Database Path.");
    CHECK(form.DBGrid1.rows == 0);
    for (const Button* button : {&form.ImportButton, &form.ExportButton, &form.PrintButton}) {
      CHECK_FALSE(button->enabled);
    }
    CHECK(test.take_messages().empty());
  }

  TEST_CASE("a log that has gone is told, and the viewer is empty") {
    ScriptedConsole test;
    test.console.Lineweir.Data1.database_name = "gone.mdb";
    test.console.Lineweir.ShowDatabaseMenuItem.on_click();
    CHECK(test.console.DatabaseViewer.visible);
    CHECK(test.console.DatabaseViewer.CountLabel.caption == "Couldn't find file 'gone.mdb'.");
    CHECK(test.take_trace() ==
          Names{"DatabaseViewer_Form_Load Error - Couldn't find file 'gone.mdb'."});
  }

  TEST_CASE("a log that comes back is shown, and so is another file in its place") {
    CallViewer test;
    test.log_call("Ann");
    test.open();
    CHECK(test.names() == Names{"Ann"});
    test.platform.databases.remove(log_path);
    test.wait();
    CHECK(test.form().CountLabel.caption == "Couldn't find file 'calls.lwl'.");
    CHECK(test.names().empty());
    CHECK_FALSE(test.form().ExportButton.enabled);
    create_log(test.platform);
    test.log_call("Bob");
    test.wait();
    CHECK(test.names() == Names{"Bob"});
    CHECK(test.form().ExportButton.enabled);

    test.platform.databases.remove(log_path);
    create_log(test.platform);
    test.wait();
    CHECK(test.names().empty());
    CHECK(test.form().CountLabel.caption == "0 calls");
  }

  TEST_CASE("a log that is in use when the viewer is opened is shown when it is let go") {
    CallViewer test;
    test.log_call("Ann");
    test.platform.failing_databases.fail(failure_number::database_in_use);
    test.open();
    const std::string in_use = "The file 'calls.lwl' is in use by another program.";
    CHECK(test.form().CountLabel.caption == in_use);
    test.wait(60000);
    // It is told once and not at each look.
    CHECK(test.take_trace() == Names{"DatabaseViewer_Form_Load Error - " + in_use});
    test.platform.failing_databases.fail(0);
    test.wait();
    CHECK(test.names() == Names{"Ann"});
  }

  TEST_CASE("the selected call's columns are shown one by one, without blanks behind") {
    CallViewer test;
    test.log_call({{0, "Ann"}, {6, "Wants to talk"}, {7, "KLWR      "}});
    test.open();
    CHECK(test.grid().row == 1);
    CHECK(test.form().DetailName(2).caption == "Caller name");
    CHECK(test.form().DetailText(2).caption == "Ann");
    CHECK(test.form().DetailName(3).caption == "Comments");
    CHECK(test.form().DetailText(3).caption == "Wants to talk");
    CHECK(test.form().DetailText(9).caption == "KLWR");
    test.search("nobody");
    CHECK(test.form().DetailText(3).caption == "");
  }

  TEST_CASE("the newest call is selected when the log is shown, and the first that is found") {
    CallViewer test;
    test.log_call("Ann");
    test.log_call("Bob");
    test.open();
    CHECK(test.grid().row == 1);
    CHECK(test.form().DetailText(2).caption == "Bob");
    test.search("ann");
    CHECK(test.grid().row == 1);
    CHECK(test.form().DetailText(2).caption == "Ann");
    test.search("nobody");
    CHECK(test.grid().row == 0);
    test.search("");
    test.form().SortDown.value = 0;
    test.form().SortDown.on_click();
    test.wait(50);
    CHECK(test.form().DetailText(2).caption == "Ann");
  }

  TEST_CASE("people read plain headings in an order of their own, the table stays as it is") {
    CallViewer test;
    test.open();
    CHECK(test.grid().cell(0, 11) == "Time_Placed_On_Air");
    Names read;
    for (const DataGridColumn& column : test.grid().shown_columns) read.push_back(column.heading);
    CHECK(read == Names{"Date", "Placed on air", "Caller name", "Comments", "City", "Phone number",
                        "Time on hold", "Time on air", "Sponsor", "Station", "Gender", "Zip code",
                        "Street address", "State"});
    CHECK(test.grid().shown_columns.front().column == 9);
    CHECK(test.grid().shown_columns.back().column == 3);
    read.insert(read.begin(), "Order of logging");
    CHECK(test.form().SortList.list.get() == read);
  }

  TEST_CASE("the Down key in the search goes on to the table's next call") {
    CallViewer test;
    for (const char* name : {"Ann", "Bob"}) test.log_call(name);
    test.open();
    int down = 40;
    test.form().SearchText.on_key_down(down, 0);
    CHECK(down == 0);
    CHECK(test.form().focused() == &test.grid());
    CHECK(test.grid().row == 2);
    int left = 37;
    test.form().SearchText.on_key_down(left, 0);
    CHECK(left == 37);
    test.search("nobody");
    test.form().SearchText.set_focus();
    down = 40;
    test.form().SearchText.on_key_down(down, 0);
    CHECK(test.form().focused() == &test.form().SearchText);
  }

  TEST_CASE("the found words are marked in what is shown") {
    CallViewer test;
    test.log_call("Ann");
    test.open();
    CHECK(test.grid().marked_pieces("Ann").empty());
    test.search("ANN salem");
    CHECK(test.grid().marked_pieces("Joanna, Salem") == std::vector<TextPiece>{{2, 3}, {8, 5}});
  }

  TEST_CASE("the day of the selected call is taken together, and what is logged counts at once") {
    CallViewer test;
    const auto log = [&](const char* date, const char* wait, const char* placed) {
      test.log_call({{0, "Ann"}, {9, date}, {10, wait}, {11, placed}});
    };
    log("1/4/2026", "00:09:00", "10:05:00 AM");
    log("01/04/2026", "", "");
    log("1/5/2026", "00:02:10", "");
    test.open();
    test.wait();
    CHECK(test.form().DayLabel.caption == "Today: 1 call, 0 on air, longest wait 00:02:10");
    log("1/5/2026", "00:01:00", "10:05:00 AM");
    test.wait();
    CHECK(test.form().DayLabel.caption == "Today: 2 calls, 1 on air, longest wait 00:02:10");
    test.grid().select(4);
    CHECK(test.form().DayLabel.caption == "1/4/2026: 2 calls, 1 on air, longest wait 00:09:00");
    test.form().ExitViewer.on_click();
    CHECK(test.form().DayLabel.caption == "");
  }

  TEST_CASE("a call that was removed counts no more") {
    CallViewer test;
    test.log_call("Ann", "", "1/5/2026");
    const auto removed = test.log_call("Bob", "", "1/5/2026");
    test.open();
    test.wait();
    CHECK(test.form().DayLabel.caption == "Today: 2 calls, 0 on air");
    test.platform.databases.open(log_path)
        ->open_recordset(std::string(call_log_table))
        ->remove(removed);
    test.wait();
    CHECK(test.form().DayLabel.caption == "Today: 1 call, 0 on air");
  }

  TEST_CASE("the search finds calls with all words, in any column, case or accent") {
    CallViewer test;
    test.log_call("Ann Smith", "Salem");
    test.log_call("Bob", "Smithfield");
    test.log_call("Jos\xC3\xA9", "Salem");
    test.open();
    test.search("smith");
    CHECK(test.names() == Names{"Bob", "Ann Smith"});
    CHECK(test.form().CountLabel.caption == "2 of 3 calls");
    test.search("SALEM smith");
    CHECK(test.names() == Names{"Ann Smith"});
    test.search("jos\xC3\xA9");
    CHECK(test.names() == Names{"Jos\xC3\xA9"});
    test.search("");
    CHECK(test.grid().rows == 3);
    CHECK(test.form().CountLabel.caption == "3 calls");
  }

  TEST_CASE("a heading sorts by its column, once more the other way, a third time as logged") {
    CallViewer test;
    test.log_call("bob", "", "10/1/2025");
    test.log_call("Ann", "", "1/5/2026");
    test.log_call("carla", "", "9/30/2025");
    test.open();
    test.grid().on_heading_click(0);
    test.wait(50);
    CHECK(test.names() == Names{"Ann", "bob", "carla"});
    CHECK(test.form().SortList.list_index == 3);
    CHECK(test.form().SortDown.value == 0);
    test.grid().on_heading_click(0);
    test.wait(50);
    CHECK(test.names() == Names{"carla", "bob", "Ann"});
    CHECK(test.grid().sort_down);
    test.grid().on_heading_click(0);
    test.wait(50);
    CHECK(test.names() == Names{"carla", "Ann", "bob"});
    CHECK(test.grid().sort_column == -1);
    test.grid().on_heading_click(9);
    test.wait(50);
    CHECK(test.names() == Names{"carla", "bob", "Ann"});
  }

  TEST_CASE("the list of orders and its box do the same") {
    CallViewer test;
    for (const char* name : {"bob", "Ann", "carla"}) test.log_call(name);
    test.open();
    CHECK(test.form().SortList.list.get().front() == "Order of logging");
    test.form().SortList.select(3);
    test.wait(50);
    CHECK(test.names() == Names{"Ann", "bob", "carla"});
    test.form().SortDown.value = 1;
    test.form().SortDown.on_click();
    test.wait(50);
    CHECK(test.names() == Names{"carla", "bob", "Ann"});
    test.form().SortList.select(0);
    test.wait(50);
    CHECK(test.names() == Names{"carla", "Ann", "bob"});
    test.form().SortDown.value = 0;
    test.form().SortDown.on_click();
    test.wait(50);
    CHECK(test.names() == Names{"bob", "Ann", "carla"});
  }

  TEST_CASE("calls that are logged meanwhile come in at the top, and the selection stays") {
    CallViewer test;
    test.log_call("Ann");
    test.log_call("Bob");
    test.open();
    test.grid().select(2);
    test.log_call("Carla");
    test.wait();
    CHECK(test.names() == Names{"Carla", "Bob", "Ann"});
    CHECK(test.grid().row == 3);
    CHECK(test.form().CountLabel.caption == "3 calls");
  }

  TEST_CASE("a call that is logged meanwhile takes its place in any order, if it is looked for") {
    CallViewer test;
    for (const char* name : {"Ann", "Carla", "Dora"}) test.log_call(name, "Salem");
    test.open();
    test.grid().on_heading_click(0);
    test.search("salem");
    test.log_call("Bob", "Salem");
    test.log_call("Boris", "Reno");
    test.wait();
    CHECK(test.names() == Names{"Ann", "Bob", "Carla", "Dora"});
    CHECK(test.form().CountLabel.caption == "4 of 5 calls");
    test.form().SortDown.value = 1;
    test.form().SortDown.on_click();
    test.log_call("Cleo", "Salem");
    test.wait();
    CHECK(test.names() == Names{"Dora", "Cleo", "Carla", "Bob", "Ann"});
  }

  TEST_CASE("the oldest first: calls that are logged meanwhile come in at the end") {
    CallViewer test;
    test.log_call("Ann");
    test.open();
    test.form().SortDown.value = 0;
    test.form().SortDown.on_click();
    test.log_call("Bob");
    test.wait();
    CHECK(test.names() == Names{"Ann", "Bob"});
  }

  TEST_CASE("a long log is looked through in slices, the newest calls at once") {
    CallViewer test;
    test.log_calls(30000);
    test.open();
    CHECK(test.grid().rows == 20000);
    CHECK(test.grid().cell(1, 0) == "caller 29999");
    CHECK(test.form().WorkLabel.caption == "Reading, 66 %");
    test.wait(50);
    CHECK(test.grid().rows == 30000);
    CHECK(test.form().WorkLabel.caption == "");
    test.form().SearchText.text = "CALLER";
    CHECK(test.form().WorkLabel.caption.get().starts_with("Searching, "));
    CHECK(test.grid().rows > 0);
    test.wait(100);
    CHECK(test.grid().rows == 30000);
  }

  TEST_CASE("typing on begins anew, whatever was being looked for") {
    CallViewer test;
    test.log_calls(30000);
    test.open();
    test.form().SearchText.text = "caller";
    test.form().SearchText.text = "caller 29999";
    test.wait(200);
    CHECK(test.names() == Names{"caller 29999"});
    CHECK(test.form().CountLabel.caption == "1 of 30,000 calls");
  }

  TEST_CASE("a call that another program removes goes from the view") {
    CallViewer test;
    test.log_call("Ann");
    const auto removed = test.log_call("Bob");
    test.open();
    test.platform.databases.open(log_path)
        ->open_recordset(std::string(call_log_table))
        ->remove(removed);
    CHECK(test.grid().row_texts(1).empty());
    test.wait();
    CHECK(test.names() == Names{"Ann"});
  }

  TEST_CASE("a renamed column is shown by its new name") {
    CallViewer test;
    test.open();
    test.platform.databases.open(log_path)->rename_column(std::string(call_log_table), 13, "Hobby");
    test.wait();
    CHECK(test.grid().cell(0, 13) == "Hobby");
    CHECK(test.form().DetailName(8).caption == "Hobby");
  }

  TEST_CASE("when another log was chosen, showing the viewer again shows that one") {
    CallViewer test;
    test.log_call("Ann");
    test.open();
    test.platform.databases.create("other.mdb")
        ->create_table(std::string(call_log_table), new_log_columns("User"));
    test.console.Lineweir.Data1.database_name = "other.mdb";
    test.open();
    CHECK(test.form().Data1.database_name == "other.mdb");
    CHECK(test.grid().rows == 0);
    CHECK(test.form().visible);
  }

  TEST_CASE("the viewer follows at once to another log that is chosen") {
    CallViewer test;
    test.log_call("Ann");
    test.open();
    CHECK(test.names() == Names{"Ann"});
    test.platform.files.replace("old.csv", "Caller Name\r\nBob\r\n");
    test.platform.dialogs.answer_file("old.csv");
    test.form().ImportButton.on_click();
    REQUIRE(test.console.ImportPreview.loaded());
    test.platform.dialogs.answer_file("other.mdb");
    test.console.Lineweir.DatabasePathMenuItem.on_click();
    CHECK(test.form().Data1.database_name == "other.mdb");
    CHECK(test.names() == Names{});
    CHECK_FALSE(test.console.ImportPreview.loaded());
    CHECK(test.take_messages() == Names{});
    CHECK(test.form().ImportButton.enabled);
    test.platform.dialogs.answer_file("old.csv");
    test.form().ImportButton.on_click();
    test.wait();
    test.console.ImportPreview.ImportOk.on_click();
    test.wait();
    CHECK(test.names() == Names{"Bob"});
    CHECK(logged_rows(test).size() == 1);
  }

  TEST_CASE("a viewer that was opened without a log shows the first one that is chosen") {
    CallViewer test;
    test.console.Lineweir.Data1.database_name = "";
    test.open();
    CHECK_FALSE(test.form().ImportButton.enabled);
    test.platform.dialogs.answer_file(log_path);
    test.console.Lineweir.DatabasePathMenuItem.on_click();
    CHECK(test.form().ImportButton.enabled);
    CHECK(test.form().CountLabel.caption == "0 calls");
  }

  TEST_CASE("closing ends all work and leaves the log alone") {
    CallViewer test;
    test.log_calls(30000);
    test.open();
    test.form().ExitViewer.on_click();
    CHECK_FALSE(test.form().loaded());
    test.wait();
    CHECK(test.grid().rows == 0);
    CHECK_FALSE(test.form().WorkTimer.enabled);
    CHECK_FALSE(test.form().FollowTimer.enabled);
    test.open();
    test.wait(50);
    CHECK(test.grid().rows == 30000);
  }

  TEST_CASE("any calls in any order: the view is what sorting and filtering them gives") {
    check_property(
        [](const std::vector<std::uint8_t>& early, const std::vector<std::uint8_t>& late) {
          CallViewer test;
          std::vector<std::string> all;
          const auto log = [&](const std::vector<std::uint8_t>& values) {
            for (const int value : values) {
              const std::string name =
                  std::string(1, static_cast<char>('a' + value % 5)) + std::to_string(all.size());
              test.log_call(name);
              all.push_back(name);
            }
          };
          const int column = *rc::gen::inRange(-1, 1);
          const bool down = *rc::gen::arbitrary<bool>();
          const bool filter = *rc::gen::arbitrary<bool>();
          log(early);
          test.open();
          test.form().SortList.select(column == 0 ? 3 : 0);
          test.form().SortDown.value = down ? 1 : 0;
          test.form().SortDown.on_click();
          if (filter) test.search("b");
          test.wait(100);
          log(late);
          test.wait();

          std::vector<std::string> wanted;
          for (const auto& name : all) {
            if (!filter || name.find('b') != std::string::npos) wanted.push_back(name);
          }
          if (column == 0) std::sort(wanted.begin(), wanted.end());
          if (down) std::reverse(wanted.begin(), wanted.end());
          RC_ASSERT(test.names() == wanted);
        });
  }

  TEST_CASE(
      "a viewer that is opened again shows the log as it was logged, whatever was looked for") {
    CallViewer test;
    for (const char* name : {"bob", "Ann", "carla"}) test.log_call(name);
    test.open();
    test.grid().on_heading_click(0);
    test.search("ann");
    CHECK(test.names() == Names{"Ann"});
    test.form().ExitViewer.on_click();
    CHECK(test.grid().headings.get().empty());
    CHECK(test.form().SortList.list.get().empty());
    CHECK(test.grid().rows == 0);
    test.open();
    CHECK(test.names() == Names{"carla", "Ann", "bob"});
    CHECK(test.form().SearchText.text == "");
    CHECK(test.form().SortDown.value == 1);
    CHECK(test.form().SortList.list_index == 0);
    CHECK(test.form().focused() == &test.form().SearchText);
  }

  TEST_CASE("nothing is left of a search that the closing of the viewer has ended") {
    CallViewer test;
    test.log_calls(30000);
    test.open();
    test.search("caller");
    test.form().SearchText.text = "caller 1";
    CHECK(test.form().WorkLabel.caption.get().starts_with("Searching, "));
    test.form().ExitViewer.on_click();
    CHECK(test.form().WorkLabel.caption == "");
    CHECK_FALSE(test.form().WorkTimer.enabled);
    test.wait();
    CHECK(test.take_trace().empty());
    CHECK(test.take_messages().empty());
  }

  TEST_CASE("the first call of the new order is selected, and its texts are shown") {
    CallViewer test;
    for (const char* name : {"Dora", "Ann", "carla"}) test.log_call(name);
    test.open();
    CHECK(test.form().DetailText(2).caption == "carla");
    test.grid().on_heading_click(0);
    test.wait(50);
    CHECK(test.grid().row == 1);
    CHECK(test.form().DetailText(2).caption == "Ann");
    test.grid().select(3);
    CHECK(test.form().DetailText(2).caption == "Dora");
    test.grid().on_heading_click(0);
    test.wait(50);
    CHECK(test.form().DetailText(2).caption == "Dora");
    CHECK(test.grid().row == 1);
    CHECK(test.form().SortDown.value == 1);
  }

  TEST_CASE("a column's calls that are alike stand as they were logged") {
    CallViewer test;
    test.log_call("Ann", "Bath");
    test.log_call("Bob", "Bath");
    test.open();
    test.grid().on_heading_click(2);
    test.wait(50);
    CHECK(test.names() == Names{"Ann", "Bob"});
    for (const char* name : {"Carla", "Dora"}) test.log_call(name, "bath");
    test.log_call("Ed", "Reno");
    test.log_call("Flo", "Alma");
    test.wait();
    CHECK(test.names() == Names{"Flo", "Ann", "Bob", "Carla", "Dora", "Ed"});
    CHECK(test.form().CountLabel.caption == "6 calls");
  }

  TEST_CASE("the search looks into the first column and the last, in any order of the calls") {
    CallViewer test;
    test.log_call({{0, "Ann"}, {13, "Gardening"}});
    test.log_call({{0, "Bob"}, {13, "Cooking"}});
    test.open();
    for (int order = 0; order < 3; ++order) {
      test.search("garden");
      CHECK(test.names() == Names{"Ann"});
      test.search("bob");
      CHECK(test.names() == Names{"Bob"});
      test.search("");
      test.grid().on_heading_click(order == 0 ? 13 : 0);
      test.wait(50);
    }
  }

  TEST_CASE("each column of the list of orders sorts by itself, and by its kind") {
    CallViewer test;
    const auto log = [&](const char* name, const char* date, const char* wait, const char* placed) {
      test.log_call({{0, name}, {9, date}, {10, wait}, {11, placed}});
    };
    log("Ann", "10/1/2025", "00:10:00", "01:00:00 PM");
    log("Bob", "9/30/2025", "02:46:40", "11:00:00 AM");
    log("Cyd", "1/1/2026", "02:46:39", "12:00:00 AM");
    test.open();
    const auto by = [&](int entry) {
      test.form().SortList.select(entry);
      test.wait(50);
      return test.names();
    };
    CHECK(by(1) == Names{"Bob", "Ann", "Cyd"});
    CHECK(by(2) == Names{"Cyd", "Bob", "Ann"});
    CHECK(by(3) == Names{"Ann", "Bob", "Cyd"});
    CHECK(by(7) == Names{"Ann", "Cyd", "Bob"});
    CHECK(by(0) == Names{"Cyd", "Bob", "Ann"});
    CHECK(test.grid().column_widths.size() == 14);
  }

  TEST_CASE("very many calls that come in at once are all shown, and all looked through") {
    CallViewer test;
    test.log_call("first");
    test.open();
    test.log_calls(1000);
    test.wait();
    CHECK(test.grid().rows == 1001);
    CHECK(test.names().front() == "caller 999");
    CHECK(test.names().back() == "first");
    CHECK(test.form().CountLabel.caption == "1,001 calls");
    test.grid().on_heading_click(0);
    test.wait(50);
    test.log_calls(450);
    test.wait();
    CHECK(test.grid().rows == 1451);
    CHECK(std::ranges::is_sorted(test.names()));
    CHECK_FALSE(test.form().WorkTimer.enabled);
  }

  TEST_CASE("how far the reading, the search and the sorting are is shown") {
    CallViewer test;
    test.log_calls(45000);
    test.open();
    CHECK(test.form().WorkLabel.caption == "Reading, 44 %");
    test.wait(2000);
    test.form().SearchText.text = "caller";
    CHECK(test.form().WorkLabel.caption == "Searching, 8 %");
    test.wait(2000);
    test.form().SearchText.text = "";
    test.wait(2000);
    test.form().SortList.select(3);
    bool sorted = false;
    Names shown;
    for (int i = 0; i < 2000 && test.form().WorkTimer.enabled; ++i) {
      const std::string told = test.form().WorkLabel.caption;
      if (shown.empty() || shown.back() != told) shown.push_back(told);
      sorted = sorted || told == "Sorting";
      test.platform.loop.advance(platform::Milliseconds(1));
    }
    CHECK(sorted);
    CHECK(shown.front() == "Reading, 8 %");
    CHECK(shown.back() == "Sorting");
    CHECK(test.form().WorkLabel.caption == "");
    CHECK(test.grid().cell(1, 0) == "caller 0");
  }

  TEST_CASE("rows that the view doesn't have are empty") {
    CallViewer test;
    test.log_call("Ann");
    test.open();
    for (const int row : {-1, 0, 2, 100}) CHECK(test.grid().row_texts(row).empty());
    CHECK(test.grid().row_texts(1).front() == "Ann");
  }

  TEST_CASE("a call that was removed from a sorted view is passed over where others come in") {
    CallViewer test;
    test.log_call("Ann");
    const auto removed = test.log_call("Bob");
    test.log_call("Cyd");
    test.open();
    test.grid().on_heading_click(0);
    test.wait(50);
    test.platform.databases.open(log_path)
        ->open_recordset(std::string(call_log_table))
        ->remove(removed);
    test.log_call("Dora");
    test.wait(5000);
    CHECK(test.grid().row_texts(test.grid().rows).front() == "Dora");
    test.form().SearchText.text = "";
    test.grid().on_heading_click(0);
    test.wait(50);
    CHECK(test.names() == Names{"Dora", "Cyd", "Ann"});
  }

  TEST_CASE("a call that a search doesn't find any more is gone from it, with its texts") {
    CallViewer test;
    test.log_call("Ann", "Bath", "1/5/2026");
    test.open();
    test.wait();
    CHECK(test.form().DayLabel.caption == "Today: 1 call, 0 on air");
    CHECK(test.form().DetailText(4).caption == "Bath");
    test.search("nobody");
    CHECK(test.form().DayLabel.caption == "");
    CHECK(test.form().DetailText(4).caption == "");
    CHECK(test.form().CountLabel.caption == "0 of 1 call");
  }

  TEST_CASE("while the days are counted, none is told yet") {
    CallViewer test;
    test.log_calls(9000);
    test.log_call("Ann", "", "1/5/2026");
    test.open();
    CHECK(test.form().DayLabel.caption == "");
    test.wait();
    CHECK(test.form().DayLabel.caption == "Today: 1 call, 0 on air");
    // The next opening counts anew.
    test.form().ExitViewer.on_click();
    test.open();
    CHECK(test.form().DayLabel.caption == "");
    test.wait();
    CHECK(test.form().DayLabel.caption == "Today: 1 call, 0 on air");
  }
}

}  // namespace
}  // namespace lineweir::test

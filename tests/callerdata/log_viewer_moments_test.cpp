#include <doctest/doctest.h>

#include <algorithm>

#include "callerdata/log_viewer.h"
#include "support/call_viewer.h"
#include "support/obstinate_databases.h"

namespace lineweir::test {
namespace {

using Names = std::vector<std::string>;

// A viewer of a log that can't be read at times.
struct ObstinateViewer : CallViewer {
  ObstinateViewer() { platform.failing_databases.use(databases); }
  ~ObstinateViewer() {
    databases.reading_fails = 0;
    form().unload();
    platform.failing_databases.use(platform.databases);
  }

  ObstinateDatabases databases{platform.databases};
};

void remove_call(CallViewer& test, platform::RowId call) {
  test.platform.databases.open(log_path)->open_recordset(std::string(call_log_table))->remove(call);
}

TEST_SUITE("callerdata/log viewer at odd moments") {
  TEST_CASE("a log that is in use while it is read is read on when it is let go") {
    ObstinateViewer test;
    test.log_call("Ann");
    test.databases.reading_fails = failure_number::database_in_use;
    test.open();
    test.wait();
    CHECK(test.names().empty());
    test.databases.reading_fails = 0;
    test.wait(50);
    CHECK(test.names() == Names{"Ann"});
    CHECK(test.take_trace().empty());
  }

  TEST_CASE("a log that can't be read is told in the trace once, and tried no more") {
    ObstinateViewer test;
    test.log_call("Ann");
    test.databases.reading_fails = failure_number::disk_full;
    test.open();
    CHECK_FALSE(test.form().WorkTimer.enabled);
    test.wait();
    CHECK(test.take_trace() == Names{"DatabaseViewer_WorkTimer_Timer Error - It can't be read."});
  }

  TEST_CASE("a call that is logged while the log is in use comes in when it is let go") {
    ObstinateViewer test;
    test.log_call("Ann");
    test.open();
    test.wait();
    test.log_call("Bob");
    test.databases.reading_fails = failure_number::database_in_use;
    test.wait();
    CHECK(test.grid().rows == 1);
    test.databases.reading_fails = 0;
    test.wait();
    CHECK(test.names() == Names{"Bob", "Ann"});
    CHECK(test.take_trace().empty());
  }

  TEST_CASE("a log that can't be followed is told in the trace once, and followed no more") {
    ObstinateViewer test;
    test.log_call("Ann");
    test.open();
    test.wait();
    test.log_call("Bob");
    test.databases.reading_fails = failure_number::disk_full;
    test.wait(10000);
    CHECK(test.take_trace() == Names{"DatabaseViewer_FollowTimer_Timer Error - It can't be read."});
    CHECK_FALSE(test.form().FollowTimer.enabled);
  }

  TEST_CASE("a log that has gone is told at each opening of the viewer") {
    ScriptedConsole test;
    test.console.Lineweir.Data1.database_name = "gone.mdb";
    for (int opening = 0; opening < 2; ++opening) {
      test.console.Lineweir.ShowDatabaseMenuItem.on_click();
      CHECK(test.take_trace().size() == 1);
      test.console.DatabaseViewer.ExitViewer.on_click();
    }
  }

  TEST_CASE("of a table that is no log nothing is shown but the reason") {
    CallViewer test;
    test.platform.databases.create("other.mdb")
        ->create_table(std::string(call_log_table), {{"Message", 50}});
    test.console.Lineweir.Data1.database_name = "other.mdb";
    test.open();
    CHECK(test.form().CountLabel.caption != "");
    CHECK(test.grid().headings.get().empty());
    CHECK(test.form().SortList.list.get().empty());
    CHECK_FALSE(test.form().ExportButton.enabled);
  }

  TEST_CASE("a viewer that was closed has no rows") {
    CallViewer test;
    test.log_call("Ann");
    test.open();
    test.form().ExitViewer.on_click();
    for (const int row : {-1, 0, 1}) CHECK(test.grid().row_texts(row).empty());
    CHECK(test.take_trace().empty());
  }

  TEST_CASE("a file is held as long as it is shown, and one that is no log not at all") {
    ObstinateViewer test;
    test.log_call("Ann");
    const int before = test.databases.open_files();
    test.open();
    CHECK(test.databases.open_files() == before + 1);
    test.form().ExitViewer.on_click();
    CHECK(test.databases.open_files() == before);
    test.platform.databases.create("other.mdb")
        ->create_table(std::string(call_log_table), {{"Message", 50}});
    test.console.Lineweir.Data1.database_name = "other.mdb";
    test.open();
    CHECK(test.databases.open_files() == before);
  }

  TEST_CASE("when no log is chosen any more, none is shown") {
    CallViewer test;
    test.log_call("Ann");
    test.console.Lineweir.Data1.record_source = std::string(call_log_table);
    test.open();
    CHECK(test.form().Data1.record_source == call_log_table);
    test.console.Lineweir.Data1.database_name = "";
    test.wait();
    CHECK(test.names().empty());
    CHECK(test.form().CountLabel.caption.get().starts_with("No call log is chosen."));
    CHECK_FALSE(test.form().ExportButton.enabled);
  }

  TEST_CASE("an export of a log that isn't shown any more ends without a file") {
    CallViewer test;
    test.log_calls(1000);
    test.open();
    test.wait(50);
    test.platform.dialogs.answer_file("out.csv");
    test.form().ExportButton.on_click();
    CHECK(test.console.log_output.running());
    test.platform.databases.remove(log_path);
    create_log(test.platform);
    test.console.log_viewer.keep_up();
    CHECK_FALSE(test.console.log_output.running());
    test.wait();
    CHECK_FALSE(test.platform.files.exists("out.csv"));
  }

  TEST_CASE("a call in the middle that another program removes goes from the view") {
    CallViewer test;
    const auto removed = test.log_call("Ann", "", "1/5/2026");
    test.log_call("Bob", "", "1/5/2026");
    test.open();
    test.wait();
    CHECK(test.form().DetailText(0).caption == "1/5/2026");
    CHECK(test.form().DayLabel.caption == "Today: 2 calls, 0 on air");
    remove_call(test, removed);
    CHECK(test.grid().row_texts(2).empty());
    test.wait();
    CHECK(test.names() == Names{"Bob"});
    CHECK(test.form().DayLabel.caption == "Today: 1 call, 0 on air");
  }

  TEST_CASE("behind a removed call the selection stays whatever else changes in the log") {
    CallViewer test;
    for (const char* name : {"Ann", "Bob"}) test.log_call(name);
    const auto removed = test.log_call("Cyd");
    test.open();
    remove_call(test, removed);
    test.wait();
    CHECK(test.names() == Names{"Bob", "Ann"});
    test.grid().select(2);
    test.platform.databases.open(log_path)->rename_column(std::string(call_log_table), 13, "Hobby");
    test.wait();
    CHECK(test.grid().row == 2);
  }

  TEST_CASE("the newest call stays selected when others come in above it") {
    CallViewer test;
    test.log_call("Ann");
    test.open();
    CHECK(test.grid().row == 1);
    test.log_call("Bob");
    test.wait();
    CHECK(test.grid().row == 2);
    CHECK(test.form().DetailText(2).caption == "Ann");
  }

  TEST_CASE("the Down key stays at the last call") {
    CallViewer test;
    for (const char* name : {"Ann", "Bob"}) test.log_call(name);
    test.open();
    for (int press = 0; press < 3; ++press) {
      int down = 40;
      test.form().SearchText.on_key_down(down, 0);
    }
    CHECK(test.grid().row == 2);
    CHECK(test.take_trace().empty());
  }

  TEST_CASE("no word is found across the columns of a call") {
    CallViewer test;
    test.log_call({{0, "Ann"}, {1, "Lee Street"}});
    test.open();
    test.search("annlee");
    CHECK(test.names().empty());
    test.search("ann lee");
    CHECK(test.names() == Names{"Ann"});
  }

  TEST_CASE("names that begin alike are put in order by their ends, in any letters") {
    CallViewer test;
    for (const char* name : {"caller 10", "caller 1", "c.", "b\xD0\xB6"}) test.log_call(name);
    test.open();
    test.grid().on_heading_click(0);
    test.wait(50);
    CHECK(test.names() == Names{"b\xD0\xB6", "c.", "caller 1", "caller 10"});
  }

  TEST_CASE("an order that is chosen while another is being made has each call once") {
    CallViewer test;
    test.log_calls(9000);
    test.open();
    test.wait(50);
    test.grid().on_heading_click(0);
    CHECK(test.form().WorkLabel.caption.get().starts_with("Reading, "));
    test.grid().on_heading_click(2);
    test.wait(2000);
    CHECK(test.grid().rows == 9000);
    CHECK(test.form().CountLabel.caption == "9,000 calls");
    CHECK(test.form().WorkLabel.caption == "");
    CHECK(test.take_trace().empty());
  }

  TEST_CASE("without a search the log is read as quickly as before it") {
    CallViewer test;
    test.log_calls(30000);
    test.open();
    test.search("caller");
    test.wait();
    test.form().SearchText.text = "";
    CHECK(test.grid().rows == 20000);
  }

  TEST_CASE("a log that is read from its oldest call ends at a hundred percent") {
    CallViewer test;
    test.log_calls(20000);
    test.open();
    test.form().SortDown.value = 0;
    test.form().SortDown.on_click();
    CHECK(test.form().WorkLabel.caption == "Reading, 100 %");
  }

  TEST_CASE("while the days are counted anew, none is told") {
    CallViewer test;
    test.log_call("Ann", "", "1/5/2026");
    test.log_calls(9000);
    test.log_call("Bob", "", "1/5/2026");
    const auto removed = test.log_call("Cyd", "", "1/5/2026");
    test.open();
    CHECK(test.form().DayLabel.caption == "");
    test.wait();
    CHECK(test.form().DayLabel.caption == "Today: 3 calls, 0 on air");
    remove_call(test, removed);
    while (test.grid().rows != 9002) test.platform.loop.advance(platform::Milliseconds(1));
    CHECK(test.form().DayLabel.caption == "");
    while (test.form().DayLabel.caption == "") {
      test.platform.loop.advance(platform::Milliseconds(1));
      test.grid().select(2);
      test.grid().select(1);
    }
    CHECK(test.form().DayLabel.caption == "Today: 2 calls, 0 on air");
  }

  TEST_CASE("a call without a date has no day, and who didn't wait waited for no time") {
    CallViewer test;
    test.log_call({{0, "Ann"}, {9, "1/5/2026"}, {10, "00:00:00"}});
    test.log_call("Bob");
    test.open();
    test.wait();
    CHECK(test.form().DayLabel.caption == "");
    test.grid().select(2);
    CHECK(test.form().DayLabel.caption == "Today: 1 call, 0 on air, longest wait 00:00:00");
  }
}

}  // namespace
}  // namespace lineweir::test

#include "callerdata/log_import.h"

#include <doctest/doctest.h>

#include <algorithm>

#include "support/call_viewer.h"

namespace lineweir::test {
namespace {

using Texts = std::vector<std::string>;

struct Import : CallViewer {
  Import() { open(); }

  ImportPreviewForm& preview() { return console.ImportPreview; }

  void choose(const std::string& content) {
    platform.files.replace("old.csv", content);
    platform.dialogs.answer_file("old.csv");
    form().ImportButton.on_click();
    wait();
  }
  void import() {
    preview().ImportOk.on_click();
    wait();
  }
};

TEST_SUITE("callerdata/log import") {
  TEST_CASE("a file's calls are shown first and stored when the user says so") {
    Import test;
    test.log_call("Bob");
    test.choose("Caller Name,City\r\nAnn,Salem\r\nJos\xE9,\"Reno, NV\"\r\n");
    REQUIRE(test.preview().visible);
    CHECK(test.preview().PreviewGrid.rows == 2);
    CHECK(test.preview().PreviewGrid.cell(0, 13) == "Sponsor");
    CHECK(test.preview().PreviewGrid.cell(2, 0) == "Jos\xC3\xA9");
    CHECK(test.preview().ResultLabel.caption == "2 calls can be imported.");
    CHECK(logged_rows(test).size() == 1);
    test.import();
    CHECK_FALSE(test.preview().visible);
    CHECK(test.take_messages() == Texts{"Imported 2 calls."});
    const auto rows = logged_rows(test);
    REQUIRE(rows.size() == 3);
    CHECK(rows[1][0] == "Ann");
    CHECK(rows[2][0] == "Jos\xC3\xA9");
    CHECK(rows[2][2] == "Reno, NV");
    CHECK(rows[2][13] == "");
    CHECK(test.names() == Texts{"Jos\xC3\xA9", "Ann", "Bob"});
  }

  TEST_CASE("what the viewer exports can be imported") {
    Import test;
    test.log_call({{0, "Ann"}, {6, "She said \"hello\", twice"}, {13, "Gardening"}});
    test.wait();
    test.platform.dialogs.answer_file("out.csv");
    test.form().ExportButton.on_click();
    test.wait();
    test.choose(*test.platform.files.read("out.csv"));
    CHECK(test.preview().ProblemList.list.get().empty());
    test.preview().HeldCheck.value = 1;
    test.preview().HeldCheck.on_click();
    test.import();
    const auto rows = logged_rows(test);
    REQUIRE(rows.size() == 2);
    CHECK(rows[0] == rows[1]);
  }

  TEST_CASE("what doesn't fit is named by its line, and nothing can be imported then") {
    Import test;
    test.choose("Caller Name,City\r\nAnn,Salem\r\nBob\r\nCarla,\"Reno\"x\r\n");
    CHECK(test.preview().ResultLabel.caption ==
          "2 lines don't fit. Nothing can be imported until all do.");
    const auto& told = test.preview().ProblemList.list.get();
    CHECK(told.at(told.size() - 2) ==
          "Line 3, column 2 \"City\": expected 2 fields as in the first line, and not 1.");
    CHECK(told.back() ==
          "Line 4, column 2 \"City\": expected a separator or the line's end behind the closing "
          "quote.");
    CHECK_FALSE(test.preview().ImportOk.enabled);
    test.import();
    CHECK(logged_rows(test).empty());
  }

  TEST_CASE("without the log's columns nothing fits") {
    Import test;
    test.choose("Ann Smith;Salem\r\nBob Jones;Reno\r\n");
    CHECK(test.preview().ProblemList.list.get() ==
          Texts{"Line 1, column 1 \"Ann Smith\": expected the name of one of the log's columns.",
                "Line 1, column 2 \"Salem\": expected the name of one of the log's columns."});
    CHECK_FALSE(test.preview().ImportOk.enabled);
    CHECK(test.preview().PreviewGrid.rows == 0);
  }

  TEST_CASE("a value that is too long is told and cut, as the log cuts it") {
    Import test;
    test.choose("Caller Name,State\r\nAnn,Commonwealth of Massachusetts\r\n");
    const auto& told = test.preview().ProblemList.list.get();
    CHECK(told.back() == "Line 2: \"State\" is longer than 15 characters and will be cut.");
    CHECK(test.preview().PreviewGrid.cell(1, 3) == "Commonwealth of");
    test.import();
    REQUIRE(logged_rows(test).size() == 1);
    CHECK(logged_rows(test)[0][3] == "Commonwealth of");
  }

  TEST_CASE("a large file is read in slices, and so is a large log") {
    Import test;
    test.log_calls(30000);
    std::string content = "Caller Name\r\n";
    for (int i = 0; i < 120000; ++i) content += "new caller " + std::to_string(i) + "\r\n";
    test.platform.files.replace("old.csv", content);
    test.platform.dialogs.answer_file("old.csv");
    test.form().ImportButton.on_click();
    CHECK(test.preview().ResultLabel.caption.get().starts_with("Looking through the log, "));
    CHECK_FALSE(test.preview().ImportOk.enabled);
    test.platform.loop.advance(platform::Milliseconds(25));
    CHECK(test.preview().ResultLabel.caption.get().starts_with("Reading, "));
    test.wait();
    CHECK(test.preview().ResultLabel.caption == "120,000 calls can be imported.");
    test.import();
    CHECK(logged_rows(test).size() == 150000);
  }

  TEST_CASE("calls that the log holds are counted and left out, unless they are wanted") {
    Import test;
    test.log_call("Ann", "Salem");
    test.log_call("Bob", "Reno");
    const char* file = "Caller Name,City\r\nAnn,Salem\r\nAnn,Salem\r\nBob,Reno\r\nCarla,\r\n";
    test.choose(file);
    CHECK(test.preview().ResultLabel.caption ==
          "2 calls can be imported. 2 calls that the log holds already will be left out.");
    CHECK(test.preview().HeldCheck.visible);
    test.import();
    CHECK(test.take_messages() ==
          Texts{"Imported 2 calls. 2 calls that the log held already were left out."});
    CHECK(logged_rows(test).size() == 4);

    test.choose(file);
    CHECK(test.preview().ResultLabel.caption ==
          "0 calls can be imported. 4 calls that the log holds already will be left out.");
    CHECK_FALSE(test.preview().ImportOk.enabled);
    test.preview().HeldCheck.value = 1;
    test.preview().HeldCheck.on_click();
    CHECK(test.preview().ResultLabel.caption == "4 calls can be imported.");
    test.import();
    CHECK(test.take_messages() == Texts{"Imported 4 calls."});
    CHECK(logged_rows(test).size() == 8);
  }

  TEST_CASE("blank lines are passed over, and texts are cleaned of what nobody can type") {
    Import test;
    test.choose(
        "sep=;\r\nCaller Name;City\r\n\r\n ; \r\n;\r\n\"Ann\r\nSmith\x07\";Salem\r\n   \r\n");
    CHECK(test.preview().ResultLabel.caption == "1 call can be imported.");
    test.import();
    REQUIRE(logged_rows(test).size() == 1);
    CHECK(logged_rows(test)[0][0] == "Ann Smith");
  }

  TEST_CASE("what was exported with a guard is imported without it") {
    Import test;
    const Texts names = {"=HYPERLINK(1)", "+49 30 1234", "-", "@home", "'=x", "'tis", "a;b\tc"};
    for (const std::string& name : names) test.log_call(name);
    test.wait();
    test.platform.dialogs.answer_file("out.csv");
    test.form().ExportButton.on_click();
    test.wait();
    const std::string exported = *test.platform.files.read("out.csv");
    CHECK(exported.find("\r\n'=HYPERLINK(1),") != std::string::npos);
    test.choose(exported);
    // The tab of the last one can't be typed.
    CHECK(test.preview().ResultLabel.caption ==
          "1 call can be imported. 6 calls that the log holds already will be left out.");
  }

  TEST_CASE("cancelling while calls are stored leaves the log as it is or as it is to be") {
    Import test;
    test.choose("Caller Name\r\nAnn\r\n");
    test.preview().ImportOk.on_click();
    test.preview().ImportCancel.on_click();
    CHECK(test.preview().visible);
    CHECK_FALSE(test.preview().ImportCancel.enabled);
    test.wait();
    // The rows in memory were stored at once.
    CHECK_FALSE(test.preview().visible);
    CHECK(test.take_messages() == Texts{"Imported 1 call."});
    CHECK(logged_rows(test).size() == 1);
  }

  TEST_CASE("a log that can't be written is told, and nothing is imported") {
    Import test;
    test.choose("Caller Name\r\nAnn\r\n");
    test.platform.failing_databases.fail(failure_number::disk_full);
    test.import();
    CHECK_FALSE(test.preview().visible);
    CHECK(test.take_messages() ==
          Texts{"There is no room left on the disk for 'calls.lwl'. Nothing was imported."});
    test.platform.failing_databases.fail(0);
    CHECK(logged_rows(test).empty());
    test.choose("Caller Name\r\nAnn\r\n");
    test.import();
    CHECK(logged_rows(test).size() == 1);
  }

  TEST_CASE("a log in whose place another file lies is opened anew for an import") {
    Import test;
    test.log_call("Ann");
    test.platform.databases.remove(log_path);
    create_log(test.platform);
    test.choose("Caller Name\r\nBob\r\n");
    REQUIRE(test.preview().visible);
    test.import();
    CHECK(test.take_messages() == Texts{"Imported 1 call."});
    CHECK(test.names() == Texts{"Bob"});
  }

  TEST_CASE("a log that is gone takes no import, and the reason is told") {
    Import test;
    test.platform.databases.remove(log_path);
    test.choose("Caller Name\r\nBob\r\n");
    CHECK_FALSE(test.preview().visible);
    CHECK(test.take_messages().size() == 1);
    CHECK_FALSE(test.platform.databases.exists(log_path));
  }

  TEST_CASE("a preview ends when another file is put in the place of its log") {
    Import test;
    test.choose("Caller Name\r\nBob\r\n");
    test.platform.databases.remove(log_path);
    create_log(test.platform);
    test.wait();
    CHECK_FALSE(test.preview().visible);
    CHECK(test.take_messages() ==
          Texts{"The call log was moved, deleted or replaced by another file. Nothing was "
                "imported."});
    CHECK(logged_rows(test).empty());
  }

  TEST_CASE("an import waits for a log in use, shows that it does, and can be cancelled") {
    Import test;
    test.choose("Caller Name\r\nBob\r\n");
    test.platform.failing_databases.fail(failure_number::database_in_use);
    test.import();
    test.wait(60000);
    REQUIRE(test.preview().visible);
    CHECK(test.preview().ResultLabel.caption ==
          "Waiting for the log, which another program is writing to");
    CHECK(logged_rows(test).empty());
    bool cancelled = false;
    SUBCASE("freed") { cancelled = false; }
    SUBCASE("cancelled") {
      cancelled = true;
      test.preview().ImportCancel.on_click();
      test.wait();
    }
    test.platform.failing_databases.fail(0);
    test.wait();
    CHECK_FALSE(test.preview().visible);
    CHECK(test.take_messages() == (cancelled ? Texts{} : Texts{"Imported 1 call."}));
    CHECK(logged_rows(test).size() == (cancelled ? 0 : 1));
  }

  TEST_CASE("of very many lines that don't fit the first are named, and all are counted") {
    Import test;
    std::string content = "Caller Name,City\r\n";
    for (int i = 0; i < 2000; ++i) content += "caller\r\n";
    test.choose(content);
    CHECK(test.preview().ResultLabel.caption.get().starts_with("2,000 lines don't fit."));
    CHECK(test.preview().ProblemList.list.get().size() == 501);
    CHECK(test.preview().ProblemList.list.get().back() == "There are more lines like these.");
  }

  TEST_CASE("a file that can't be used is told in one sentence") {
    Import test;
    test.choose("");
    CHECK(test.take_messages() == Texts{"The file is empty."});
    test.choose("\r\n\r\n");
    CHECK(test.take_messages() == Texts{"The file is empty."});
    test.platform.dialogs.answer_file("gone.csv");
    test.form().ImportButton.on_click();
    CHECK(test.take_messages() == Texts{"The file gone.csv can't be read."});
    CHECK_FALSE(test.preview().visible);
  }

  TEST_CASE("a file without calls has nothing to import") {
    Import test;
    test.choose("Caller Name,City\r\n");
    CHECK(test.preview().ResultLabel.caption == "0 calls can be imported.");
    CHECK_FALSE(test.preview().ImportOk.enabled);
  }

  TEST_CASE("a file that doesn't answer is waited for, which is shown, and the console goes on") {
    Import test;
    test.platform.user_files.stall(true);
    test.choose("Caller Name\r\nAnn\r\n");
    REQUIRE(test.preview().visible);
    test.wait(60000);
    CHECK(test.preview().ResultLabel.caption == "Waiting for the file");
    CHECK_FALSE(test.preview().ImportOk.enabled);
    test.log_call("Bob");
    test.wait();
    CHECK(test.names() == Texts{"Bob"});
    SUBCASE("it answers") {
      test.platform.user_files.stall(false);
      test.wait(10);
      CHECK(test.preview().ResultLabel.caption == "1 call can be imported.");
      test.import();
      CHECK(test.take_messages() == Texts{"Imported 1 call."});
    }
    SUBCASE("it is gone by then") {
      test.platform.user_files.stall(false);
      test.platform.files.set_readable("old.csv", false);
      test.wait(10);
      CHECK(test.take_messages() == Texts{"The file old.csv can't be read."});
      CHECK_FALSE(test.preview().loaded());
    }
    SUBCASE("the import is cancelled") {
      test.preview().ImportCancel.on_click();
      CHECK_FALSE(test.preview().loaded());
      CHECK(test.take_messages().empty());
      // Another file, while that one is still out.
      test.platform.user_files.stall(false);
      test.choose("Caller Name\r\nCarla\r\n");
      CHECK(test.preview().ResultLabel.caption == "1 call can be imported.");
    }
    SUBCASE("the program ends") {
      test.console.Lineweir.close();
      CHECK(test.platform.ended);
    }
  }

  TEST_CASE("a file that stops in its middle is waited for there") {
    Import test;
    std::string content = "Caller Name\r\n";
    for (int i = 0; i < 100000; ++i) content += "new caller " + std::to_string(i) + "\r\n";
    test.platform.files.replace("old.csv", content);
    test.platform.dialogs.answer_file("old.csv");
    test.form().ImportButton.on_click();
    test.platform.user_files.stall(true);
    test.wait();
    CHECK(test.preview().ResultLabel.caption == "Waiting for the file");
    test.platform.user_files.stall(false);
    test.wait();
    CHECK(test.preview().ResultLabel.caption == "100,000 calls can be imported.");
  }

  TEST_CASE("cancelling, and closing the viewer, leave the log as it is") {
    Import test;
    test.choose("Caller Name\r\nAnn\r\n");
    test.preview().ImportCancel.on_click();
    CHECK_FALSE(test.preview().loaded());
    test.choose("Caller Name\r\nAnn\r\n");
    test.form().ExitViewer.on_click();
    CHECK_FALSE(test.preview().loaded());
    test.wait();
    CHECK(logged_rows(test).empty());
  }

  TEST_CASE("the file that is imported is asked for with what it may be") {
    Import test;
    test.platform.dialogs.take_asked();
    test.form().ImportButton.on_click();
    const auto asked = test.platform.dialogs.take_asked();
    REQUIRE(asked.size() == 1);
    const auto& question = std::get<platform::FileQuestion>(asked[0]);
    CHECK(question.title == "Import");
    CHECK(question.filter == "CSV Files (*.csv)|*.csv|All Files (*.*)|*.*");
    CHECK(question.shown_title == "Import calls from a CSV file");
    CHECK(question.shown_filter ==
          "CSV files (*.csv)|*.csv|Text files (*.txt)|*.txt|All files (*.*)|*.*");
    CHECK_FALSE(question.for_saving);
    CHECK_FALSE(test.preview().loaded());
  }

  TEST_CASE("the preview tells whose it is and which columns it has, and shows 200 calls") {
    Import test;
    std::string content = "Caller Name\r\n";
    for (int i = 0; i < 300; ++i) content += "caller " + std::to_string(i) + "\r\n";
    test.choose(content);
    ImportPreviewForm& form = test.preview();
    CHECK(form.FileLabel.caption == "old.csv");
    CHECK(form.PreviewGrid.headings.get().size() == 14);
    CHECK(form.PreviewGrid.column_widths.size() == 14);
    CHECK(form.PreviewGrid.shown_columns.front().heading == "Date");
    CHECK(form.PreviewGrid.rows == 200);
    CHECK(form.PreviewGrid.cell(1, 0) == "caller 0");
    CHECK(form.PreviewGrid.cell(200, 0) == "caller 199");
    for (const int row : {-1, 0, 201}) CHECK(form.PreviewGrid.row_texts(row).empty());
    CHECK(form.ResultLabel.caption == "300 calls can be imported.");
    test.import();
    CHECK(logged_rows(test).size() == 300);
  }

  TEST_CASE(
      "another file that is chosen takes the place of the one before with all that was told") {
    Import test;
    test.choose("Caller Name,City\r\nAnn,Salem\r\nBob\r\n");
    CHECK_FALSE(test.preview().ProblemList.list.get().empty());
    test.choose("Caller Name\r\nCyd\r\n");
    CHECK(test.preview().ResultLabel.caption == "1 call can be imported.");
    CHECK(test.preview().ProblemList.list.get().size() == 1);
    CHECK(test.preview().PreviewGrid.rows == 1);
    CHECK(test.preview().HeldCheck.enabled);
    CHECK_FALSE(test.preview().HeldCheck.visible);
    test.import();
    REQUIRE(logged_rows(test).size() == 1);
    // So does one behind an import that was stored with the calls that the log held.
    test.choose("Caller Name\r\nCyd\r\n");
    test.preview().HeldCheck.value = 1;
    test.preview().HeldCheck.on_click();
    test.import();
    test.choose("Caller Name\r\nCyd\r\n");
    CHECK(test.preview().HeldCheck.value == 0);
    CHECK(test.preview().ResultLabel.caption ==
          "0 calls can be imported. 1 call that the log holds already will be left out.");
  }

  TEST_CASE(
      "the focus is on Cancel until calls can be imported, and goes back while they are stored") {
    Import test;
    ImportPreviewForm& form = test.preview();
    test.platform.user_files.stall(true);
    test.choose("Caller Name\r\nAnn\r\n");
    CHECK(form.focused() == &form.ImportCancel);
    CHECK(form.ImportCancel.enabled);
    SUBCASE("by itself") {
      test.platform.user_files.stall(false);
      test.wait(10);
      CHECK(form.focused() == &form.ImportOk);
    }
    SUBCASE("unless the user has put it elsewhere") {
      form.focus(&form.PreviewGrid);
      test.platform.user_files.stall(false);
      test.wait(10);
      CHECK(form.focused() == &form.PreviewGrid);
    }
    test.platform.failing_databases.fail(failure_number::database_in_use);
    form.ImportOk.on_click();
    CHECK(form.focused() == &form.ImportCancel);
    CHECK_FALSE(form.ImportOk.enabled);
    CHECK_FALSE(form.HeldCheck.enabled);
    CHECK(form.ResultLabel.caption == "Storing 1 call");
    // A second click stores nothing twice.
    form.ImportOk.on_click();
    test.platform.failing_databases.fail(0);
    test.wait();
    CHECK(logged_rows(test).size() == 1);
  }

  TEST_CASE("closing the preview is cancelling it") {
    Import test;
    test.choose("Caller Name\r\nAnn\r\n");
    test.preview().close();
    CHECK_FALSE(test.preview().loaded());
    test.wait();
    CHECK(logged_rows(test).empty());
    test.choose("Caller Name\r\nAnn\r\n");
    test.platform.failing_databases.fail(failure_number::database_in_use);
    test.preview().ImportOk.on_click();
    test.preview().close();
    CHECK(test.preview().loaded());
    CHECK(test.preview().ResultLabel.caption == "Cancelling");
    test.wait();
    test.platform.failing_databases.fail(0);
    test.wait();
    CHECK_FALSE(test.preview().loaded());
    CHECK(logged_rows(test).empty());
  }

  TEST_CASE("how far the file and the log are is shown as it goes on") {
    Import test;
    test.log_calls(60000);
    std::string content = "Caller Name\r\n";
    for (int i = 0; i < 300000; ++i) content += "new caller " + std::to_string(i) + "\r\n";
    test.platform.files.replace("old.csv", content);
    test.platform.dialogs.answer_file("old.csv");
    test.form().ImportButton.on_click();
    std::vector<int> reading;
    std::vector<int> looking;
    for (int i = 0; i < 5000 && test.preview().ReadTimer.enabled; ++i) {
      const std::string told = test.preview().ResultLabel.caption;
      const std::string head = told.substr(0, told.find(','));
      const auto percent = std::stoi(told.substr(told.rfind(',') + 1));
      (head == "Reading" ? reading : looking).push_back(percent);
      test.platform.loop.advance(platform::Milliseconds(1));
    }
    for (const auto* percents : {&reading, &looking}) {
      REQUIRE(!percents->empty());
      CHECK(std::ranges::is_sorted(*percents));
      CHECK(percents->front() >= 0);
      CHECK(percents->front() < 100);
      CHECK(percents->back() <= 100);
    }
    CHECK(reading.back() >= 90);
    CHECK(looking.back() == 100);
    CHECK(test.preview().ResultLabel.caption == "300,000 calls can be imported.");
  }

  TEST_CASE("a log that fails while calls are stored is told in the trace too") {
    Import test;
    test.choose("Caller Name\r\nAnn\r\n");
    test.take_trace();
    test.platform.failing_databases.fail(failure_number::disk_full);
    test.import();
    const auto trace = test.take_trace();
    CHECK(std::ranges::count_if(trace, [](const std::string& told) {
            return told.starts_with("ImportPreview_StoreTimer_Timer Error - ");
          }) == 1);
  }

  TEST_CASE("of two calls that were left out, and of one, it is told rightly") {
    Import test;
    test.log_call("Ann");
    test.choose("Caller Name\r\nAnn\r\nBob\r\n");
    test.import();
    CHECK(test.take_messages() ==
          Texts{"Imported 1 call. 1 call that the log held already was left out."});
    // The viewer shows them at once.
    CHECK(test.names() == Texts{"Bob", "Ann"});
  }
}

}  // namespace
}  // namespace lineweir::test

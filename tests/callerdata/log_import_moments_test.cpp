#include <doctest/doctest.h>

#include <algorithm>

#include "callerdata/log_import.h"
#include "support/call_viewer.h"
#include "support/obstinate_databases.h"

namespace lineweir::test {
namespace {

using Texts = std::vector<std::string>;

// An import into a log that can't be read at times, or stores slowly.
struct ObstinateImport : CallViewer {
  ObstinateImport() { platform.failing_databases.use(databases); }
  ~ObstinateImport() {
    databases.reading_fails = 0;
    form().unload();
    platform.failing_databases.use(platform.databases);
  }

  ImportPreviewForm& preview() { return console.ImportPreview; }
  const std::string& result() { return preview().ResultLabel.caption; }

  void choose(const std::string& content) {
    platform.files.replace("old.csv", content);
    platform.dialogs.answer_file("old.csv");
    form().ImportButton.on_click();
  }

  ObstinateDatabases databases{platform.databases};
};

TEST_SUITE("callerdata/log import at odd moments") {
  TEST_CASE("a log that is in use is looked through when it is let go") {
    ObstinateImport test;
    test.log_call("Ann");
    test.open();
    test.databases.reading_fails = failure_number::database_in_use;
    test.choose("Caller Name\r\nAnn\r\nBob\r\n");
    test.wait();
    CHECK(test.preview().loaded());
    CHECK(test.take_messages().empty());
    test.databases.reading_fails = 0;
    test.wait();
    CHECK(test.result() ==
          "1 call can be imported. 1 call that the log holds already will be left out.");
  }

  TEST_CASE("a log that can't be looked through ends the import with the reason") {
    ObstinateImport test;
    test.open();
    test.wait();
    test.databases.reading_fails = failure_number::disk_full;
    test.choose("Caller Name\r\nAnn\r\n");
    test.wait();
    CHECK_FALSE(test.preview().loaded());
    CHECK(test.take_messages() == Texts{"It can't be read."});
    CHECK(test.take_trace() == Texts{"ImportPreview_ReadTimer_Timer Error - It can't be read."});
  }

  TEST_CASE("a log that is taken in use while the file is compared with it ends the import") {
    ObstinateImport test;
    test.log_call("Ann");
    test.open();
    test.platform.user_files.stall(true);
    test.choose("Caller Name\r\nAnn\r\n");
    test.wait(100);
    CHECK_FALSE(test.preview().HeldCheck.visible);
    test.databases.reading_fails = failure_number::database_in_use;
    test.platform.user_files.stall(false);
    test.wait();
    CHECK_FALSE(test.preview().loaded());
    CHECK(test.take_messages() == Texts{"It can't be read."});
  }

  TEST_CASE("how many of the calls are stored is shown, until they are or it is cancelled") {
    ObstinateImport test;
    test.open();
    test.choose("Caller Name\r\nAnn\r\nBob\r\nCyd\r\nDora\r\n");
    test.wait();
    test.preview().ImportOk.on_click();
    test.databases.stored_so_far = 1;
    test.wait();
    CHECK(test.result() == "Storing 4 calls, 25 %");
    test.databases.stored_so_far = 4;
    test.wait();
    CHECK(test.result() == "Storing 4 calls, 100 %");
    test.preview().ImportCancel.on_click();
    test.wait();
    CHECK(test.result() == "Cancelling");
    test.databases.stored_so_far.reset();
    test.wait();
    CHECK_FALSE(test.preview().loaded());
    // The next one can be cancelled too.
    test.choose("Caller Name\r\nAnn\r\n");
    CHECK(test.preview().ImportCancel.enabled);
    CHECK(test.preview().HeldCheck.enabled);
  }

  TEST_CASE("one line that doesn't fit is told as one") {
    ObstinateImport test;
    test.open();
    test.choose("Caller Name,City\r\nAnn\r\nBob,Reno\r\n");
    test.wait();
    CHECK(test.result() == "1 line doesn't fit. Nothing can be imported until all do.");
    CHECK_FALSE(test.preview().ImportOk.enabled);
  }

  TEST_CASE("the calls that the log holds are offered once both have been read, and not before") {
    ObstinateImport test;
    test.log_call("Ann");
    test.open();
    test.choose("Caller Name\r\nAnn\r\n");
    test.wait();
    CHECK(test.preview().HeldCheck.visible);
    test.platform.user_files.stall(true);
    test.choose("Caller Name\r\nAnn\r\n");
    test.wait();
    CHECK_FALSE(test.preview().HeldCheck.visible);
    test.platform.user_files.stall(false);
    test.wait();
    CHECK(test.preview().HeldCheck.visible);
  }

  TEST_CASE("an answer without a file's name imports nothing") {
    ObstinateImport test;
    test.open();
    test.platform.dialogs.answer_file("  ");
    test.form().ImportButton.on_click();
    CHECK_FALSE(test.preview().loaded());
    CHECK(test.take_messages().empty());
  }

  TEST_CASE("calls that are read later stand behind those that are shown") {
    ObstinateImport test;
    test.open();
    std::string content = "Caller Name\r\n";
    for (int i = 0; i < 1000; ++i) {
      content += "caller " + std::to_string(i) + std::string(3000, 'x') + "\r\n";
    }
    int shown = 0;
    int times = 0;
    test.preview().PreviewGrid.on_put_in = [&](int at, int count) {
      CHECK(at == shown + 1);
      shown += count;
      ++times;
    };
    test.choose(content);
    test.wait();
    CHECK(shown == 200);
    CHECK(times > 1);
    CHECK(test.preview().PreviewGrid.rows == 200);
    test.preview().PreviewGrid.on_put_in = nullptr;
  }

  TEST_CASE("headings that don't fit are a line that doesn't") {
    ObstinateImport test;
    test.open();
    test.choose("Caller Name,\"City\"x\r\nAnn,Salem\r\n");
    test.wait();
    CHECK(test.result().starts_with("1 line doesn't fit."));
    CHECK(test.preview().ProblemList.list.get().front().starts_with("Line 1, column 2 "));
  }

  TEST_CASE("the viewer shows what was imported as soon as it is stored") {
    ObstinateImport test;
    test.open();
    test.choose("Caller Name\r\nAnn\r\n");
    test.wait(1500);
    test.preview().ImportOk.on_click();
    while (test.preview().loaded()) test.platform.loop.advance(platform::Milliseconds(1));
    CHECK(test.names() == Texts{"Ann"});
  }

  TEST_CASE("nothing is left of an import that was given up") {
    ObstinateImport test;
    test.open();
    test.choose("Caller Name,City\r\nAnn,Salem\r\nBob\r\n");
    test.wait();
    CHECK_FALSE(test.preview().ProblemList.list.get().empty());
    CHECK(test.databases.batches() == 1);
    test.preview().ImportCancel.on_click();
    CHECK(test.databases.batches() == 0);
    CHECK(test.preview().PreviewGrid.row_texts(1).empty());

    test.platform.user_files.stall(true);
    test.choose("Caller Name\r\nCyd\r\n");
    CHECK(test.preview().ProblemList.list.get().empty());
    test.wait(60000);
    CHECK(test.result() == "Waiting for the file");
    test.preview().ImportCancel.on_click();
    test.choose("Caller Name\r\nCyd\r\n");
    test.wait(100);
    CHECK(test.result() == "Reading, 0 %");
    test.wait(60000);
    test.preview().ImportCancel.on_click();
    test.platform.user_files.stall(false);
    test.log_calls(30000);
    test.choose("Caller Name\r\nCyd\r\n");
    CHECK(test.result().starts_with("Looking through the log, "));
    test.wait();
    CHECK(test.preview().PreviewGrid.cell(1, 0) == "Cyd");
  }

  TEST_CASE("a file that can't be read is told in the trace too") {
    ObstinateImport test;
    test.open();
    test.platform.dialogs.answer_file("gone.csv");
    test.form().ImportButton.on_click();
    CHECK(test.take_messages() == Texts{"The file gone.csv can't be read."});
    CHECK(test.take_trace() ==
          Texts{"ImportPreview_ReadTimer_Timer Error - The file gone.csv can't be read."});
  }
}

}  // namespace
}  // namespace lineweir::test

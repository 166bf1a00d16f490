#include "callerdata/log_import.h"

#include <doctest/doctest.h>

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
    CHECK(std::ranges::find(told, "Line 3: It has 1 field and not 2.") != told.end());
    CHECK(std::ranges::find(told, "Line 4: There are characters behind a closing quote.") !=
          told.end());
    CHECK_FALSE(test.preview().ImportOk.enabled);
    test.import();
    CHECK(logged_rows(test).empty());
  }

  TEST_CASE("without the log's columns nothing fits") {
    Import test;
    test.choose("Ann Smith;Salem\r\nBob Jones;Reno\r\n");
    CHECK(test.preview().ProblemList.list.get() ==
          Texts{"Line 1: The log has no column \"Ann Smith;Salem\"."});
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

  TEST_CASE("a large file is read in slices") {
    Import test;
    std::string content = "Caller Name\r\n";
    for (int i = 0; i < 2000; ++i) content += "caller\r\n";
    test.platform.files.replace("old.csv", content);
    test.platform.dialogs.answer_file("old.csv");
    test.form().ImportButton.on_click();
    CHECK(test.preview().ResultLabel.caption == "Reading, 25 %");
    CHECK_FALSE(test.preview().ImportOk.enabled);
    test.wait();
    CHECK(test.preview().ResultLabel.caption == "2,000 calls can be imported.");
    test.import();
    CHECK(logged_rows(test).size() == 2000);
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
}

}  // namespace
}  // namespace lineweir::test

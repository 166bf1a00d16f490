#include "callerdata/log_output.h"

#include <doctest/doctest.h>

#include "support/call_viewer.h"

namespace lineweir::test {
namespace {

using Texts = std::vector<std::string>;

constexpr const char* headings =
    "Caller Name,Street Address,City,State,ZipCode,PhoneNumber,Comments,Station,Gender,Date,"
    "Time_On_Hold,Time_Placed_On_Air,Time_On_Air,Sponsor\r\n";

struct Output : CallViewer {
  void export_to(const std::string& file) {
    platform.dialogs.answer_file(file);
    form().ExportButton.on_click();
  }
  void print_to(const std::string& file) {
    platform.dialogs.answer_file(file);
    form().PrintButton.on_click();
  }
};

TEST_SUITE("callerdata/log output") {
  TEST_CASE("what is shown is exported as CSV in UTF-8, in the order in which it is shown") {
    Output test;
    test.log_call("Jos\xC3\xA9", "Salem, MA");
    test.log_call("Bob", "Reno");
    test.log_call({{0, "Ann \"Annie\""}, {2, "Salem"}, {7, "KLWR      "}});
    test.open();
    test.grid().on_heading_click(0);
    test.search("salem");
    test.export_to("out.csv");
    test.wait();
    CHECK(test.platform.files.read("out.csv") ==
          std::string(headings) +
              "\"Ann \"\"Annie\"\"\",,Salem,,,,,KLWR,,,,,,\r\n"
              "Jos\xC3\xA9,,\"Salem, MA\",,,,,,,,,,,\r\n");
    CHECK(test.form().WorkLabel.caption == "Exported 2 calls to out.csv");
    CHECK_FALSE(test.form().CancelWork.visible);
  }

  TEST_CASE("the file is asked for, with the log's own name and another extension") {
    Output test;
    test.open();
    test.form().ExportButton.on_click();
    test.form().PrintButton.on_click();
    const auto asked = test.platform.dialogs.take_asked();
    REQUIRE(asked.size() == 2);
    const auto& to_export = std::get<platform::FileQuestion>(asked[0]);
    CHECK(to_export.for_saving);
    CHECK(to_export.title == "Export");
    CHECK(to_export.default_path == "calls.csv");
    CHECK(std::get<platform::FileQuestion>(asked[1]).default_path == "calls.pdf");
    CHECK_FALSE(test.console.log_output.running());
  }

  TEST_CASE("a long export goes on in slices, says how far it is, and can be cancelled") {
    Output test;
    test.log_calls(1000);
    test.open();
    test.wait(50);
    test.platform.files.replace("out.csv", "the old one");
    test.export_to("out.csv");
    CHECK(test.console.log_output.running());
    CHECK(test.form().CancelWork.visible);
    CHECK_FALSE(test.form().ExportButton.enabled);
    test.platform.loop.advance(platform::Milliseconds(2));
    CHECK(test.form().WorkLabel.caption == "Exporting, 40 %");
    test.form().CancelWork.on_click();
    CHECK(test.form().WorkLabel.caption == "Exporting was cancelled.");
    CHECK(test.form().ExportButton.enabled);
    test.wait();
    CHECK(test.platform.files.read("out.csv") == "the old one");
  }

  TEST_CASE("a database isn't overwritten, be it the log or another one") {
    Output test;
    test.log_call("Ann");
    test.platform.databases.create("messages.lwb")->create_table("Messages", {{"Message", 50}});
    test.platform.files.replace("messages.lwb", "its bytes");
    test.open();
    for (const char* file : {log_path, "messages.lwb"}) {
      test.export_to(file);
      CHECK(test.take_messages() == Texts{"The file '" + std::string(file) +
                                          "' is a database and is not overwritten. Choose "
                                          "another name."});
      CHECK_FALSE(test.console.log_output.running());
    }
    CHECK(test.platform.files.read("messages.lwb") == "its bytes");
  }

  TEST_CASE("the files that the engine keeps beside a log aren't overwritten") {
    Output test;
    test.log_call("Ann");
    test.open();
    for (const char* ending : {"-wal", "-shm", "-journal"}) {
      test.export_to(log_path + std::string(ending));
      CHECK(test.take_messages() == Texts{"The file 'calls.lwl" + std::string(ending) +
                                          "' belongs to the call log and is not overwritten. "
                                          "Choose another name."});
    }
  }

  TEST_CASE("the console's own files aren't overwritten") {
    Output test;
    test.console.program.MessageFile = "Hot.txt";
    test.log_call("Ann");
    test.open();
    for (const char* name : {"Writ.inf", "lineweir.ini", "Drafts.csv", "Drafts-3.csv",
                             "LWDebug.txt", "NoName.TXT", "Hot.txt"}) {
      CAPTURE(name);
      test.platform.files.replace(name, "kept");
      test.export_to(name);
      CHECK(test.take_messages() == Texts{"The file '" + std::string(name) +
                                          "' belongs to Lineweir and is not overwritten. Choose "
                                          "another name."});
      // The trace goes on meanwhile.
      CHECK(test.platform.files.read(name)->starts_with("kept"));
    }
  }

  TEST_CASE("cells that a spreadsheet would run are guarded, unless they are wanted raw") {
    Output test;
    test.log_call("=1+1", "-");
    test.open();
    test.export_to("out.csv");
    test.wait();
    CHECK(test.platform.files.read("out.csv") ==
          std::string(headings) + "'=1+1,,'-,,,,,,,,,,,\r\n");
    test.form().RawExport.value = 1;
    test.export_to("out.csv");
    test.wait();
    CHECK(test.platform.files.read("out.csv") == std::string(headings) + "=1+1,,-,,,,,,,,,,,\r\n");
  }

  TEST_CASE("a file that doesn't answer is waited for, which is shown, and can be given up") {
    Output test;
    test.log_calls(1000);
    test.open();
    test.wait(50);
    test.platform.user_files.stall(true);
    test.export_to("out.csv");
    test.wait(60000);
    CHECK(test.form().WorkLabel.caption == "Exporting, waiting for the file");
    SUBCASE("it answers") {
      test.platform.user_files.stall(false);
      test.wait(50);
      CHECK(test.form().WorkLabel.caption == "Exported 1,000 calls to out.csv");
      CHECK(test.platform.files.exists("out.csv"));
    }
    SUBCASE("it turns out to be one that is spared") {
      test.platform.databases.create("out.csv")->create_table("Messages", {{"Message", 50}});
      test.platform.user_files.stall(false);
      test.wait(50);
      CHECK(test.take_messages() ==
            Texts{"The file 'out.csv' is a database and is not overwritten. Choose another name."});
      CHECK_FALSE(test.console.log_output.running());
      CHECK(test.form().ExportButton.enabled);
    }
    SUBCASE("it is given up") {
      test.form().CancelWork.on_click();
      CHECK(test.form().WorkLabel.caption == "Exporting was cancelled.");
      test.platform.user_files.stall(false);
      test.wait();
      CHECK_FALSE(test.platform.files.exists("out.csv"));
    }
  }

  TEST_CASE("closing the viewer ends the export without a file") {
    Output test;
    test.log_calls(1000);
    test.open();
    test.export_to("out.csv");
    test.form().ExitViewer.on_click();
    test.wait();
    CHECK_FALSE(test.platform.files.exists("out.csv"));
  }

  TEST_CASE("printing gives the calls that are shown, their headings and the log's name") {
    Output test;
    test.log_call("Ann");
    test.log_call("Bob");
    test.open();
    test.search("ann");
    test.print_to("out.pdf");
    test.wait();
    const std::string document = *test.platform.files.read("out.pdf");
    CHECK(document.starts_with("Call log calls.lwl\nCaller Name\tStreet Address\t"));
    CHECK(document.find("\tSponsor\nAnn\t") != std::string::npos);
    CHECK(document.find("Bob") == std::string::npos);
    CHECK(test.form().WorkLabel.caption == "Printed 1 call to out.pdf");
  }
}

}  // namespace
}  // namespace lineweir::test

#include "callerdata/log_output.h"

#include <doctest/doctest.h>

#include <algorithm>

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

  TEST_CASE("an export whose last call is still to be written isn't told as whole") {
    Output test;
    test.log_calls(401);
    test.open();
    test.wait(50);
    test.export_to("out.csv");
    test.platform.loop.advance(platform::Milliseconds(2));
    CHECK(test.form().WorkLabel.caption == "Exporting, 99 %");
    test.wait();
    CHECK(test.form().WorkLabel.caption == "Exported 401 calls to out.csv");
  }

  TEST_CASE("an answer without a file's name exports nothing") {
    Output test;
    test.open();
    test.export_to("  ");
    CHECK_FALSE(test.console.log_output.running());
    CHECK(test.take_messages().empty());
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
                             "Drafts-20.csv", "LWDebug.txt", "NoName.TXT", "Hot.txt"}) {
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
    test.wait(100);
    CHECK(test.form().WorkLabel.caption == "Exporting, 0 %");
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
      CHECK(test.form().WorkLabel.caption == "");
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

  TEST_CASE("the questions for the files tell what is to be done") {
    Output test;
    test.open();
    test.platform.dialogs.take_asked();
    test.form().ExportButton.on_click();
    test.form().PrintButton.on_click();
    const auto asked = test.platform.dialogs.take_asked();
    REQUIRE(asked.size() == 2);
    const auto& to_export = std::get<platform::FileQuestion>(asked[0]);
    CHECK(to_export.filter == "CSV Files (*.csv)|*.csv|All Files (*.*)|*.*");
    CHECK(to_export.shown_title == "Export the calls shown to a CSV file");
    const auto& to_print = std::get<platform::FileQuestion>(asked[1]);
    CHECK(to_print.for_saving);
    CHECK(to_print.title == "Print");
    CHECK(to_print.filter == "PDF Files (*.pdf)|*.pdf|All Files (*.*)|*.*");
    CHECK(to_print.shown_title == "Print the calls shown to a PDF file");
  }

  TEST_CASE("the name that is offered is the log's with another extension, wherever points stand") {
    Output test;
    const auto offered = [&](const std::string& log) {
      test.platform.databases.create(log)->create_table(std::string(call_log_table),
                                                        new_log_columns("User"));
      test.console.Lineweir.Data1.database_name = log;
      test.open();
      test.platform.dialogs.take_asked();
      test.form().ExportButton.on_click();
      return std::get<platform::FileQuestion>(test.platform.dialogs.take_asked().at(0))
          .default_path;
    };
    CHECK(offered("logs.2026/calls") == "logs.2026/calls.csv");
    CHECK(offered("logs.2026/calls.mdb") == "logs.2026/calls.csv");
    CHECK(offered("C:\\logs.old\\calls") == "C:\\logs.old\\calls.csv");
    CHECK(offered(".calls") == ".calls.csv");
    CHECK(offered("a.b.mdb") == "a.b.csv");
  }

  TEST_CASE("a file in another folder is told by its name alone") {
    Output test;
    test.log_call("Ann");
    test.open();
    test.export_to("/tmp/deep/out.csv");
    test.wait();
    CHECK(test.form().WorkLabel.caption == "Exported 1 call to out.csv");
    test.print_to("C:\\deep\\out.pdf");
    test.wait();
    CHECK(test.form().WorkLabel.caption == "Printed 1 call to out.pdf");
  }

  TEST_CASE("while calls are exported nothing else is begun, and all is possible again behind it") {
    Output test;
    test.log_calls(1000);
    test.open();
    test.wait(50);
    Button* const buttons[] = {&test.form().ExportButton, &test.form().PrintButton,
                               &test.form().ImportButton};
    test.export_to("out.csv");
    CHECK(test.form().WorkLabel.caption == "Exporting, 0 %");
    for (const Button* button : buttons) CHECK_FALSE(button->enabled);
    CHECK(test.form().OutputTimer.enabled);
    // A key that presses the button all the same asks for no other file.
    test.platform.dialogs.take_asked();
    test.form().PrintButton.on_click();
    CHECK(test.platform.dialogs.take_asked().empty());
    test.wait();
    for (const Button* button : buttons) CHECK(button->enabled);
    CHECK_FALSE(test.form().OutputTimer.enabled);
    CHECK_FALSE(test.form().CancelWork.visible);
    test.form().CancelWork.on_click();
    CHECK(test.form().WorkLabel.caption == "Exported 1,000 calls to out.csv");
  }

  TEST_CASE("a call that was removed meanwhile is left out of what is exported") {
    Output test;
    test.log_call("Ann");
    const auto removed = test.log_call("Bob");
    test.log_call("Cyd");
    test.open();
    test.export_to("out.csv");
    test.platform.databases.open(log_path)
        ->open_recordset(std::string(call_log_table))
        ->remove(removed);
    test.wait();
    const std::string exported = *test.platform.files.read("out.csv");
    CHECK(std::ranges::count(exported, '\n') == 3);
    CHECK(exported.find("Bob") == std::string::npos);
  }
}

}  // namespace
}  // namespace lineweir::test

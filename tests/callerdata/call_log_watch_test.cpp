#include "callerdata/call_log_watch.h"

#include <doctest/doctest.h>

#include "support/call_log_file.h"
#include "support/scripted_console.h"

namespace lineweir::test {
namespace {

using Texts = std::vector<std::string>;

struct WatchedLog : ScriptedConsole {
  WatchedLog() { choose_log(*this); }

  void end_call(const std::string& name) {
    console.lines.CallerData(0).set(CallerField::CallerName, name);
    console.Lineweir.LineName(0).caption = name;
    console.call_log.log(0);
    pass(1000);
  }
  void fail(int number) { platform.failing_databases.fail(number); }
  void pass(int milliseconds) { platform.loop.advance(platform::Milliseconds(milliseconds)); }
};

const std::string in_use =
    "The file 'calls.lwl' is in use by another program. Finished calls are kept and go there by "
    "themselves as soon as they can. Close the program that holds it.";

TEST_SUITE("callerdata/call log watch") {
  TEST_CASE("an outage is told once, and the next one again") {
    WatchedLog test;
    test.fail(failure_number::database_in_use);
    for (const char* name : {"Ann", "Bob", "Carla"}) test.end_call(name);
    test.pass(60000);
    CHECK(test.take_messages() == Texts{in_use});
    CHECK(logged_rows(test).empty());
    const Label& waiting = test.console.Lineweir.LogWaiting;
    CHECK(waiting.visible);
    CHECK(waiting.caption == "Call log waiting: 3 calls");

    test.fail(0);
    test.pass(1000);
    CHECK_FALSE(waiting.visible);
    const auto rows = logged_rows(test);
    REQUIRE(rows.size() == 3);
    CHECK(rows[0][0] == "Ann");
    CHECK(rows[2][0] == "Carla");

    test.fail(failure_number::database_in_use);
    test.end_call("David");
    CHECK(test.take_messages() == Texts{in_use});
  }

  TEST_CASE("another reason in the same outage is told too, and neither again") {
    WatchedLog test;
    test.fail(failure_number::database_in_use);
    test.end_call("Ann");
    test.fail(failure_number::disk_full);
    test.end_call("Bob");
    test.fail(failure_number::database_in_use);
    test.end_call("Carla");
    CHECK(test.take_messages().size() == 2);
  }

  TEST_CASE("an outage that goes on is told again by the next run") {
    platform::ScriptedPlatform platform;
    platform.failing_databases.fail(failure_number::database_in_use);
    std::vector<std::string> messages;
    for (int run = 0; run < 2; ++run) {
      messages.clear();
      Console console(platform.services());
      console.messages.on_shown = [&](const std::string& text) { messages.push_back(text); };
      console.startup.Main("");
      console.Lineweir.Data1.database_name = log_path;
      if (run == 0) {
        console.lines.CallerData(0).set(CallerField::City, "Salem");
        console.call_log.log(0);
      }
      platform.loop.advance(platform::Milliseconds(1000));
      CHECK(messages == Texts{in_use});
      platform.restart();
    }
    create_log(platform);
    platform.failing_databases.fail(0);
    platform.loop.advance(platform::Milliseconds(1000));
    CHECK(platform.databases.rows(log_path, call_log_table).size() == 1);
  }

  TEST_CASE("calls that would not outlive the machine are told too") {
    WatchedLog test;
    test.platform.journal.set_trouble("The calls can't be kept in /settings: No space left.");
    test.end_call("Ann");
    CHECK(test.take_messages().empty());
    test.fail(failure_number::database_in_use);
    test.end_call("Bob");
    test.end_call("Carla");
    CHECK(test.take_messages() ==
          Texts{in_use,
                "The calls can't be kept in /settings: No space left. They wait in memory, and are "
                "lost if the machine is switched off before their log can be written."});
  }

  TEST_CASE("a log that was deleted is not made again, and another file in its place is told") {
    WatchedLog test;
    test.end_call("Ann");
    test.platform.databases.remove(log_path);
    test.end_call("Bob");
    CHECK_FALSE(test.platform.databases.exists(log_path));
    CHECK(
        test.take_messages() ==
        Texts{"The call log 'calls.lwl' has been moved or deleted. Finished calls are kept and go "
              "there by themselves as soon as they can. Put it back, or choose a log with "
              "Options, Database Path."});
    create_log(test.platform);
    test.pass(1000);
    const auto rows = logged_rows(test);
    REQUIRE(rows.size() == 1);
    CHECK(rows[0][0] == "Bob");
    CHECK(
        test.take_messages() ==
        Texts{"The call log 'calls.lwl' was replaced by another file. Calls go into that one from "
              "now on."});
  }

  TEST_CASE("calls that wait go to the log that is chosen instead, if the user wants it") {
    for (const bool wanted : {true, false}) {
      WatchedLog test;
      test.end_call("Ann");
      test.platform.databases.remove(log_path);
      test.end_call("Bob");
      test.platform.dialogs.answer_file("other.mdb");
      test.platform.dialogs.answer_question(true);
      test.platform.dialogs.answer_question(wanted);
      // The title of the user's field differs.
      test.console.Lineweir.CaptionLabel(user_column).caption = "Sponsor";
      test.platform.databases.create("other.mdb")
          ->create_table("Caller Records", new_log_columns("Hobby"));
      test.console.Lineweir.DatabasePathMenuItem.on_click();
      test.pass(1000);
      const auto asked = test.platform.dialogs.take_asked();
      REQUIRE(asked.size() == 3);
      CHECK(std::get<platform::YesNoQuestion>(asked[2]).text ==
            "Calls wait for the log 'calls.lwl', which can't be written. Put them into "
            "'other.mdb' instead?");
      const auto rows = test.platform.databases.rows("other.mdb", call_log_table);
      CHECK(rows.size() == (wanted ? 1 : 0));
      CHECK(test.console.Lineweir.LogWaiting.visible == !wanted);
    }
  }

  TEST_CASE("every reason comes with something to do") {
    const auto text = [](int number) { return outage_text({"calls.mdb", number, "Reason."}); };
    const std::string kept =
        "Reason. Finished calls are kept and go there by themselves as soon as they can. ";
    CHECK(text(failure_number::disk_full) == kept + "Make room on the disk.");
    CHECK(text(failure_number::database_not_found) ==
          kept + "Put it back, or choose a log with Options, Database Path.");
    CHECK(text(failure_number::database_damaged) ==
          kept + "Choose a log with Options, Database Path.");
  }

  TEST_CASE("a log that was replaced is shown anew at once, and what is told then is told once") {
    WatchedLog test;
    test.end_call("Ann");
    test.console.Lineweir.ShowDatabaseMenuItem.on_click();
    CHECK(test.console.DatabaseViewer.DBGrid1.rows == 1);
    test.platform.databases.remove(log_path);
    create_log(test.platform);
    test.end_call("Bob");
    CHECK(test.take_messages() == Texts{"The call log 'calls.lwl' was replaced by another file. "
                                        "Calls go into that one from now on."});
    CHECK(test.console.DatabaseViewer.DBGrid1.cell(1, 0) == "Bob");
  }

  TEST_CASE("a journal that has trouble is told once, and again when it has had none between") {
    WatchedLog test;
    test.fail(failure_number::database_in_use);
    test.end_call("Ann");
    CHECK(test.take_messages() == Texts{in_use});
    for (int i = 0; i < 2; ++i) {
      test.platform.journal.set_trouble("No space left.");
      test.end_call("Bob");
      test.end_call("Cyd");
      CHECK(test.take_messages().size() == 1);
      test.platform.journal.set_trouble("");
      test.end_call("Dora");
      CHECK(test.take_messages().empty());
    }
  }
}

}  // namespace
}  // namespace lineweir::test

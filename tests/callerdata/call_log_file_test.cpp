#include "callerdata/call_log_file.h"

#include <doctest/doctest.h>

#include "forms/call_log_columns.h"
#include "support/call_log_file.h"
#include "support/scripted_console.h"

namespace lineweir::test {
namespace {

using Texts = std::vector<std::string>;

constexpr const char* type_mismatch_of_log =
    "The title of the User definable field in the database (Sponsor) does not match the title of "
    "the user definable field in Lineweir (User).  Do you wish to change Lineweir to match?";

void choose(ScriptedConsole& test, std::optional<std::string> file) {
  test.platform.dialogs.answer_file(std::move(file));
  test.console.Lineweir.DatabasePathMenuItem.on_click();
}

const std::string& database_name(ScriptedConsole& test) {
  return test.console.Lineweir.Data1.database_name;
}

// A file with a table of the log's name and these columns.
void make_file(ScriptedConsole& test, const std::string& name,
               const std::vector<platform::DatabaseColumn>& columns) {
  test.platform.databases.create(name)->create_table(std::string(call_log_table), columns);
}

// An engine that can use no file.
class RefusingDatabases final : public platform::DatabaseEngine {
 public:
  explicit RefusingDatabases(Failure failure) : failure_(std::move(failure)) {}
  std::unique_ptr<platform::Database> open(const std::string&) override { throw failure_; }
  std::unique_ptr<platform::Database> create(const std::string&) override { throw failure_; }
  bool is_database(const std::string&) override { return true; }

 private:
  Failure failure_;
};

// What is said when the user chooses a file that the engine refuses so.
Texts told_when_refused(const Failure& failure) {
  platform::ScriptedPlatform platform;
  RefusingDatabases databases(failure);
  Console console(platform.services(platform.files, databases));
  Texts messages;
  console.messages.on_shown = [&](const std::string& text) { messages.push_back(text); };
  console.startup.Main("");
  messages.clear();
  console.Lineweir.Data1.database_name = "present.mdb";
  platform.dialogs.answer_file("other.mdb");
  console.Lineweir.DatabasePathMenuItem.on_click();
  CHECK(console.Lineweir.Data1.database_name == "present.mdb");
  return messages;
}

TEST_SUITE("callerdata/call log file") {
  TEST_CASE("a log that a program was killed in while it made it is made when it is chosen") {
    ScriptedConsole test;
    make_file(test, "calls.mdb", {});
    test.platform.databases.find("calls.mdb")->tables.clear();
    choose(test, "calls.mdb");
    CHECK(test.take_messages().empty());
    CHECK(database_name(test) == "calls.mdb");
    CHECK(test.platform.databases.find("calls.mdb")->tables.contains(std::string(call_log_table)));
  }

  TEST_CASE("a file with other tables than a log's is told and left as it is") {
    ScriptedConsole test;
    test.platform.databases.create("other.mdb")->create_table("Other", {});
    choose(test, "other.mdb");
    CHECK(test.take_messages() == Texts{"The file holds no table \"Caller Records\"."});
    CHECK(database_name(test).empty());
    CHECK(test.platform.databases.find("other.mdb")->tables.size() == 1);
  }

  TEST_CASE("whatever is wrong with a file is told in one sentence, and the log in use stays") {
    const std::string sentence = "The file 'other.mdb' can't be used.";
    for (const int number : {failure_number::not_a_database, failure_number::database_read_only,
                             failure_number::disk_full, failure_number::database_damaged,
                             failure_number::database_in_use, failure_number::database_io}) {
      CAPTURE(number);
      CHECK(told_when_refused({number, sentence}) == Texts{sentence});
    }
  }

  TEST_CASE("a database of the older kind is told with the way to bring its table in") {
    const Failure older(failure_number::older_database_kind,
                        "The file 'old.mdb' is a database of the older Access kind.");
    CHECK(told_when_refused(older) ==
          Texts{"The file 'old.mdb' is a database of the older Access kind and can't be the log, "
                "but its table \"Caller Records\" can be brought in as CSV: Show Database, "
                "Import."});
  }

  TEST_CASE("the dialog begins at the present file, with databases shown") {
    ScriptedConsole test;
    test.console.Lineweir.Data1.database_name = "present.mdb";
    choose(test, std::nullopt);
    const auto asked = test.platform.dialogs.take_asked();
    REQUIRE(asked.size() == 1);
    const auto& question = std::get<platform::FileQuestion>(asked[0]);
    CHECK(question.title == "Open");
    CHECK(question.filter == "All Files (*.*)|*.*|Access Database Files (*.mdb)|*.mdb");
    CHECK(question.filter_index == 2);
    CHECK(question.default_path == "present.mdb");
    CHECK(question.may_be_new);
    CHECK_FALSE(question.for_saving);
  }

  TEST_CASE("a cancelled dialog leaves everything as it was") {
    ScriptedConsole test;
    choose_log(test);
    choose(test, std::nullopt);
    CHECK(database_name(test) == log_path);
    CHECK(test.take_messages().empty());
    CHECK(test.take_trace().empty());
  }

  TEST_CASE("a file that doesn't exist is made, with the columns of a log in their order") {
    ScriptedConsole test;
    test.console.Lineweir.CaptionLabel(user_column).caption = " Sponsor ";
    choose(test, "new.mdb");
    CHECK(database_name(test) == "new.mdb");
    CHECK(test.console.Lineweir.Data1.record_source == "Caller Records");
    const auto columns =
        test.platform.databases.open("new.mdb")->table_columns(std::string(call_log_table));
    CHECK(columns == new_log_columns("Sponsor"));
    CHECK(columns.size() == 14);
    CHECK(columns[5] == platform::DatabaseColumn{"PhoneNumber", 15});
    CHECK(columns[13] == platform::DatabaseColumn{"Sponsor", 100});
    // Nothing was asked, since the titles are the same.
    CHECK(test.platform.dialogs.take_asked().size() == 1);
    CHECK(test.take_messages().empty());
  }

  TEST_CASE("the next call goes into the file that was chosen") {
    ScriptedConsole test;
    choose_log(test);
    choose(test, "other.mdb");
    test.console.lines.CallerData(0).set(CallerField::City, "Peoria");
    test.console.call_log.log(0);
    CHECK(logged_rows(test).empty());
    CHECK(test.platform.databases.rows("other.mdb", call_log_table).size() == 1);
  }

  TEST_CASE("where the user's field has another title, Yes takes the file's into the console") {
    ScriptedConsole test;
    create_log(test.platform);
    DisplayDataForm& options = test.console.DisplayOptionForm;
    options.CheckItem(user_column).value = 1;
    options.List1.list = Texts{"City", "User"};
    test.platform.dialogs.answer_question(true);
    choose(test, log_path);

    const auto asked = test.platform.dialogs.take_asked();
    REQUIRE(asked.size() == 2);
    CHECK(std::get<platform::YesNoQuestion>(asked[1]).text == type_mismatch_of_log);
    CHECK(test.console.Lineweir.CaptionLabel(user_column).caption == "Sponsor");
    CHECK(options.CheckItem(user_column).caption == "Sponsor");
    CHECK(options.List1.list.get() == Texts{"City", "Sponsor"});
    CHECK(database_name(test) == log_path);
  }

  TEST_CASE("No keeps the file in use and leaves the two titles different") {
    ScriptedConsole test;
    create_log(test.platform);
    test.platform.dialogs.answer_question(false);
    choose(test, log_path);
    CHECK(database_name(test) == log_path);
    CHECK(test.console.Lineweir.CaptionLabel(user_column).caption == "User");
    CHECK(test.platform.databases.open(log_path)->table_columns("Caller Records")[13].name ==
          "Sponsor");
  }

  TEST_CASE("titles are compared without the blanks around them, and with their case") {
    ScriptedConsole test;
    create_log(test.platform);
    test.console.Lineweir.CaptionLabel(user_column).caption = "  Sponsor ";
    choose(test, log_path);
    CHECK(test.platform.dialogs.take_asked().size() == 1);
    test.console.Lineweir.CaptionLabel(user_column).caption = "sponsor";
    choose(test, log_path);
    CHECK(test.platform.dialogs.take_asked().size() == 2);
  }

  TEST_CASE("a file that is no call log is refused in one sentence and the old log stays in use") {
    ScriptedConsole test;
    choose_log(test);
    auto columns = new_log_columns("User");
    std::swap(columns[1], columns[2]);
    make_file(test, "swapped.mdb", columns);
    columns = new_log_columns("User");
    columns.pop_back();
    make_file(test, "short.mdb", columns);
    test.platform.databases.create("other.mdb")->create_table("Messages", {{"Message", 254}});

    const std::string not_a_log = "The file's table \"Caller Records\" is not that of a call log: ";
    choose(test, "swapped.mdb");
    CHECK(test.take_messages() == Texts{not_a_log + "its column 2 should be \"Street Address\"."});
    choose(test, "short.mdb");
    CHECK(test.take_messages() == Texts{not_a_log + "its column 14 should be the user's field."});
    CHECK(test.take_trace().size() == 2);
    choose(test, "other.mdb");
    CHECK(test.take_messages() == Texts{"The file holds no table \"Caller Records\"."});
    CHECK(test.take_trace() == Texts{"Lineweir_DatabasePathMenuItem_Click Error - The file holds "
                                     "no table \"Caller Records\"."});

    CHECK(database_name(test) == log_path);
    test.console.lines.CallerData(0).set(CallerField::City, "Peoria");
    test.console.call_log.log(0);
    CHECK(logged_rows(test).size() == 1);
  }

  TEST_CASE("a log can't be made whose user's field has the name of another column") {
    ScriptedConsole test;
    choose_log(test);
    test.console.Lineweir.CaptionLabel(user_column).caption = "CITY";
    choose(test, "new.mdb");
    CHECK(test.take_messages().size() == 1);
    CHECK(test.take_trace().at(0).starts_with("Lineweir_CreateDatabase Error - "));
    CHECK(database_name(test) == log_path);
    CHECK_FALSE(test.platform.databases.exists("new.mdb"));
  }

  TEST_CASE("CreateDatabase never touches a file that exists") {
    ScriptedConsole test;
    choose_log(test);
    test.console.lines.CallerData(0).set(CallerField::City, "Peoria");
    test.console.call_log.log(0);
    CHECK_FALSE(test.console.call_log_file.CreateDatabase(log_path));
    CHECK(test.take_trace().at(0).starts_with("Lineweir_CreateDatabase Error - "));
    CHECK(logged_rows(test).size() == 1);
  }

  TEST_CASE("renaming the user's field renames the column of the open file") {
    ScriptedConsole test;
    choose_log(test);
    test.platform.dialogs.answer_input("Topic");
    test.platform.dialogs.answer_question(true);
    test.console.DisplayOptionForm.UserRename.on_click();
    CHECK(test.platform.databases.open(log_path)->table_columns("Caller Records")[13].name ==
          "Topic");
    CHECK(test.console.Lineweir.CaptionLabel(user_column).caption == "Topic");

    // Rows go on being logged, and choosing the file again asks nothing.
    test.console.lines.CallerData(0).set(CallerField::UserField, "weather");
    test.console.call_log.log(0);
    CHECK(logged_rows(test).at(0)[13].starts_with("weather"));
    test.platform.dialogs.take_asked();
    choose(test, log_path);
    CHECK(test.platform.dialogs.take_asked().size() == 1);
  }

  TEST_CASE("a column that can't be renamed is told, and the field keeps its title") {
    ScriptedConsole test;
    choose_log(test);
    const std::string before = test.console.Lineweir.CaptionLabel(user_column).caption;
    test.platform.dialogs.answer_input("Topic");
    test.platform.dialogs.answer_question(true);
    test.platform.failing_databases.fail(failure_number::disk_full);
    test.console.DisplayOptionForm.UserRename.on_click();
    const std::string why = "There is no room left on the disk for 'calls.lwl'.";
    CHECK(test.take_messages() == Texts{why + " The field keeps its title."});
    CHECK(test.take_trace() == Texts{"DisplayOptionForm_UserRename_Click Error - " + why});
    CHECK(test.console.Lineweir.CaptionLabel(user_column).caption == before);
  }

  TEST_CASE("a stored file that can't be used is told at the start, and nothing is logged") {
    SettingsRecord record;
    record.DatabasePath = "gone.mdb";
    ScriptedConsole test("D", encode_settings(record));
    CHECK(test.take_messages() == Texts{"The Selected Database File for logging caller information "
                                        "cannot be found!"});
    CHECK(database_name(test) == "");
    test.console.lines.CallerData(0).set(CallerField::City, "Peoria");
    test.console.call_log.log(0);
    CHECK_FALSE(test.platform.databases.exists("gone.mdb"));
    // The next start looks for it again.
    CHECK(test.console.settings.collect().DatabasePath == "gone.mdb");
    choose(test, "new.mdb");
    CHECK(test.console.settings.collect().DatabasePath == "new.mdb");
  }

  TEST_CASE("a stored file that is no log says why, and nothing is logged") {
    ScriptedConsole test;
    make_file(test, "odd.mdb", {{"A", 1}});
    test.console.call_log_file.use_stored("odd.mdb", "Lineweir_SetUserProfile");
    CHECK(test.take_messages().size() == 1);
    CHECK(test.take_trace().at(0).starts_with("Lineweir_SetUserProfile Error - "));
    CHECK(database_name(test) == "");
  }

  TEST_CASE("a stored file that is in use or on a full disk stays, and the calls wait for it") {
    ScriptedConsole test;
    create_log(test.platform);
    int number = failure_number::database_in_use;
    SUBCASE("in use") {}
    SUBCASE("full disk") { number = failure_number::disk_full; }
    test.platform.failing_databases.fail(number);
    test.console.call_log_file.use_stored(log_path, "Lineweir_Form_Load");
    CHECK(test.take_messages().empty());
    CHECK(database_name(test) == log_path);
    test.console.lines.CallerData(0).set(CallerField::City, "Peoria");
    test.console.call_log.log(0);
    test.platform.failing_databases.fail(0);
    test.platform.loop.advance(platform::Milliseconds(1000));
    CHECK(logged_rows(test).size() == 1);
  }

  TEST_CASE("a stored file that is a log is used without a question") {
    ScriptedConsole test;
    create_log(test.platform);
    test.console.call_log_file.use_stored(log_path, "Lineweir_Form_Load");
    CHECK(database_name(test) == log_path);
    CHECK(test.console.Lineweir.Data1.record_source == "Caller Records");
    CHECK(test.platform.dialogs.take_asked().empty());
  }

  TEST_CASE("the log is asked for as a file that may be new") {
    ScriptedConsole test;
    test.platform.dialogs.take_asked();
    test.console.Lineweir.DatabasePathMenuItem.on_click();
    const auto asked = test.platform.dialogs.take_asked();
    REQUIRE(asked.size() == 1);
    const auto& question = std::get<platform::FileQuestion>(asked[0]);
    CHECK(question.title == "Open");
    CHECK(question.may_be_new);
    CHECK_FALSE(question.for_saving);
    CHECK(question.shown_title == "Choose or create the call log");
    CHECK(question.shown_filter == "Call logs (*.mdb)|*.mdb|All files (*.*)|*.*");
  }
}

}  // namespace
}  // namespace lineweir::test

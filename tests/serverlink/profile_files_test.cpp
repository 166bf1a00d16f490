#include "serverlink/profile_files.h"

#include <string>

#include "clocks/plan_builder.h"
#include "support/call_log_file.h"
#include "support/profile_blocks.h"

namespace lineweir::test {
namespace {

const std::string morning_file =
    encode_show_plan(plan_of("06:00:00", "09:00:00", {{"06:30:00", "News"}}));

struct FilesDesk : ScriptedConsole {
  FilesDesk() { platform.files.replace("/shows/morning.txt", morning_file); }

  void name_plan(const std::string& path) { EditedProfile(console).field(5, path).apply(); }
  void name_log(const std::string& path) { EditedProfile(console).field(6, path).apply(); }
  // The plan that was open before still is.
  bool plan_stays() const {
    return console.show_plan.TheDataFileName == "NoName.TXT" &&
           console.show_plan.plan == ShowPlan{};
  }
};

TEST_SUITE("serverlink/profile files: the show plan") {
  TEST_CASE("the plan of a profile is opened, wherever it lies") {
    FilesDesk desk;
    desk.name_plan("/shows/morning.txt");
    CHECK(desk.console.show_plan.TheDataFileName == "/shows/morning.txt");
    CHECK(desk.console.show_plan.plan.ShowTimes(3).trimmed() == "06:30:00");
    CHECK(desk.console.show_plan.plan.ShowTexts(3).trimmed() == "News");
    CHECK(desk.take_messages().empty());
    desk.name_plan("NONAME.txt");
    CHECK(desk.plan_stays());
  }

  TEST_CASE(
      "a file that holds anything but a plan is not opened, nor written when a plan is saved") {
    const std::string letter = "Dear Ann, thank you for the call.";
    for (const std::string& content :
         {letter, std::string(553, 'W'), morning_file + "\n", std::string(31, ' ') + letter,
          std::string("SQLite format 3"), std::string()}) {
      FilesDesk desk;
      desk.platform.files.replace("/home/letter", content);
      desk.name_plan("/home/letter");
      CHECK(desk.plan_stays());
      CHECK(desk.take_messages() ==
            std::vector<std::string>{"The Selected Show Data File /home/letter is no show plan!"});
      desk.console.show_plan.save_plan({});
      CHECK(desk.platform.files.read("/home/letter") == content);
    }
  }

  TEST_CASE("a file that can't be read is no plan") {
    FilesDesk desk;
    desk.platform.files.set_readable("/shows/morning.txt", false);
    desk.name_plan("/shows/morning.txt");
    CHECK(desk.plan_stays());
    CHECK(desk.take_messages().size() == 1);
  }

  TEST_CASE("a new plan is begun in the console's own folder only") {
    FilesDesk desk;
    for (const char* path :
         {"/shows/evening.txt", "../evening.txt", "shows\\evening.txt", "c:a.txt", ".evening.txt",
          ".txt", "evening", "evening.mdb", "LWDEBUG.TXT", "Writ.inf", "Drafts.csv"}) {
      CAPTURE(path);
      desk.name_plan(path);
      CHECK_FALSE(desk.platform.files.exists(path));
      CHECK(desk.plan_stays());
      CHECK(desk.take_messages() ==
            std::vector<std::string>{std::string("The Selected Show Data File ") + path +
                                     " cannot be found!"});
      // The user finds it again where there is such a file.
      CHECK(fields_of(desk.console)[4] == path);
    }
    desk.name_plan("Evening.TXT");
    CHECK(desk.platform.files.read("Evening.TXT") == "");
    CHECK(desk.console.show_plan.TheDataFileName == "Evening.TXT");
    CHECK(desk.take_messages().empty());
  }

  TEST_CASE("a path that is longer than its field is refused") {
    FilesDesk desk;
    const std::string path = "/shows/" + std::string(90, 'x') + ".txt";
    desk.platform.files.replace(path, morning_file);
    desk.name_plan(path);
    CHECK(desk.plan_stays());
    CHECK(fields_of(desk.console)[4] == "NoName.TXT");
    CHECK(desk.take_trace().at(0).starts_with("Lineweir_SetUserProfile Error - The path has 101"));
  }

  TEST_CASE("the plan stays while it is in the editor") {
    FilesDesk desk;
    desk.console.Lineweir.ShowData.on_click();
    REQUIRE(desk.console.Form2.visible);
    desk.name_plan("/shows/morning.txt");
    CHECK(desk.plan_stays());
  }

  TEST_CASE("the open plan is read anew") {
    FilesDesk desk;
    desk.name_plan("/shows/morning.txt");
    desk.platform.files.replace("/shows/morning.txt",
                                encode_show_plan(plan_of("05:00:00", "09:00:00")));
    desk.name_plan("/shows/morning.txt");
    CHECK(desk.console.show_plan.plan == plan_of("05:00:00", "09:00:00"));
  }
}

TEST_SUITE("serverlink/profile files: the call log") {
  TEST_CASE("the log of a profile is opened") {
    FilesDesk desk;
    create_log(desk.platform);
    desk.name_log(log_path);
    CHECK(desk.console.Lineweir.Data1.database_name == log_path);
    CHECK(desk.console.call_log.chosen());
    CHECK(desk.take_messages().empty());
  }

  TEST_CASE("a log that isn't there is told and not made, and the rest of the profile holds") {
    FilesDesk desk;
    choose_log(desk);
    EditedProfile(desk.console).field(6, "gone.mdb").field(47, "12").apply();
    CHECK(desk.take_messages() ==
          std::vector<std::string>{
              "The Selected Database File for logging caller information cannot be found!"});
    CHECK(desk.console.Lineweir.Data1.database_name == "");
    CHECK_FALSE(desk.platform.databases.exists("gone.mdb"));
    CHECK(fields_of(desk.console)[5] == "gone.mdb");
    CHECK(desk.console.clock_state.DelayOffset == 12);
  }

  TEST_CASE("a database without the log's table isn't touched") {
    FilesDesk desk;
    desk.platform.databases.create("other.db")->create_table("Letters", {{"To", 50}});
    const auto before = desk.platform.databases.find("other.db")->changes;
    desk.name_log("other.db");
    CHECK_FALSE(desk.console.call_log.chosen());
    CHECK(desk.platform.databases.find("other.db")->changes == before);
    CHECK(desk.take_messages().size() == 1);
  }

  TEST_CASE("a path that is longer than its field is refused, and the log stays") {
    FilesDesk desk;
    choose_log(desk);
    desk.name_log(std::string(101, 'x'));
    CHECK(desk.console.Lineweir.Data1.database_name == log_path);
    CHECK(desk.take_trace().at(0).starts_with("Lineweir_SetUserProfile Error - The path has 101"));
  }
}

}  // namespace
}  // namespace lineweir::test

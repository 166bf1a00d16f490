#include "practice/practice_show.h"

#include <doctest/doctest.h>

#include "practice/practice_plan.h"
#include "practice/practice_setup.h"
#include "practice/practice_world.h"
#include "state/settings_record.h"
#include "support/scripted_console.h"

namespace lineweir::practice {
namespace {

using std::chrono::minutes;
using std::chrono::seconds;

// A console for practice on a workstation without anything real, started, with its level asked for.
struct Practice {
  Practice() {
    console.messages.on_shown = [this](const std::string& text) { messages.push_back(text); };
    console.startup.Main("D");
    show.seed = [] { return std::uint64_t{11}; };
    show.on_news = [this](const std::string& text) { news = text; };
    show.begin();
  }

  void pass(Moment time) { platform.loop.advance(time); }
  void start(int level = 0) {
    show.level_form.choices()[static_cast<std::size_t>(level)]->value = true;
    if (level != 0) show.level_form.EasyLevel.value = false;
    show.level_form.StartButton.on_click();
  }
  char letter(int line) { return world.port().box().lines().letter(line); }
  int line_with(std::string_view letters) {
    for (int line = 0; line < PracticeBox::line_count; ++line) {
      if (letters.find(letter(line)) != std::string_view::npos) return line;
    }
    return -1;
  }
  std::string now_of(int row) { return show.score_form.RowNow(row).caption; }
  std::string verdict_of(int row) { return show.score_form.RowVerdict(row).caption; }
  std::string before_of(int row) { return show.score_form.RowBefore(row).caption; }

  // A show by one who answers everybody, puts him on air at once and lets him talk.
  void play(Moment time) {
    for (Moment left = time; left > Moment{0} && show.runs(); left -= seconds(1)) {
      const int rings = line_with("RS");
      if (rings >= 0 && line_with("NC") < 0) console.Lineweir.OnHybrid1(rings).on_click();
      pass(seconds(1));
    }
  }

  platform::ScriptedPlatform platform;
  PracticeWorld world{platform.services(), "/console"};
  Console console{world.services()};
  PracticeShow show{console, world.port()};
  std::vector<std::string> messages;
  std::string news;
};

TEST_SUITE("practice/show") {
  TEST_CASE("the console begins on the practice port, with log, plan and list of its own") {
    Practice practice;
    CHECK(practice.show.level_form.visible);
    CHECK(practice.console.Lineweir.PortOn.checked);
    CHECK(practice.console.Lineweir.Shape1.fill_color == color_green);
    CHECK(practice.console.Lineweir.Data1.database_name == "Calls.mdb");
    CHECK(practice.console.program.MessageFile == "MESSAGES.LWB");
    CHECK(practice.messages.empty());
    // Nothing real was touched.
    CHECK_FALSE(practice.platform.comm1.is_open());
    CHECK(practice.platform.comm1.take_writes().empty());
    CHECK_FALSE(practice.console.Lineweir.Port.enabled);
    CHECK_FALSE(practice.console.Lineweir.RemotePort.enabled);
    CHECK_FALSE(practice.console.Lineweir.DatabasePathMenuItem.enabled);
    CHECK_FALSE(practice.console.Lineweir.Clock.enabled);
    CHECK_FALSE(practice.console.Lineweir.SyncTimeMenu.enabled);
    CHECK_FALSE(practice.console.Lineweir.Line20Mode.enabled);
    CHECK_FALSE(practice.console.Lineweir.PassiveMode.enabled);
  }

  TEST_CASE("nobody logs in, which would leave the practice port") {
    Practice practice;
    practice.start();
    int code = 118;
    practice.console.Lineweir.on_key_down(code, 0);
    CHECK_FALSE(practice.console.LoginForm.visible);
    CHECK(practice.console.Lineweir.PortOn.checked);
    REQUIRE(practice.messages.size() == 1);
    CHECK(practice.messages[0] == "That command or line is not available at this time!");
  }

  TEST_CASE("a show runs for the level's time, with its plan, and ends with the page") {
    Practice practice;
    practice.start(0);
    CHECK(practice.show.runs());
    CHECK_FALSE(practice.show.level_form.visible);
    CHECK(practice.console.show_plan.plan == plan_of(levels[0], 10 * 3600));
    CHECK(practice.console.show_plan.TheDataFileName == "Plan.txt");
    practice.play(minutes(5) - seconds(1));
    CHECK(practice.show.runs());
    CHECK_FALSE(practice.show.score_form.visible);
    practice.pass(seconds(2));
    CHECK_FALSE(practice.show.runs());
    CHECK(practice.show.score_form.visible);
    CHECK(practice.now_of(0) == "5:00");
    CHECK(practice.show.score_form.RowName(1).caption == "Callers answered");
    CHECK(practice.now_of(1) != "0 of 0");
    CHECK(practice.now_of(2) != "0");
    CHECK(practice.before_of(1) == "");
    CHECK(practice.news.find("Callers answered: " + practice.now_of(1)) != std::string::npos);
    CHECK(practice.messages.empty());
    // Everybody has gone.
    practice.pass(seconds(5));
    CHECK(practice.line_with("RSHPONCLK") < 0);
  }

  TEST_CASE("the second show is compared with the first of its level") {
    Practice practice;
    practice.start(0);
    practice.pass(minutes(5));
    const std::string first = practice.now_of(1);
    CHECK(first.starts_with("0 of "));
    CHECK(practice.now_of(6) != "0");
    practice.show.score_form.AgainButton.on_click();
    CHECK(practice.show.level_form.visible);
    CHECK(practice.show.level_form.LastLabel.caption.get().find(first) != std::string::npos);
    practice.start(0);
    practice.play(minutes(6));
    CHECK(practice.before_of(1) == first);
    CHECK(practice.verdict_of(1) == "better");
    CHECK(practice.verdict_of(6) == "better");
    // Another level has no last time.
    practice.show.score_form.CloseButton.on_click();
    practice.console.Lineweir.PracticeMenu.on_click();
    practice.start(2);
    practice.pass(minutes(10));
    CHECK(practice.before_of(1) == "");
  }

  TEST_CASE("it can be ended at any time, by the menu or the band") {
    Practice practice;
    practice.start(1);
    CHECK(practice.show.band.ShowButton.caption == "End Sho&w");
    CHECK(practice.console.Lineweir.PracticeMenu.caption == "End Pra&ctice Show");
    practice.pass(seconds(70));
    SUBCASE("menu") { practice.console.Lineweir.PracticeMenu.on_click(); }
    SUBCASE("band") { practice.show.band.ShowButton.on_click(); }
    CHECK(practice.show.score_form.visible);
    CHECK(practice.now_of(0) == "1:10");
    CHECK(practice.show.band.ShowButton.caption == "Ne&w Show");
    CHECK(practice.show.band.ShowLabel.caption == "No show is running.");
    CHECK(practice.platform.files.exists("Results.csv"));
    practice.pass(minutes(10));
    CHECK(practice.now_of(0) == "1:10");
  }

  TEST_CASE("a show in which nobody has called yet isn't kept") {
    Practice practice;
    practice.start(1);
    practice.pass(seconds(1));
    practice.show.band.ShowButton.on_click();
    CHECK(practice.show.score_form.visible);
    CHECK_FALSE(practice.platform.files.exists("Results.csv"));
  }

  TEST_CASE("the band tells where the show is and what the caller at the handset says") {
    Practice practice;
    practice.start(0);
    CHECK(practice.show.band.ShowLabel.caption ==
          "Easy show. Segment 1: 1:30 left; 5:00 to the end.");
    practice.pass(seconds(5));
    CHECK(practice.show.band.WordsLabel.caption == "");
    practice.show.band.RoleButton.on_click();
    CHECK(practice.console.Lineweir.ScreenerMode.checked);
    CHECK(practice.show.band.RoleButton.caption == "&Go On as Host");
    practice.console.Lineweir.OnHybrid1(0).on_click();
    practice.pass(seconds(1));
    CHECK(practice.letter(0) == 'P');
    CHECK(practice.show.band.WordsLabel.caption.get().starts_with("Line 1 says: \""));
    CHECK(practice.news == practice.show.band.WordsLabel.caption.get());
    // The window that may cover the band says it too, as long as he is there.
    practice.console.caller_data.show_for_line(0);
    practice.pass(seconds(1));
    CHECK(practice.console.Form4.caption ==
          "Caller Data - " + practice.show.band.WordsLabel.caption.get());
    practice.console.Lineweir.NextButton.on_click();
    practice.pass(seconds(1));
    CHECK(practice.console.Form4.caption == "Caller Data - Line 1");
    practice.show.band.RoleButton.on_click();
    CHECK(practice.console.Lineweir.StudioMode.checked);
    practice.pass(seconds(100));
    CHECK(practice.show.band.ShowLabel.caption.get().find("Break 1: ") != std::string::npos);
  }

  TEST_CASE("one person screens and hosts a caller by the console's own keys") {
    Practice practice;
    practice.start(0);
    practice.pass(seconds(5));
    MainForm& form = practice.console.Lineweir;
    practice.show.band.RoleButton.on_click();
    form.OnHybrid1(0).on_click();
    practice.pass(seconds(1));
    CHECK(form.LineStatus(0).caption == "");
    form.NextButton.on_click();
    practice.pass(seconds(1));
    // With nobody else ready he is the next caller.
    CHECK(form.LineStatus(0).caption.get() == "Next");
    practice.show.band.RoleButton.on_click();
    form.OnHybrid1(0).on_click();
    practice.pass(seconds(1));
    CHECK(form.LineStatus(0).caption == "On Air");
  }

  TEST_CASE("the look of the real console is taken over, and nothing that leads anywhere") {
    SettingsRecord real;
    real.CommPort = connection_socket;
    real.PortState = true;
    real.RemoteState = true;
    real.DatabasePath = "/real/calls.mdb";
    real.ShowDataFile = "/real/plan.txt";
    real.MessageFile = "/real/list.lwb";
    real.ServerHost = "studio";
    real.UserName = "anna";
    real.UserPassword = "x";
    real.Line20On = true;
    real.GreyScreenOn = true;
    real.WindowWidth = 12345;
    const auto bytes = practice_settings(encode_settings(real));
    REQUIRE(bytes.has_value());
    const SettingsRecord mine = *decode_settings(*bytes);
    CHECK(mine.GreyScreenOn);
    CHECK(mine.WindowWidth == 12345);
    CHECK(mine.CommPort == 1);
    CHECK_FALSE(mine.PortState);
    CHECK_FALSE(mine.RemoteState);
    CHECK_FALSE(mine.Line20On);
    for (const std::string* text : {&mine.DatabasePath, &mine.ShowDataFile, &mine.MessageFile,
                                    &mine.ServerHost, &mine.UserName, &mine.UserPassword}) {
      CHECK(*text == "");
    }
    CHECK_FALSE(practice_settings(std::nullopt).has_value());
    CHECK_FALSE(practice_settings("x").has_value());
  }
}

}  // namespace
}  // namespace lineweir::practice

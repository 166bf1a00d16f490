// What stands on the screen is what would be painted now: nothing is stale until the mouse comes
// by.

#include <doctest/doctest.h>

#include <QImage>
#include <QScreen>
#include <functional>
#include <random>
#include <string>
#include <vector>

#include "pixels.h"
#include "shown_console.h"

namespace lineweir {
namespace {

struct StaleDesk : test::ShownConsole {
  // The pixels that are on the screen now.
  QImage on_screen() { return window().screen()->grabWindow(window().winId()).toImage(); }

  void paint_all() {
    canvas().update();
    come_to_rest();
  }

  // Where the screen differs from what would be painted now; empty where it doesn't.
  QRect stale() {
    come_to_rest();
    const QImage shown = on_screen();
    paint_all();
    const QImage fresh = on_screen();
    REQUIRE(shown.size() == fresh.size());
    return test::differing_place(shown, fresh);
  }

  // The line of light on a key of the next caller.
  bool lit(const Control& key) {
    come_to_rest();
    const ElementWidget& found = widget(key);
    const QPoint corner = found.mapTo(&window(), QPoint(0, 0));
    return test::pixels_of(on_screen().copy(QRect(corner, found.size())), metal_theme.next_light) >
           20;
  }

  void pass(int milliseconds) { platform.loop.advance(platform::Milliseconds(milliseconds)); }
};

TEST_SUITE("desktop/stale") {
  TEST_CASE("the next caller's keys light up with the choice and go dark with it") {
    StaleDesk desk;
    CHECK_FALSE(desk.lit(desk.form().NextButton));
    desk.box_sends("R03");
    desk.box_sends("S03");
    desk.pass(2000);
    REQUIRE(desk.console.lines.TheNextCall == 3);
    CHECK(desk.lit(desk.form().NextButton));
    CHECK(desk.lit(desk.form().NextToConfButton));
    desk.box_sends("N03");
    desk.pass(200);
    CHECK_FALSE(desk.lit(desk.form().NextButton));
    CHECK_FALSE(desk.lit(desk.form().NextToConfButton));
  }

  TEST_CASE("a producer's keys have no light") {
    StaleDesk desk;
    desk.form().MitelPhone1.on_click();
    desk.box_sends("R03");
    desk.box_sends("S03");
    desk.pass(2000);
    REQUIRE(desk.lit(desk.form().NextButton));
    desk.form().ScreenerMode.on_click();
    CHECK_FALSE(desk.lit(desk.form().NextButton));
    CHECK_FALSE(desk.lit(desk.form().NextToConfButton));
    desk.form().StudioMode.on_click();
    CHECK(desk.lit(desk.form().NextButton));
  }

  TEST_CASE("without the green bar the keys light up all the same") {
    StaleDesk desk;
    desk.form().NextBarDisable.on_click();
    desk.box_sends("R03");
    desk.box_sends("S03");
    desk.pass(2000);
    CHECK(desk.lit(desk.form().NextButton));
  }

  TEST_CASE("whatever the line, the user and the clock do") {
    StaleDesk desk;
    MainForm& form = desk.form();
    Console& console = desk.console;
    std::mt19937 random(13);
    const auto pick = [&](int count) { return static_cast<int>(random() % unsigned(count)); };
    const auto choose = [](MenuItem& item) {
      return [&item] {
        if (item.on_click) item.on_click();
      };
    };
    const auto redefine = [&] { console.layout.RedefineScreen(); };
    struct Action {
      std::string name;
      std::function<void()> run;
    };
    const std::string letters = "FRSHPOENCLKYBX";
    const std::vector<Action> actions = {
        {"status",
         [&] {
           const char letter = letters[static_cast<std::size_t>(pick(int(letters.size())))];
           desk.box_sends(std::string(1, letter) + "0" + std::to_string(pick(10)));
         }},
        {"status again", [&] { desk.box_sends("S0" + std::to_string(pick(10))); }},
        {"time", [&] { desk.pass(50 + pick(3000)); }},
        {"talent", choose(form.StudioMode)},
        {"producer", choose(form.ScreenerMode)},
        {"passive", choose(form.PassiveMode)},
        {"phone 1", choose(form.MitelPhone1)},
        {"no bar", choose(form.NextBarDisable)},
        {"names", choose(form.DimLineNumMenu)},
        {"numbers", choose(form.StudioLinNumMenu)},
        {"grey", choose(form.GreyScreenOption)},
        {"rebuild", redefine},
        {"digits", choose(form.DigiClock)},
        {"time clock", choose(form.TimeClockMenuItem)},
        {"event clock", choose(form.EventClockMenu)},
        {"text grows", choose(form.TextGrowToggle)},
        {"menus", [&] { form.OptionsButton.on_click(); }},
        {"reset", choose(form.ResetLineweirSize)},
        {"hybrid",
         [&] {
           console.program.MainHybridOn = !console.program.MainHybridOn;
           console.modes.SetEnabledDisabled();
         }},
        {"lines",
         [&] {
           console.layout.set_line_count(8 + pick(13));
           redefine();
         }},
        {"column",
         [&] {
           const int column = pick(column_count - 2);
           CheckBox& check = console.DisplayOptionForm.CheckItem(column);
           check.value = 1 - check.value;
           if (check.on_click) check.on_click();
         }},
        {"press",
         [&] {
           Picture& key = form.OnHybrid1(pick(8));
           if (key.on_mouse_down) key.on_mouse_down(left_button, 0);
         }},
        {"release",
         [&] {
           for (int row = 0; row < 8; ++row) {
             Picture& key = form.OnHybrid1(row);
             if (key.on_mouse_up) key.on_mouse_up(left_button, 0);
           }
         }},
        {"size",
         [&] {
           form.width = form.width + 150 * (pick(9) - 4);
           form.height = form.height + 150 * (pick(9) - 4);
           redefine();
         }},
        {"name", [&] { form.LineName(pick(8)).caption = std::string(unsigned(pick(40)), 'm'); }},
        {"message",
         [&] {
           form.Text1.back_color = form.Text1.back_color == color_red ? color_white : color_red;
         }},
        {"lamp",
         [&] {
           form.Shape1.fill_color = form.Shape1.fill_color == color_red ? color_green : color_red;
         }},
    };
    std::string done;
    for (int step = 0; step < 300; ++step) {
      const Action& action = actions[static_cast<std::size_t>(pick(int(actions.size())))];
      done = action.name;
      action.run();
      CAPTURE(step);
      CAPTURE(done);
      const QRect differing = desk.stale();
      CAPTURE(differing.x());
      CAPTURE(differing.y());
      CAPTURE(differing.width());
      CAPTURE(differing.height());
      REQUIRE(differing.isEmpty());
    }
  }
}

}  // namespace
}  // namespace lineweir

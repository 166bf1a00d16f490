#include "screen/window_size.h"

#include <doctest/doctest.h>

#include <vector>

#include "support/rows_of.h"

namespace lineweir::test {
namespace {

TEST_SUITE("screen/window_size: design size") {
  TEST_CASE("each row count has its size, with and without the menu bar") {
    ScriptedConsole desk;
    Console& console = desk.console;
    MainForm& form = console.Lineweir;
    for (const bool menus : {true, false}) {
      if (form.Options.visible != menus) form.OptionsButton.on_click();
      for (int rows = 1; rows <= 20; ++rows) {
        CAPTURE(rows);
        form.window_state = window_maximised;
        console.window.SetToRoot(rows);
        CHECK(form.window_state == int{window_normal});
        CHECK(form.width == (rows <= 10 ? 9420 : 12000));
        int height = menus ? 8881 : 8595;
        if (rows == 17) height = menus ? 8865 : 8580;
        if (rows <= 10) height = rows * 315 + (menus ? 4105 : 3820);
        CHECK(form.height == height);
      }
    }
  }

  TEST_CASE("without a number it is that of the rows now shown") {
    ScriptedConsole desk;
    Console& console = desk.console;
    show_rows(console, 7);
    console.Lineweir.width = 20000;
    console.window.SetToRoot(0);
    CHECK(console.Lineweir.width == 9420);
    CHECK(console.Lineweir.height == 7 * 315 + 4105);
    show_rows(console, 0);
    CHECK(console.Lineweir.height == 7255);
    console.Lineweir.OptionsButton.on_click();
    console.window.SetToRoot(0);
    CHECK(console.Lineweir.height == 7255);
  }

  TEST_CASE("a reset brings the form back at design size, behind a standby window") {
    ScriptedConsole desk;
    Console& console = desk.console;
    MainForm& form = console.Lineweir;
    std::vector<bool> standby;
    struct Watch : FormWatch {
      Watch(Form& watched, std::vector<bool>& shown) : FormWatch(watched), shown_(shown) {}
      void changed(Element& element, PropertyId property) override {
        if (&element == &watched_form() && property == PropertyId::Visible) {
          shown_.push_back(watched_form().visible);
        }
      }
      std::vector<bool>& shown_;
    };
    const Watch watch(console.Standby, standby);
    resize(console, 14130, 10882);
    form.window_state = window_maximised;
    form.ResetLineweirSize.on_click();
    CHECK(form.width == 9420);
    CHECK(form.height == 7255);
    CHECK(form.window_state == int{window_normal});
    CHECK(form.visible);
    CHECK(standby == std::vector<bool>{true, false});
    CHECK(form.DataRow(0).left == 1260);
    CHECK(form.Dial.left == 4200);
  }
}

TEST_SUITE("screen/window_size: stored size") {
  TEST_CASE("the next rebuild gives the window its stored size and state, once") {
    ScriptedConsole desk;
    Console& console = desk.console;
    MainForm& form = console.Lineweir;
    console.window.restore({13655, 18840, window_maximised});
    console.layout.RedefineScreen();
    CHECK(form.width == 18840);
    CHECK(form.height == 13655 + 285);
    CHECK(form.window_state == int{window_maximised});
    CHECK(form.DataRow(0).left == 2520);
    resize(console, 9420, 7255);
    CHECK(form.width == 9420);
  }

  TEST_CASE("a stored size outweighs the design size of another row count") {
    ScriptedConsole desk;
    Console& console = desk.console;
    console.window.restore({8595, 24000, window_normal});
    console.layout.set_line_count(20);
    console.layout.RedefineScreen();
    CHECK(console.Lineweir.width == 24000);
    CHECK(console.Lineweir.DataRow(19).left == 2620);
  }

  TEST_CASE("while the socket is started anew the window stays as the user has it") {
    ScriptedConsole desk;
    Console& console = desk.console;
    MainForm& form = console.Lineweir;
    console.window.restore({9000, 18840, window_maximised});
    console.window.RestartingSocket = true;
    console.layout.RedefineScreen();
    CHECK(form.width == 9420);
    CHECK(form.window_state == int{window_normal});
    CHECK_FALSE(console.window.RestartingSocket);
    console.layout.RedefineScreen();
    CHECK(form.width == 9420);
  }
}

TEST_SUITE("screen/window_size: resizing") {
  TEST_CASE("the tick rebuilds and fills the width boxes, unless their form is open") {
    ScriptedConsole desk;
    Console& console = desk.console;
    MainForm& form = console.Lineweir;
    const TextBox& width = console.DisplayOptionForm.WidthText(3);
    form.width = 18840;
    form.on_resize();
    form.timResize.tick();
    CHECK_FALSE(form.timResize.enabled);
    CHECK(form.DataRow(0).left == 2520);
    CHECK(width.text == "3400");

    console.DisplayOptionForm.show();
    form.width = 9420;
    form.on_resize();
    form.timResize.tick();
    CHECK(form.DataRow(0).left == 1260);
    CHECK(width.text == "3400");
  }

  TEST_CASE("a minimised window isn't rebuilt") {
    ScriptedConsole desk;
    MainForm& form = desk.console.Lineweir;
    form.width = 18840;
    form.window_state = window_minimised;
    form.on_resize();
    form.timResize.tick();
    CHECK_FALSE(form.timResize.enabled);
    CHECK(form.DataRow(0).left == 1260);
  }

  TEST_CASE("a hundred resizes are one rebuild") {
    ScriptedConsole desk;
    Console& console = desk.console;
    MainForm& form = console.Lineweir;
    desk.platform.loop.advance(platform::Milliseconds(1000));
    for (int i = 1; i <= 100; ++i) {
      form.width = 9420 + 30 * i;
      form.on_resize();
      desk.platform.loop.advance(platform::Milliseconds(4));
      CHECK(form.DataRow(0).left == 1260);
    }
    desk.platform.loop.advance(platform::Milliseconds(500));
    CHECK(form.DataRow(0).width == 7590 * 12420 / 9420);
  }

  TEST_CASE("a resize by the program doesn't start the timer") {
    ScriptedConsole desk;
    Console& console = desk.console;
    desk.platform.loop.advance(platform::Milliseconds(1000));
    console.DisplayOptionForm.LineCheck(0).value = 0;
    console.row_choice.RefreshVisibleRows();
    console.window.SetToRoot(0);
    CHECK_FALSE(console.Lineweir.timResize.enabled);
  }
}

}  // namespace
}  // namespace lineweir::test

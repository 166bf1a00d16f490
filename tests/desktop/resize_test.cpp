// The main window's size in the hands of the user and of the program.

#include <doctest/doctest.h>

#include "desktop/shown_console.h"
#include "desktop/twips.h"
#include "forms/layout.h"
#include "support/rebuild_count.h"

namespace lineweir {
namespace {

using test::RebuildCount;
using test::ShownConsole;

struct ResizeDesk : ShownConsole {
  ResizeDesk() { pass(600); }

  // Lets console time pass, and the windows work.
  void pass(int milliseconds) {
    platform.loop.advance(platform::Milliseconds(milliseconds));
    settle();
  }

  // The user drags the window's corner to where the form has this size in pixels.
  void drag(int width, int height) {
    window().resize(width, height + canvas().y());
    settle();
  }
};

TEST_SUITE("desktop/resizing") {
  TEST_CASE("the user's new size is rebuilt at the next tick") {
    ResizeDesk desk;
    REQUIRE_FALSE(desk.form().timResize.enabled);
    desk.drag(942, 698);
    CHECK(desk.form().timResize.enabled);
    CHECK(desk.form().DataRow(0).left == 1260);
    // Letters and lines go with the boxes.
    CHECK(desk.canvas().zoom() == doctest::Approx(1));
    desk.pass(500);
    CHECK(desk.canvas().zoom() > 1.4);
    CHECK(desk.form().DataRow(0).left == 1890);
    CHECK(desk.widget(desk.form().DataRow(0)).x() == pixel_edge(1890));
  }

  TEST_CASE("the size of a user's profile stretches what stands on the form") {
    ResizeDesk desk;
    desk.console.profile_window.take(9000, 14130, window_normal, 1);
    desk.settle();
    CHECK(desk.canvas().width() == pixel_edge(14130));
    desk.pass(500);
    CHECK(desk.form().DataRow(0).left == 1890);
  }

  TEST_CASE("sizes that the program gives the form start no rebuild") {
    ResizeDesk desk;
    MainForm& form = desk.form();
    SUBCASE("another design size") { desk.console.window.SetToRoot(20); }
    SUBCASE("the setup button") { form.OptionsButton.on_click(); }
    SUBCASE("a reset") { form.ResetLineweirSize.on_click(); }
    SUBCASE("more rows") {
      desk.console.layout.set_line_count(20);
      desk.console.layout.RedefineScreen();
    }
    SUBCASE("sizes between two pixels") {
      form.width = 12007;
      form.height = 9004;
    }
    desk.settle();
    CHECK(desk.canvas().width() == pixel_edge(form.width));
    CHECK_FALSE(form.timResize.enabled);
  }

  TEST_CASE("the window can't be made smaller than its texts can be read") {
    ResizeDesk desk;
    MainForm& form = desk.form();
    for (const int rows : {10, 20, 17, 3}) {
      CAPTURE(rows);
      desk.console.layout.set_line_count(rows);
      desk.console.layout.RedefineScreen();
      desk.settle();
      desk.drag(1, 1);
      desk.pass(600);
      CHECK(desk.canvas().width() == pixel_edge(rows > 10 ? 12000 : 9420));
      CHECK(std::abs(desk.canvas().height() - pixel_edge(content_height(rows))) <= 1);
      for (int line = 0; line < rows; ++line) {
        form.LineStatus(line).caption = "Set Busy";
        form.LineTime(line).caption = "0:00:00";
        desk.settle();
        CHECK(desk.widget(form.LineStatus(line)).caption_fits());
        CHECK(desk.widget(form.LineTime(line)).caption_fits());
      }
    }
  }

  TEST_CASE("a stored size that is too small gives way to the least one") {
    ResizeDesk desk;
    desk.form().width = 3000;
    desk.form().height = 2000;
    desk.settle();
    desk.pass(600);
    CHECK(desk.canvas().width() == pixel_edge(9420));
    CHECK(desk.form().width == 9420);
    CHECK(desk.form().DataRow(0).width == 7590);
  }

  TEST_CASE("fewer rows let the window shrink again") {
    ResizeDesk desk;
    desk.console.layout.set_line_count(20);
    desk.console.layout.RedefineScreen();
    desk.settle();
    CHECK(desk.canvas().width() == pixel_edge(12000));
    desk.console.layout.set_line_count(10);
    desk.console.layout.RedefineScreen();
    desk.settle();
    CHECK(desk.canvas().width() == pixel_edge(9420));
    CHECK(desk.canvas().height() == pixel_edge(10 * 315 + 3820));
  }

  TEST_CASE("a hundred resizes are at most one rebuild in each half second") {
    ResizeDesk desk;
    RebuildCount rebuilds(desk.form());
    for (int i = 1; i <= 100; ++i) {
      desk.drag(628 + 4 * i, 484 + 2 * i);
      CHECK(desk.canvas().width() == 628 + 4 * i);
      desk.pass(50);
      CHECK(rebuilds.count <= (i * 50) / 500);
    }
    // The last size is what stands in the end.
    desk.pass(500);
    CHECK(rebuilds.count >= 9);
    CHECK(rebuilds.count <= 11);
    CHECK(desk.form().DataRow(0).width == 7590 * desk.form().width / 9420);
    const int settled = rebuilds.count;
    desk.pass(5000);
    CHECK(rebuilds.count == settled);
  }

  TEST_CASE("a maximised window without its menus gives their room to the form") {
    ResizeDesk desk;
    desk.form().window_state = window_maximised;
    desk.settle();
    desk.pass(1000);
    const int height = desk.window().height();
    REQUIRE(desk.canvas().y() > 0);
    desk.form().OptionsButton.on_click();
    desk.settle();
    CHECK(desk.window().height() == height);
    CHECK(desk.canvas().y() == 0);
    CHECK(desk.canvas().height() == height);
    desk.form().OptionsButton.on_click();
    desk.settle();
    CHECK(desk.canvas().y() > 0);
    CHECK(desk.canvas().y() + desk.canvas().height() == height);
  }
}

}  // namespace
}  // namespace lineweir

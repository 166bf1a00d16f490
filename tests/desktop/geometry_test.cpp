#include <doctest/doctest.h>

#include "desktop/placement.h"
#include "desktop/twips.h"
#include "shown_console.h"

namespace lineweir {
namespace {

QRect pixels(int left, int top, int width, int height) {
  return pixel_rect(QRectF(left, top, width, height));
}

TEST_SUITE("geometry of the main window") {
  TEST_CASE("the content has the design's size and the menu bar stands above it") {
    test::ShownConsole desk;
    CHECK(desk.canvas().width() == pixel_edge(9420));
    CHECK(desk.canvas().height() == pixel_edge(10 * 315 + 3820));
    CHECK(desk.canvas().y() > 0);
    CHECK(desk.window().height() == desk.canvas().y() + desk.canvas().height());
  }

  TEST_CASE("ten rows stand where they were designed") {
    test::ShownConsole desk;
    MainForm& form = desk.form();
    for (int row = 0; row < 10; ++row) {
      const int top = 420 + 315 * row;
      CAPTURE(row);
      CHECK(on_canvas(desk, form.DataRow(row)) == pixels(1260, top, 7590, 315));
      CHECK(on_canvas(desk, form.OnHybrid1(row)) == pixels(780, top, 375, 315));
      CHECK(on_canvas(desk, form.OnHybrid2(row)) == pixels(8955, top, 375, 315));
      CHECK(on_canvas(desk, form.LineNumb(row)) == pixels(1320, top + 45, 350, 225));
      CHECK(on_canvas(desk, form.LineStatus(row)) == pixels(1670, top + 45, 800, 225));
      CHECK(on_canvas(desk, form.LineTime(row)) == pixels(2470, top + 45, 835, 225));
      CHECK(on_canvas(desk, form.LineName(row)) == pixels(3305, top + 45, 1700, 225));
    }
  }

  TEST_CASE("the panel's elements stand where they were designed") {
    test::ShownConsole desk;
    MainForm& form = desk.form();
    const int panel = 420 + 315 * 10;
    CHECK(on_canvas(desk, form.ScreenBottom).top() == pixel_edge(panel));
    CHECK(on_canvas(desk, form.Drop1) == pixels(300, panel + 105, 375, 375));
    CHECK(on_canvas(desk, form.Drop2) == pixels(675, panel + 105, 375, 375));
    CHECK(on_canvas(desk, form.Hold1) == pixels(300, panel + 510, 375, 375));
    CHECK(on_canvas(desk, form.NextButton) == pixels(1500, panel + 315, 1290, 500));
    CHECK(on_canvas(desk, form.NextToConfButton) == pixels(2850, panel + 315, 1290, 500));
    CHECK(on_canvas(desk, form.OptionsButton) == pixels(8010, panel + 315, 1290, 500));
    CHECK(on_canvas(desk, form.picRealTimeClock) == pixels(570, panel + 950, 1695, 1740));
    CHECK(on_canvas(desk, form.Text1) == pixels(4395, panel + 1295, 4465, 1145));
    // The word of the link belongs to the lamp, at its left.
    const QRect lamp = on_canvas(desk, form.Shape1);
    const QRect drawn = pixels(9090, panel + 60, 195, 195);
    CHECK(lamp.contains(drawn));
    CHECK(lamp.right() == drawn.right());
    CHECK(lamp.center().y() == drawn.center().y());
  }

  TEST_CASE("rows have no gaps and no overlaps at any size of the window") {
    test::ShownConsole desk;
    MainForm& form = desk.form();
    for (const auto& [width, height] : {std::pair{9420, 7255}, {10001, 7801}, {13333, 9999}}) {
      form.width = width;
      form.height = height;
      desk.console.layout.RedefineScreen();
      desk.settle();
      for (int row = 0; row + 1 < 10; ++row) {
        const QRect upper = on_canvas(desk, form.DataRow(row));
        CAPTURE(row);
        CHECK(upper.top() + upper.height() == on_canvas(desk, form.DataRow(row + 1)).top());
      }
    }
  }

  TEST_CASE("a clock's inside stretches with the clock") {
    test::ShownConsole desk;
    MainForm& form = desk.form();
    const QRect before = on_canvas(desk, form.RealTime);
    const QRect clock = on_canvas(desk, form.picRealTimeClock);
    form.picRealTimeClock.move(form.picRealTimeClock.left, form.picRealTimeClock.top, 2 * 1695,
                               2 * 1740);
    desk.settle();
    const QRect after = on_canvas(desk, form.RealTime);
    CHECK(after.width() == 2 * before.width());
    CHECK(after.top() - clock.top() == 2 * (before.top() - clock.top()));
  }

  TEST_CASE("the event's clock has its countdown as large as the time, and its dial under it") {
    test::ShownConsole desk;
    MainForm& form = desk.form();
    const QPointF corner = place_on_form(form.picShowTimeClock).topLeft();
    const auto inside = [&](const Control& part) {
      return place_on_form(part).translated(-corner);
    };
    const QRectF dial(295, 560, 1105, 1105);
    CHECK(inside(form.CountDownTime) == QRectF(0, 30, 1695, 330));
    CHECK(inside(form.StatusText) == QRectF(0, 355, 1695, 190));
    CHECK(inside(form.imgShowClock) == dial);
    CHECK(inside(form.RedClock) == dial);
    CHECK(inside(form.RedClockImage) == dial);
    for (Picture* clock : {&form.picShowTimeClock, &form.picRealTimeClock}) {
      clock->move(clock->left, clock->top, 2 * 1695, 2 * 1740);
    }
    CHECK(inside(form.CountDownTime) == QRectF(0, 60, 3390, 660));
    CHECK(inside(form.RedClockImage) == QRectF(590, 1120, 2210, 2210));
    CHECK(place_on_form(form.RealTime).size() == QSizeF(3390, 660));
  }

  TEST_CASE("the icon of a row button stands on the button, whatever the button's size") {
    test::ShownConsole desk;
    MainForm& form = desk.form();
    CHECK(on_canvas(desk, form.CIcon1(4)) == on_canvas(desk, form.OnHybrid1(4)));
    form.width = 12000;
    desk.console.layout.RedefineScreen();
    desk.settle();
    CHECK(on_canvas(desk, form.CIcon2(4)) == on_canvas(desk, form.OnHybrid2(4)));
  }
}

}  // namespace
}  // namespace lineweir

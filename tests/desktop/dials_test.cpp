// The clocks' dials: their hands follow the window's size, and tell what the core tells them.

#include <doctest/doctest.h>

#include <QImage>
#include <QPixmap>
#include <cmath>
#include <functional>

#include "desktop/placement.h"
#include "desktop/shown_console.h"
#include "desktop/twips.h"

namespace lineweir {
namespace {

using test::ShownConsole;

struct DialDesk : ShownConsole {
  DialDesk() {
    form().EventClockMenu.on_click();
    form().TimeClockMenuItem.on_click();
    for (Line* hand : {&form().HourHand, &form().MinuteHand, &form().SecondHand}) {
      hand->visible = false;
    }
    platform.loop.advance(platform::Milliseconds(600));
    form().Timer1.enabled = false;
    settle();
  }

  void drag(int width, int height) {
    window().resize(width, height + canvas().y());
    settle();
    platform.loop.advance(platform::Milliseconds(500));
    settle();
  }

  QRectF place_of(const Control& dial) { return pixel_rect(place_on_form(dial)); }

  double radius_of(const Control& dial) {
    return std::min(place_of(dial).width(), place_of(dial).height()) / 2;
  }

  // The colour at a place on the dial, from its middle, in parts of its radius.
  QColor at(const Control& dial, const QImage& picture, double right, double down) {
    const QPointF place = place_of(dial).center() + QPointF(right, down) * radius_of(dial);
    return picture.pixelColor(static_cast<int>(std::floor(place.x())),
                              static_cast<int>(std::floor(place.y())));
  }

  QImage picture() {
    settle();
    return canvas().grab().toImage();
  }

  // How far to the right pixels of such a colour go, in parts of the dial's radius.
  double reach(const Control& dial, const std::function<bool(const QColor&)>& wanted) {
    const QImage shown = picture();
    double far = 0;
    for (double part = 0.1; part < 1; part += 0.5 / radius_of(dial)) {
      if (wanted(at(dial, shown, part, 0))) far = part;
    }
    return far;
  }
};

bool is_red(const QColor& color) { return color.red() - color.green() > 60; }

bool is_light(const QColor& color) { return color.lightness() > 160; }

void point_right(Line& hand, int length) {
  hand.x2 = hand.x1 + length;
  hand.y2 = hand.y1.get();
}

TEST_SUITE("desktop/dials") {
  TEST_CASE("a hand reaches the same part of its dial at every size and shape of the window") {
    DialDesk desk;
    MainForm& form = desk.form();
    form.SecondHand.visible = true;
    point_right(form.SecondHand, 560);
    const double told = 2.0 * 560 / form.imgTimeClock.width;
    const double before = desk.radius_of(form.imgTimeClock);
    CHECK(desk.reach(form.imgTimeClock, is_red) == doctest::Approx(told).epsilon(0.04));
    desk.drag(1256, 968);
    CHECK(desk.radius_of(form.imgTimeClock) == doctest::Approx(2 * before).epsilon(0.02));
    CHECK(desk.reach(form.imgTimeClock, is_red) == doctest::Approx(told).epsilon(0.02));
    desk.drag(1500, 700);
    CHECK(desk.reach(form.imgTimeClock, is_red) == doctest::Approx(told).epsilon(0.03));
    desk.console.layout.set_line_count(20);
    desk.console.layout.RedefineScreen();
    point_right(form.SecondHand, 560);
    CHECK(desk.reach(form.imgTimeClock, is_red) == doctest::Approx(told).epsilon(0.04));
  }

  TEST_CASE(
      "of the time's hands the hours' is the thickest, the seconds' thin, red and long behind") {
    DialDesk desk;
    desk.drag(1884, 1452);
    MainForm& form = desk.form();
    const double step = 0.5 / desk.radius_of(form.imgTimeClock);
    const auto measured = [&](Line& hand, const std::function<bool(const QColor&)>& wanted) {
      hand.visible = true;
      // A quarter of its length from the middle a hand is thickest.
      point_right(hand, form.imgTimeClock.width * 2 / 5);
      const QImage shown = desk.picture();
      double thickness = 0;
      for (double down = -0.1; down < 0.1; down += step) {
        if (wanted(desk.at(form.imgTimeClock, shown, 0.2, down))) thickness += step;
      }
      double behind = 0;
      for (double left = 0.03; left < 0.4; left += step) {
        if (wanted(desk.at(form.imgTimeClock, shown, -left, 0))) behind = left;
      }
      hand.visible = false;
      return std::pair(thickness, behind);
    };
    const auto [hours, behind_hours] = measured(form.HourHand, is_light);
    const auto [minutes, behind_minutes] = measured(form.MinuteHand, is_light);
    const auto [seconds, behind_seconds] = measured(form.SecondHand, is_red);
    CHECK(hours == doctest::Approx(0.115).epsilon(0.1));
    CHECK(minutes == doctest::Approx(0.08).epsilon(0.1));
    CHECK(seconds == doctest::Approx(0.028).epsilon(0.3));
    CHECK(behind_hours == doctest::Approx(0.1).epsilon(0.15));
    CHECK(behind_minutes == doctest::Approx(0.1).epsilon(0.15));
    CHECK(behind_seconds == doctest::Approx(0.2).epsilon(0.1));
  }

  TEST_CASE("a moved hand leaves nothing behind") {
    DialDesk desk;
    MainForm& form = desk.form();
    form.SecondHand.visible = true;
    point_right(form.SecondHand, 560);
    desk.settle();
    form.SecondHand.x2 = form.SecondHand.x1.get();
    form.SecondHand.y2 = form.SecondHand.y1 + 560;
    CHECK(desk.reach(form.imgTimeClock, is_red) < 0.15);
  }

  TEST_CASE("in the last minute the event's hand is thinner, also on the warning's dial") {
    DialDesk desk;
    desk.drag(1256, 968);
    MainForm& form = desk.form();
    const auto thickness = [&](Line& hand, int width) {
      hand.border_width = width;
      point_right(hand, 560);
      const QImage shown = desk.picture();
      const double step = 0.5 / desk.radius_of(form.imgShowClock);
      double light = 0;
      for (double down = -0.2; down < 0.2; down += step) {
        if (is_light(desk.at(form.imgShowClock, shown, 0.4, down))) light += step;
      }
      return light;
    };
    const double thick = thickness(form.CounterHand, 2);
    const double thin = thickness(form.CounterHand, 1);
    CHECK(thin > 0);
    CHECK(thin < 0.7 * thick);
    form.RedClock.visible = true;
    CHECK(thickness(form.RedHand, 2) == doctest::Approx(thick).epsilon(0.1));
    CHECK(thickness(form.RedHand, 1) == doctest::Approx(thin).epsilon(0.1));
  }

  TEST_CASE("the warning covers the event's dial with a red one that has its own hand") {
    DialDesk desk;
    desk.drag(1256, 968);
    MainForm& form = desk.form();
    const auto face = [&] { return desk.at(form.imgShowClock, desk.picture(), -0.4, 0.4); };
    CHECK_FALSE(is_red(face()));
    form.RedClock.visible = true;
    point_right(form.RedHand, 560);
    CHECK(is_red(face()));
    CHECK(desk.reach(form.imgShowClock, is_light) > 0.8);
    CHECK(is_light(desk.at(form.imgShowClock, desk.picture(), 0.5, 0)));
    form.RedClock.visible = false;
    CHECK_FALSE(is_red(face()));
  }

  TEST_CASE("the time's dial bears the hours, the event's none") {
    DialDesk desk;
    desk.drag(1884, 1452);
    const QImage shown = desk.picture();
    const auto ink = [&](const Control& dial) {
      int light = 0;
      const double step = 1 / desk.radius_of(dial);
      for (double right = -0.12; right < 0.12; right += step) {
        for (double down = -0.73; down < -0.53; down += step) {
          if (desk.at(dial, shown, right, down).lightness() > 120) ++light;
        }
      }
      return light;
    };
    CHECK(ink(desk.form().imgTimeClock) > 40);
    CHECK(ink(desk.form().imgShowClock) == 0);
  }
}

}  // namespace
}  // namespace lineweir

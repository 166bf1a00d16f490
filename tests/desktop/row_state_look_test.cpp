#include <doctest/doctest.h>

#include <QAccessible>
#include <map>
#include <string>
#include <vector>

#include "color_vision.h"
#include "desktop/spoken_lines.h"
#include "forms/picture_names.h"
#include "lines/status_letters.h"
#include "pixels.h"
#include "screen/row_states.h"
#include "shown_console.h"

// What the rows tell by their drawing alone.
namespace lineweir {
namespace {

using test::shown_pixels;

struct StateDesk : test::ShownConsole {
  void choose_face(bool grey) {
    form().GreyScreenOption.checked = grey;
    console.layout.RedefineScreen();
    settle();
  }

  void screener_at_phone_1() {
    form().MitelPhone1.on_click();
    form().ScreenerMode.on_click();
    settle();
  }

  // The line in that state, with nothing written on its row.
  void show(int line, char letter, RowColor strip = RowColor::White) {
    const LetterLook look = reported_look(letter, false);
    console.lines.StatusLetter(line) = letter;
    const RowColor color = strip == RowColor::White ? look.row : strip;
    console.rows.set_row_color(line, color);
    console.rows.DrawMark(line);
    console.rows.HybridPictureSet(line, look.icon1, look.icon2);
    form().blank_row_controls(line, 2);
    settle();
  }

  // From key to key.
  QImage row_picture(int line) {
    ElementWidget& left = widget(form().OnHybrid1(line));
    ElementWidget& right = widget(form().OnHybrid2(line));
    const QPoint corner = left.mapTo(&window(), QPoint(0, 0));
    const QPoint end = right.mapTo(&window(), right.rect().bottomRight());
    return window().grab(QRect(corner, end)).toImage();
  }

  QImage strip_picture(int line) { return shown_pixels(widget(form().DataRow(line))); }

  // How far the strip's surface stands out from the face, on average of its pixels.
  double salience(int line) {
    const QRgb face = canvas().theme().face.shading.lower;
    constexpr int frame = 4;
    const QImage whole = test::readable(strip_picture(line));
    const QImage strip = whole.copy(whole.rect().adjusted(frame, frame, -frame, -frame));
    double sum = 0;
    for (int y = 0; y < strip.height(); ++y) {
      for (const QRgb pixel : test::row_of(strip, y)) sum += test::salience(pixel, face);
    }
    return sum / (strip.width() * strip.height());
  }
};

constexpr bool faces[] = {false, true};

TEST_SUITE("row states") {
  TEST_CASE("what matters most stands out most, on both faces") {
    StateDesk desk;
    struct Step {
      const char* name;
      char letter;
      RowColor strip;
    };
    const std::vector<Step> steps = {
        {"on air", 'N', RowColor::White},  {"next", 'S', RowColor::Green},
        {"ringing", 'R', RowColor::White}, {"ready", 'S', RowColor::White},
        {"held", 'H', RowColor::White},    {"busy", 'B', RowColor::White},
        {"idle", ' ', RowColor::White}};
    for (const bool grey : faces) {
      desk.choose_face(grey);
      double before = 1000;
      for (const Step& step : steps) {
        desk.show(4, step.letter, step.strip);
        const double now = desk.salience(4);
        CAPTURE(grey);
        CAPTURE(step.name);
        CAPTURE(before);
        CHECK(now < before * 0.97);
        before = now;
      }
    }
  }

  TEST_CASE("each pair of states is told apart by brightness or shape, whatever colours are seen") {
    struct State {
      std::string name;
      char letter;
      RowColor strip;
    };
    const std::vector<State> states = {
        {"idle", ' ', RowColor::White},
        {"set busy", 'B', RowColor::White},
        {"taken", 'E', RowColor::White},
        {"at another handset", 'O', RowColor::White},
        {"at this handset", 'P', RowColor::White},
        {"held", 'H', RowColor::White},
        {"locked", 'Y', RowColor::White},
        {"ready", 'S', RowColor::White},
        {"ringing", 'R', RowColor::White},
        {"next", 'S', RowColor::Green},
        {"on air, main", 'N', RowColor::White},
        {"on air, conference", 'C', RowColor::White},
        {"locked on air, main", 'L', RowColor::White},
        {"locked on air, conference", 'K', RowColor::White},
    };
    constexpr double clear = 1.4;
    constexpr int enough = 30;
    StateDesk desk;
    desk.screener_at_phone_1();
    for (const bool grey : faces) {
      desk.choose_face(grey);
      std::map<std::string, QImage> pictures;
      for (const State& state : states) {
        desk.show(3, state.letter, state.strip);
        pictures[state.name] = desk.row_picture(3);
        if (state.letter != 'R') continue;
        // Between the blinks.
        desk.console.rows.HybridPictureSet(3, 0, 0);
        desk.settle();
        pictures["ringing, dark"] = desk.row_picture(3);
      }
      int pairs = 0;
      for (const auto& [one, picture] : pictures) {
        for (const auto& [other, other_picture] : pictures) {
          if (one >= other) continue;
          for (const test::ColorVision& vision : test::color_visions) {
            CAPTURE(grey);
            CAPTURE(one);
            CAPTURE(other);
            CAPTURE(std::string(vision.name));
            CHECK(test::clearly_differing(picture, other_picture, vision, clear) >= enough);
            ++pairs;
          }
        }
      }
      CHECK(pairs == 15 * 14 / 2 * 4);
    }
  }

  // What is drawn in the color on the ground, with the softened edges of thin lines.
  int drawn_on(const QImage& ground, const QImage& picture, QRgb color) {
    int pixels = 0;
    for (int y = 0; y < picture.height(); ++y) {
      for (int x = 0; x < picture.width(); ++x) {
        const QRgb was = ground.pixel(x, y);
        const QRgb is = picture.pixel(x, y);
        const auto along = [](QRgb from, QRgb to, QRgb from2, QRgb to2) {
          return (qRed(to) - qRed(from)) * (qRed(to2) - qRed(from2)) +
                 (qGreen(to) - qGreen(from)) * (qGreen(to2) - qGreen(from2)) +
                 (qBlue(to) - qBlue(from)) * (qBlue(to2) - qBlue(from2));
        };
        const double share =
            double(along(was, is, was, color)) / std::max(1, along(was, color, was, color));
        const double whole = along(was, is, was, is);
        const double beside = whole - share * share * along(was, color, was, color);
        if (share > 0.3 && beside < 0.02 * whole) ++pixels;
      }
    }
    return pixels;
  }

  TEST_CASE("the sign on a line's key tells by colour and fill where its caller is") {
    struct Sign {
      const char* name;
      char letter;
      RowColor strip;
      QRgb Theme::*color;
    };
    const std::vector<Sign> signs = {
        {"ringing", 'R', RowColor::White, &Theme::ringing_sign},
        {"at this handset", 'P', RowColor::White, &Theme::handset_sign},
        {"at another handset", 'O', RowColor::White, &Theme::handset_sign},
        {"taken", 'E', RowColor::White, &Theme::disabled_text},
        {"locked", 'Y', RowColor::White, &Theme::hold_sign},
        {"locked on air, main", 'L', RowColor::White, &Theme::drop_sign},
        {"locked on air, conference", 'K', RowColor::White, &Theme::drop_sign},
        {"next", 'S', RowColor::Green, &Theme::next_light},
    };
    StateDesk desk;
    desk.screener_at_phone_1();
    for (const bool grey : faces) {
      desk.choose_face(grey);
      const Theme& theme = desk.canvas().theme();
      std::map<std::string, int> filled;
      for (const Sign& sign : signs) {
        CAPTURE(grey);
        CAPTURE(std::string(sign.name));
        desk.show(3, sign.letter, sign.strip);
        const Picture& icon =
            desk.form().CIcon1(3).visible ? desk.form().CIcon1(3) : desk.form().CIcon2(3);
        const QImage key = shown_pixels(desk.widget(icon));
        desk.console.rows.HybridPictureSet(3, 0, 0);
        desk.settle();
        const QImage bare = shown_pixels(desk.widget(desk.form().CIcon1(3)));
        CHECK(drawn_on(bare, key, theme.*sign.color) > 40);
        filled[sign.name] = test::pixels_of(key, theme.*sign.color);
        // What stands there for those who have no sign of their own.
        if (grey) CHECK(test::pixels_of(key, signal_green) == 0);
      }
      CHECK(filled["at this handset"] > filled["at another handset"] + 10);
    }
  }

  TEST_CASE("a status without words shows by a sign who rings and who is spoken to") {
    StateDesk desk;
    desk.screener_at_phone_1();
    // What is darker than the strip beside it: the sign's form, whatever colour is readable there.
    const auto sign = [&](char letter) {
      desk.show(3, letter);
      const QImage status = shown_pixels(desk.widget(desk.form().LineStatus(3)));
      QImage form(status.size(), QImage::Format_Mono);
      form.fill(0);
      for (int y = 0; y < status.height(); ++y) {
        const int ground = qGray(status.pixel(status.width() - 1, y));
        for (int x = 2; x < status.width(); ++x) {
          if (qGray(status.pixel(x, y)) < ground - 85) form.setPixel(x, y, 1);
        }
      }
      return test::readable(form);
    };
    const QImage none = sign(' ');
    const QImage ringing = sign('R');
    const QImage here = sign('P');
    const QImage elsewhere = sign('O');
    const QImage taken = sign('E');
    const auto differ = [](const QImage& one, const QImage& other) {
      return test::differing_pixels(one, other);
    };
    for (const QImage* form : {&ringing, &here, &elsewhere, &taken})
      CHECK(differ(none, *form) > 40);
    CHECK(differ(ringing, here) > 40);
    CHECK(differ(ringing, elsewhere) > 40);
    // Full at this handset, an outline at others.
    CHECK(differ(here, elsewhere) > 25);
    CHECK(differ(here, taken) > 25);
    for (const char letter : {'S', 'H', 'Y', 'N', 'C', 'B'}) {
      CAPTURE(letter);
      CHECK(sign(letter) == none);
    }
  }

  TEST_CASE("a line that rings leaves a ghost between the blinks, never an idle look") {
    StateDesk desk;
    for (const bool grey : faces) {
      desk.choose_face(grey);
      desk.show(5, ' ');
      const QImage idle = desk.row_picture(5);
      desk.show(5, 'R');
      const QImage lit = desk.row_picture(5);
      desk.console.rows.HybridPictureSet(5, 0, 0);
      desk.settle();
      const QImage dark = desk.row_picture(5);
      CHECK_FALSE(desk.form().CIcon1(5).visible);
      CHECK(desk.widget(desk.form().CIcon1(5)).isVisible());
      CHECK(test::differing_pixels(dark, idle) > idle.width() * idle.height() / 2);
      CHECK(test::differing_pixels(dark, lit) > 200);
      // The icon goes with the ring.
      desk.show(5, ' ');
      CHECK_FALSE(desk.widget(desk.form().CIcon1(5)).isVisible());
      CHECK(test::differing_pixels(desk.row_picture(5), idle) == 0);
    }
  }

  TEST_CASE("a caller who goes from one handset to the other is shown there at once") {
    StateDesk desk;
    desk.screener_at_phone_1();
    desk.box_sends("P02");
    desk.settle();
    const QImage mine = desk.row_picture(2);
    desk.box_sends("O02");
    desk.settle();
    const QImage other = desk.row_picture(2);
    CHECK(test::differing_pixels(mine, other) > 50);
    desk.form().MitelPhone2.on_click();
    desk.settle();
    CHECK(test::differing_pixels(mine, desk.row_picture(2)) == 0);
  }

  TEST_CASE("a held row shows how long the caller has been waiting in all") {
    StateDesk desk;
    const auto wait_cell = [&] { return shown_pixels(desk.widget(desk.form().LineTime(2))); };
    const auto pass = [&](int seconds) {
      desk.platform.loop.advance(std::chrono::seconds(seconds));
      desk.settle();
    };
    desk.box_sends("R02");
    pass(60);
    desk.box_sends("H02");
    desk.settle();
    ElementWidget& cell = desk.widget(desk.form().LineTime(2));
    REQUIRE(desk.form().LineTime(2).caption == "");
    CHECK(cell.tool_tip().startsWith("Waiting for 1 minute "));
    const QImage early = wait_cell();
    pass(7 * 60);
    CHECK(cell.tool_tip().startsWith("Waiting for 8 minutes "));
    CHECK(QAccessible::queryAccessibleInterface(&cell)
              ->text(QAccessible::Name)
              .startsWith("Line 3 time: Waiting for 8 minutes "));
    const QImage half = wait_cell();
    pass(7 * 60);
    const QImage full = wait_cell();
    const auto bar = [](const QImage& picture) {
      return test::pixels_of(picture, 0xff8a5a00) + test::pixels_of(picture, 0xffb01918);
    };
    CHECK(bar(half) > 3 * bar(early));
    CHECK(bar(full) > bar(half) * 3 / 2);
    pass(20 * 60);
    // The bar is full; the minutes go on.
    CHECK(bar(wait_cell()) == doctest::Approx(bar(full)).epsilon(0.05));
    CHECK(test::differing_pixels(full, wait_cell()) > 0);
    CHECK(spoken_wait(desk.console, 2).startsWith("Waiting for 35 minutes "));
    desk.box_sends("F02");
    desk.settle();
    CHECK(cell.tool_tip().isEmpty());
    CHECK(bar(wait_cell()) == 0);
  }

  TEST_CASE("a strip that is painted from outside is shown as it says") {
    StateDesk desk;
    for (const bool grey : faces) {
      desk.choose_face(grey);
      desk.show(1, 'S');
      const QImage ready = desk.strip_picture(1);
      desk.form().DataRow(1).picture = pictures::DataRowGreen;
      desk.settle();
      CHECK(test::differing_pixels(ready, desk.strip_picture(1)) > ready.width() * 10);
    }
  }
}

}  // namespace
}  // namespace lineweir

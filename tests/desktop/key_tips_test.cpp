#include <doctest/doctest.h>

#include <array>
#include <string>

#include "desktop/key_tips.h"
#include "forms/picture_names.h"
#include "pixels.h"
#include "screen/button_faces.h"
#include "shown_console.h"

namespace lineweir {
namespace {

using test::shown_pixels;

std::string tip_of(const Control& key) { return key_tip(key).toStdString(); }

TEST_SUITE("keys of the main window") {
  TEST_CASE("each key says what it does and by which hot key, in both roles") {
    test::ShownConsole desk;
    MainForm& form = desk.form();
    CHECK(tip_of(form.Drop1) == "Drop the caller on the main hybrid (D)");
    CHECK(tip_of(form.Hold1) == "Hold the caller on the main hybrid (H)");
    CHECK(tip_of(form.Drop2) == "Drop the caller on the conference hybrid (R)");
    CHECK(tip_of(form.Hold2) == "Hold the caller on the conference hybrid (L)");
    CHECK(tip_of(form.NextButton) == "Next caller to main hybrid (N)");
    CHECK(tip_of(form.NextToConfButton) == "Next caller to conference hybrid (X)");
    CHECK(tip_of(form.Dial) == "Dial (I)");
    CHECK(tip_of(form.OptionsButton) == "Setup (S)");
    CHECK(tip_of(form.OnHybrid1(0)) == "Put line 1 on main hybrid (1)");
    CHECK(tip_of(form.OnHybrid2(9)) == "Put line 10 on conference hybrid (Ctrl+0)");
    form.MitelPhone1.on_click();
    form.ScreenerMode.on_click();
    CHECK(tip_of(form.Drop1) == "Drop the calls at this phone (D)");
    CHECK(tip_of(form.NextButton) == "Ready, the caller at this phone may go on air (E)");
    CHECK(tip_of(form.NextToConfButton) == "Answer the next caller (A)");
    desk.console.layout.set_line_count(20);
    CHECK(tip_of(form.OnHybrid1(10)) == "Answer line 11 (Shift+1)");
    CHECK(tip_of(form.OnHybrid2(19)) == "Make line 20 the next caller (Ctrl+Shift+0)");
  }

  TEST_CASE("a key that is disabled says why") {
    test::ShownConsole desk;
    MainForm& form = desk.form();
    const auto why = [&](const Control& key) {
      const QString tip = desk.widget(key).tool_tip();
      return tip.mid(tip.indexOf(u'\n') + 1).toStdString();
    };
    const auto settle = [&] { desk.settle(); };
    form.PassiveMode.on_click();
    settle();
    for (const Control* key :
         {static_cast<Control*>(&form.Drop1), static_cast<Control*>(&form.Dial),
          static_cast<Control*>(&form.OnHybrid1(3))}) {
      CHECK(why(*key) == "This console is passive (Configuration, Mode)");
    }
    form.PassiveMode.on_click();
    form.ScreenerMode.on_click();
    settle();
    CHECK(why(form.NextButton) == "No handset is chosen here (Configuration, Handset)");
    form.MitelPhone1.on_click();
    settle();
    CHECK(why(form.NextButton) ==
          "Choose Producer again to work with this handset (Configuration, Mode)");
    form.StudioMode.on_click();
    desk.console.program.ConfHybridOn = false;
    form.StudioMode.on_click();
    settle();
    REQUIRE_FALSE(form.Drop2.enabled);
    CHECK(why(form.Drop2) == "The conference hybrid isn't used here (Display Data Options)");
    for (const Control* key :
         {static_cast<Control*>(&form.Hold2), static_cast<Control*>(&form.NextToConfButton),
          static_cast<Control*>(&form.OnHybrid2(0))}) {
      CHECK(why(*key) == "The conference hybrid isn't used here (Display Data Options)");
    }
    REQUIRE(form.Drop1.enabled);
    CHECK(why_disabled(form, form.Drop1).isEmpty());
    form.Drop1.enabled = false;
    CHECK(why_disabled(form, form.Drop1) ==
          "The main hybrid isn't used here (Display Data Options)");
  }

  TEST_CASE("the keys of the two hybrids differ by a letter, and no lettering leaves its key") {
    test::ShownConsole desk;
    MainForm& form = desk.form();
    for (const auto& [width, height] :
         {std::pair{9420, 7255}, {9420, 20000}, {24000, 7255}, {24000, 18000}}) {
      form.width = width;
      form.height = height;
      desk.console.layout.RedefineScreen();
      desk.settle();
      CAPTURE(width);
      CAPTURE(height);
      const QImage main_key = shown_pixels(desk.widget(form.Drop1));
      const QImage conference_key = shown_pixels(desk.widget(form.Drop2));
      if (main_key.size() == conference_key.size()) {
        CHECK(test::differing_pixels(main_key, conference_key) > 10);
      }
      // What is drawn keeps off the sides, as the sides of the plain key show.
      const QImage drawn = shown_pixels(desk.widget(form.Hold1));
      form.Hold1Label.caption = "";
      desk.settle();
      const int edge = 2;
      const QImage right = drawn.copy(drawn.width() - 1 - edge, 0, edge, drawn.height());
      const QImage left = drawn.copy(0, 0, edge, drawn.height());
      CHECK(test::pixels_like(right, desk.canvas().theme().hold_sign) == 0);
      CHECK(test::pixels_like(left, desk.canvas().theme().hold_sign) == 0);
      form.Hold1Label.caption = "&HOLD";
    }
  }

  TEST_CASE("a key that drops or holds glows while it is pressed") {
    test::ShownConsole desk;
    MainForm& form = desk.form();
    const auto glow = [&](const Control& key, QRgb light) {
      return test::pixels_of(shown_pixels(desk.widget(key)), light);
    };
    const Theme& theme = desk.canvas().theme();
    const int resting = glow(form.Drop1, theme.drop_sign);
    form.Drop1.on_mouse_down(left_button, 0);
    form.Hold2.on_mouse_down(left_button, 0);
    desk.settle();
    CHECK(glow(form.Drop1, theme.drop_sign) > resting + 40);
    CHECK(glow(form.Hold2, theme.hold_sign) > 60);
  }
}

TEST_SUITE("countdown") {
  TEST_CASE("it is drawn without hours while there are none, and its caption stays") {
    test::ShownConsole desk;
    MainForm& form = desk.form();
    form.picShowTimeClock.visible = true;
    const auto drawn = [&](const char* caption) {
      form.CountDownTime.caption = caption;
      desk.settle();
      return shown_pixels(desk.widget(form.CountDownTime));
    };
    const QImage whole = drawn("00:07:57");
    CHECK(form.CountDownTime.caption == "00:07:57");
    CHECK(test::differing_pixels(whole, drawn("07:57")) == 0);
    CHECK(test::differing_pixels(whole, drawn("01:07:57")) > 20);
  }

  TEST_CASE("it is as large as the time of day") {
    test::ShownConsole desk;
    MainForm& form = desk.form();
    form.picShowTimeClock.visible = true;
    form.picRealTimeClock.visible = true;
    form.RealTime.caption = "07:57";
    form.CountDownTime.caption = "07:57";
    desk.settle();
    CHECK(desk.widget(form.RealTime).size() == desk.widget(form.CountDownTime).size());
    CHECK(test::differing_pixels(shown_pixels(desk.widget(form.RealTime)),
                                 shown_pixels(desk.widget(form.CountDownTime))) == 0);
  }

  TEST_CASE("it is red in the time of warning, and so is the end of the show") {
    test::ShownConsole desk;
    MainForm& form = desk.form();
    form.picShowTimeClock.visible = true;
    form.CountDownTime.caption = "00:00:20";
    desk.settle();
    const QRgb red = desk.canvas().theme().warning_digits;
    const auto reds = [&](const Control& label) {
      return test::pixels_of(shown_pixels(desk.widget(label)), red);
    };
    REQUIRE(form.CountDownTime2.fore_color == color_red);
    CHECK(reds(form.CountDownTime) > 10);
    form.CountDownTime2.fore_color = color_black;
    desk.settle();
    CHECK(reds(form.CountDownTime) == 0);
    form.StatusText.caption = "Guest";
    desk.settle();
    CHECK(reds(form.StatusText) == 0);
    form.StatusText.caption = "Show Over";
    desk.settle();
    CHECK(reds(form.StatusText) > 4);
  }
}

}  // namespace
}  // namespace lineweir

#include <doctest/doctest.h>

#include <QAccessible>
#include <QToolTip>
#include <algorithm>
#include <array>

#include "forms/picture_names.h"
#include "pixels.h"
#include "shown_console.h"

// What the main window shows and says while there is no link to the telephone system.
namespace lineweir {
namespace {

using test::pixels_like;
using test::pixels_of;
using test::shown_pixels;

struct LinkDesk : test::ShownConsole {
  void unlink() {
    form().Off.on_click();
    settle();
    REQUIRE_FALSE(form().no_link.get().empty());
  }

  // The user switches the port on again, and the box answers.
  void link_again() {
    platform.comm1.reply("M", "Line monitor ON");
    form().PortOn.on_click();
    settle();
  }

  QString why() { return QString::fromStdString(form().no_link); }

  int brightness(const Control& strip) {
    const QImage picture = shown_pixels(widget(strip));
    return qGray(picture.pixel(picture.width() / 2, picture.height() / 2));
  }

  QRect on_canvas(const QWidget& element) { return {canvas().origin_of(element), element.size()}; }

  void show_rows(int rows) {
    console.layout.set_line_count(std::max(1, rows));
    console.DisplayOptionForm.LineCheck(0).value = rows == 0 ? 0 : 1;
    console.layout.RedefineScreen();
    settle();
  }

  // Backgrounds, and texts that are empty.
  static bool only_carries(const ElementWidget& widget) {
    switch (widget.element_look().look) {
      case Look::Face:
      case Look::Panel:
      case Look::FaceImage:
      case Look::Nothing:
        return true;
      case Look::PanelText:
      case Look::Heading:
        return widget.shown_caption().isEmpty();
      default:
        return false;
    }
  }

  QString described(const Control& control) {
    return QAccessible::queryAccessibleInterface(&widget(control))->text(QAccessible::Description);
  }

  void click_with_mouse(const Control& control) {
    QTest::mouseClick(&widget(control), Qt::LeftButton);
    settle();
  }
};

TEST_SUITE("no link") {
  TEST_CASE("strips are dimmed, whatever they show, and come back with the link") {
    LinkDesk desk;
    MainForm& form = desk.form();
    constexpr std::array strips = {pictures::DataRowWhite, pictures::DataRowGreen,
                                   pictures::DataRowRed};
    for (std::size_t row = 0; row < strips.size(); ++row) {
      desk.console.lines.StatusLetter(static_cast<int>(row)) = 'S';
      form.DataRow(static_cast<int>(row)).picture = strips[row];
    }
    desk.settle();
    std::array<int, 3> linked{};
    for (int row = 0; row < 3; ++row) {
      linked[static_cast<std::size_t>(row)] = desk.brightness(form.DataRow(row));
    }
    desk.unlink();
    for (int row = 0; row < 3; ++row) {
      CAPTURE(row);
      CHECK(desk.brightness(form.DataRow(row)) < linked[static_cast<std::size_t>(row)] - 10);
      CHECK(form.DataRow(row).picture == strips[static_cast<std::size_t>(row)]);
    }
    desk.link_again();
    for (int row = 0; row < 3; ++row) {
      CHECK(desk.brightness(form.DataRow(row)) == linked[static_cast<std::size_t>(row)]);
    }
  }

  TEST_CASE("icons are dimmed and stand, whatever the core does with them") {
    LinkDesk desk;
    MainForm& form = desk.form();
    // Line 3 rings, line 4 is held, line 5 is on air.
    for (const char* report : {"R02", "H03", "N04"}) desk.box_sends(report);
    desk.settle();
    const std::array<const Picture*, 3> icons = {&form.CIcon1(2), &form.CIcon1(3), &form.CIcon1(4)};
    const auto shown = [&] {
      std::vector<QImage> keys;
      for (const Picture* icon : icons) keys.push_back(shown_pixels(desk.widget(*icon)));
      return keys;
    };
    // Each tick is the other half of the blinking.
    const auto tick = [&] {
      form.Timer5.on_timer();
      desk.settle();
    };
    while (!form.CIcon1(2).visible || !form.CIcon1(3).visible) tick();
    const std::vector<QImage> linked = shown();
    SUBCASE("lit when the link goes") {}
    SUBCASE("dark when the link goes") {
      while (form.CIcon1(2).visible) tick();
    }
    desk.unlink();
    const std::vector<QImage> dimmed = shown();
    bool blinked = false;
    for (int turn = 0; turn < 8; ++turn) {
      tick();
      blinked |= !form.CIcon1(2).visible;
      CHECK(shown() == dimmed);
    }
    CHECK(blinked);
    for (std::size_t i = 0; i < icons.size(); ++i) {
      CAPTURE(i);
      ElementWidget& icon = desk.widget(*icons[i]);
      CHECK(icon.isVisible());
      const QColor ground = dimmed[i].pixelColor(dimmed[i].width() / 8, dimmed[i].height() / 2);
      // How far the colour is from the key's that is furthest from it.
      const auto distance = [&](const QImage& image) {
        int most = 0;
        for (int x = image.width() / 8; x < image.width() * 7 / 8; ++x) {
          const QColor color = image.pixelColor(x, image.height() / 2);
          most = std::max(most, std::abs(color.red() - ground.red()) +
                                    std::abs(color.green() - ground.green()) +
                                    std::abs(color.blue() - ground.blue()));
        }
        return most;
      };
      CHECK(distance(dimmed[i]) > 20);
      CHECK(distance(dimmed[i]) < distance(linked[i]) * 2 / 3);
    }
    // A line that is freed in the dark half shows none any more.
    while (form.CIcon1(2).visible) tick();
    desk.console.lines.StatusLetter(2) = ' ';
    form.LineStatus(2).caption = "-";
    desk.settle();
    CHECK_FALSE(desk.widget(form.CIcon1(2)).isVisible());
    CHECK(desk.widget(form.CIcon1(3)).isVisible());
  }

  TEST_CASE("the next caller's keys show no light") {
    LinkDesk desk;
    MainForm& form = desk.form();
    desk.box_sends("R03");
    desk.box_sends("S03");
    desk.platform.loop.advance(platform::Milliseconds(2000));
    desk.settle();
    REQUIRE(desk.canvas().next_caller_waits());
    const QRgb light = desk.canvas().theme().next_light;
    CHECK(pixels_of(shown_pixels(desk.widget(form.NextButton)), light) > 20);
    desk.unlink();
    CHECK(desk.canvas().next_caller_waits());
    CHECK(pixels_of(shown_pixels(desk.widget(form.NextButton)), light) == 0);
  }

  TEST_CASE("the lamp is hollow, whatever its fill, with the words beside it") {
    for (const int fill : {color_green, color_red}) {
      CAPTURE(fill);
      LinkDesk desk;
      desk.form().Shape1.fill_color = fill;
      desk.settle();
      const QRgb lit = fill == color_green ? signal_green : signal_red;
      ElementWidget& lamp = desk.widget(desk.form().Shape1);
      CHECK(pixels_like(shown_pixels(lamp), lit) > 20);
      CHECK(lamp.shown_caption() == QStringLiteral("Com 1"));
      desk.unlink();
      CHECK(desk.form().Shape1.fill_color == fill);
      CHECK(lamp.shown_caption() == QStringLiteral("No link"));
      if (fill == color_green) CHECK(pixels_like(shown_pixels(lamp), lit) == 0);
      CHECK(pixels_of(shown_pixels(lamp), desk.canvas().theme().warning) > 20);
      desk.link_again();
      CHECK(lamp.shown_caption() == QStringLiteral("Com 1"));
      CHECK(pixels_of(shown_pixels(lamp), desk.canvas().theme().warning) == 0);
    }
  }

  TEST_CASE("beside the lamp stands the port to which the box is connected") {
    LinkDesk desk;
    MainForm& form = desk.form();
    for (MenuItem* port : {&form.Com1, &form.Com2, &form.Com3, &form.Com4}) {
      form.uncheck_coms();
      port->checked = true;
      desk.settle();
      const std::string name = "Com " + port->name().substr(3);
      CHECK(desk.widget(form.Shape1).shown_caption().toStdString() == name);
    }
    form.uncheck_coms();
    form.WinsockMenu.checked = true;
    // As it is once the server has let the console in.
    form.no_link = "";
    desk.settle();
    CHECK(desk.widget(form.Shape1).shown_caption().toStdString() == "Server");
  }

  TEST_CASE("the words lie over nothing else, in any layout") {
    LinkDesk desk;
    desk.form().Off.on_click();
    int others = 0;
    for (int rows = 0; rows <= 20; ++rows) {
      CAPTURE(rows);
      desk.show_rows(rows);
      ElementWidget& lamp = desk.widget(desk.form().Shape1);
      const QRect words = desk.on_canvas(lamp);
      REQUIRE(lamp.isVisible());
      CHECK(desk.canvas().rect().contains(words));
      CHECK(words.width() > 40);
      for (const ElementWidget* other : desk.canvas().element_widgets()) {
        if (other == &lamp || !other->isVisible() || desk.only_carries(*other)) continue;
        ++others;
        CAPTURE(other->objectName().toStdString());
        CHECK_FALSE(desk.on_canvas(*other).intersects(words));
      }
    }
    CHECK(others > 3000);
  }

  TEST_CASE("lamp and keys say why: by tool tip, and to a screen reader") {
    LinkDesk desk;
    MainForm& form = desk.form();
    const std::array<const Control*, 6> keys = {&form.OnHybrid1(0), &form.OnHybrid2(9),
                                                &form.Drop1,        &form.Hold2,
                                                &form.NextButton,   &form.Shape1};
    for (const Control* key : keys) {
      CHECK_FALSE(desk.widget(*key).tool_tip().contains(u'\n'));
      CHECK(desk.described(*key).isEmpty());
    }
    desk.unlink();
    for (const Control* key : keys) {
      CAPTURE(key->name());
      CHECK(desk.widget(*key).tool_tip().endsWith(desk.why()));
      CHECK(desk.described(*key) == desk.why());
    }
    for (const Control* other : {&form.OptionsButton, &form.Dial}) {
      CHECK_FALSE(desk.widget(*other).tool_tip().contains(desk.why()));
    }
    CHECK(QAccessible::queryAccessibleInterface(&desk.widget(form.Shape1))
              ->text(QAccessible::Value) == QStringLiteral("down"));
  }

  TEST_CASE("a press without a link says why at the key, and to a screen reader") {
    LinkDesk desk;
    int alerts = 0;
    desk.desktop.announcer().tell = [&](QAccessibleEvent& event) {
      alerts += event.type() == QAccessible::Alert ? 1 : 0;
    };
    desk.click_with_mouse(desk.form().OnHybrid1(2));
    CHECK(QToolTip::text().isEmpty());
    desk.unlink();
    alerts = 0;
    desk.click_with_mouse(desk.form().OnHybrid1(2));
    CHECK(QToolTip::text() == desk.why());
    CHECK(alerts == 1);
    CHECK_FALSE(desk.console.MyMsgbox.visible);
    QToolTip::hideText();
    CHECK(test::wait_for([] { return !QToolTip::isVisible(); }));
    // A hot key is no key of the window: it is told at the lamp.
    desk.platform.loop.run_pending();
    QTest::keyClick(desk.window().windowHandle(), Qt::Key_3);
    desk.settle();
    CHECK(QToolTip::text() == desk.why());
    QToolTip::hideText();
  }

  TEST_CASE("of several servers the lamp tells which it is, by tool tip and to a screen reader") {
    LinkDesk desk;
    REQUIRE(desk.form().no_link.get().empty());
    CHECK(desk.widget(desk.form().Shape1).tool_tip().isEmpty());
    const std::string place = "studio2.example, port 2001, since 14:03:12";
    desk.form().linked_to = place;
    desk.settle();
    ElementWidget& lamp = desk.widget(desk.form().Shape1);
    CHECK(lamp.tool_tip().toStdString() == place);
    CHECK(desk.described(desk.form().Shape1).toStdString() == place);
    CHECK(desk.described(desk.form().OnHybrid1(0)).isEmpty());
    desk.unlink();
    CHECK(lamp.tool_tip() == desk.why());
    CHECK(desk.described(desk.form().Shape1) == desk.why());
  }

  TEST_CASE("a screen reader hears that the link has gone, and that it stands again") {
    LinkDesk desk;
    QWidget* place = desk.window().findChild<QWidget*>(QStringLiteral("Announcements"));
    REQUIRE(place != nullptr);
    desk.unlink();
    CHECK(place->accessibleName() == desk.why());
    desk.link_again();
    CHECK(place->accessibleName() == QStringLiteral("The link to the telephone system stands"));
  }
}

}  // namespace
}  // namespace lineweir

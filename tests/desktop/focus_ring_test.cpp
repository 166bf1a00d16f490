// Which key of the main window Space and Enter would press, and that the user can see it.

#include <doctest/doctest.h>

#include <QApplication>

#include "shown_console.h"

namespace lineweir {
namespace {

struct RingDesk : test::ShownConsole {
  RingDesk() {
    window().activateWindow();
    settle();
  }

  void key(Qt::Key code, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    QTest::keyClick(window().windowHandle(), code, modifiers);
    settle();
  }

  // The key whose ring is shown; empty where none is.
  std::string ring() {
    for (ElementWidget* widget : canvas().element_widgets()) {
      if (widget->hasFocus()) return widget->objectName().toStdString();
    }
    return {};
  }
};

TEST_SUITE("desktop/focus ring") {
  TEST_CASE("at the start no key has it, and Space and Enter press none") {
    RingDesk desk;
    CHECK(desk.ring().empty());
    desk.key(Qt::Key_Space);
    desk.key(Qt::Key_Return);
    CHECK(desk.platform.comm1.take_writes().empty());
    desk.key(Qt::Key_Tab);
    CHECK(desk.ring() == "OnHybrid1(0)");
  }

  TEST_CASE("Shift and Tab begin at the end") {
    RingDesk desk;
    desk.key(Qt::Key_Backtab, Qt::ShiftModifier);
    CHECK(desk.ring() == "Text1");
  }

  TEST_CASE("a window that comes back gives it to no key by itself") {
    RingDesk desk;
    desk.window().hide();
    desk.window().show();
    desk.window().activateWindow();
    desk.settle();
    CHECK(desk.ring().empty());
  }

  TEST_CASE("a click where nothing is to be pressed leaves it where it is") {
    RingDesk desk;
    ElementWidget& dial = desk.widget(desk.form().Dial);
    dial.setFocus();
    for (Control* part : std::initializer_list<Control*>{
             &desk.form().DataRow(3), &desk.form().LineName(3), &desk.form().ScreenTop,
             &desk.form().ScreenBottom, &desk.form().CaptionLabel(3), &desk.form().Shape1,
             &desk.form().RealTime2}) {
      CAPTURE(part->name());
      QTest::mouseClick(&desk.widget(*part), Qt::LeftButton);
      desk.settle();
      CHECK(desk.ring() == "Dial");
    }
    QTest::mouseClick(&desk.canvas(), Qt::LeftButton);
    CHECK(desk.ring() == "Dial");
  }

  TEST_CASE("a key that is switched off passes it to no other, and has it again when it can") {
    RingDesk desk;
    desk.widget(desk.form().NextButton).setFocus();
    desk.form().PassiveMode.on_click();
    desk.settle();
    CHECK(desk.ring().empty());
    desk.key(Qt::Key_Space);
    CHECK_FALSE(desk.console.DialForm.visible);
    desk.form().PassiveMode.on_click();
    desk.settle();
    CHECK(desk.ring() == "NextButton");
  }

  TEST_CASE("Tab goes on from a key that was switched off") {
    RingDesk desk;
    desk.widget(desk.form().OnHybrid1(4)).setFocus();
    desk.form().OnHybrid1(4).enabled = false;
    desk.settle();
    CHECK(desk.ring().empty());
    desk.key(Qt::Key_Tab);
    CHECK(desk.ring() == "OnHybrid2(4)");
    desk.form().OnHybrid1(4).enabled = true;
    desk.settle();
    CHECK(desk.ring() == "OnHybrid2(4)");
  }

  TEST_CASE("a row that goes passes it to no other") {
    RingDesk desk;
    desk.console.layout.set_line_count(12);
    desk.console.layout.RedefineScreen();
    desk.settle();
    desk.window().activateWindow();
    desk.widget(desk.form().OnHybrid1(11)).setFocus();
    desk.console.layout.set_line_count(10);
    desk.console.layout.RedefineScreen();
    desk.settle();
    CHECK(desk.ring().empty());
    desk.key(Qt::Key_Space);
    CHECK(desk.platform.comm1.take_writes().empty());
  }

  TEST_CASE("the quick line gives it back to the key that had it") {
    RingDesk desk;
    desk.key(Qt::Key_F6);
    desk.key(Qt::Key_Escape);
    CHECK(desk.ring().empty());
    desk.key(Qt::Key_Space);
    CHECK(desk.platform.comm1.take_writes().empty());
    desk.widget(desk.form().Dial).setFocus();
    desk.key(Qt::Key_F6);
    CHECK(desk.ring() == "Text2");
    desk.key(Qt::Key_Escape);
    CHECK(desk.ring() == "Dial");
  }
}

}  // namespace
}  // namespace lineweir

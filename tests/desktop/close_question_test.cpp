#include "desktop/close_question.h"

#include <doctest/doctest.h>

#include <QLabel>
#include <QPushButton>

#include "shown_console.h"

namespace lineweir {
namespace {

struct OnAir : test::ShownConsole {
  explicit OnAir(const char* reports = "N04") {
    box_sends(reports);
    settle();
  }

  bool asked() const {
    const QWidget* box = desktop.window_of(QStringLiteral("CloseQuestion"));
    return box != nullptr && box->isVisible();
  }
  QWidget& box() { return *desktop.window_of(QStringLiteral("CloseQuestion")); }
  template <class Widget>
  Widget& part(const char* name) {
    return *box().findChild<Widget*>(QString::fromLatin1(name));
  }
  QString who() { return part<QLabel>("WhoLabel").text(); }
  bool open() { return console.Lineweir.visible && console.Lineweir.loaded(); }
  void close_window() {
    window().close();
    settle();
  }
  void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    QTest::keyClick(box().focusWidget(), key, modifiers);
    settle();
  }
};

TEST_SUITE("desktop/close question") {
  TEST_CASE("with nobody on air the window closes at once, whatever else the lines do") {
    OnAir desk("R01H02S03P05");
    desk.close_window();
    CHECK_FALSE(desk.asked());
    CHECK_FALSE(desk.open());
  }

  TEST_CASE(
      "with a caller on air or locked there it asks, by the window's button and by the menu") {
    for (const char* report : {"N04", "C04", "L04", "K04"}) {
      CAPTURE(report);
      OnAir desk(report);
      desk.close_window();
      CHECK(desk.asked());
      CHECK(desk.open());
      CHECK(desk.box().windowTitle() == "Close Lineweir?");
      CHECK(desk.who() == "The caller on line 5 is on air.");
    }
    OnAir desk;
    desk.action(desk.form().ExitMenu).trigger();
    desk.settle();
    CHECK(desk.asked());
    CHECK(desk.open());
  }

  TEST_CASE("Enter, Esc, Space and the box's own close button keep the window open") {
    OnAir desk;
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter, Qt::Key_Escape, Qt::Key_Space}) {
      CAPTURE(key);
      desk.close_window();
      REQUIRE(desk.asked());
      CHECK(desk.part<QPushButton>("StayButton").hasFocus());
      desk.press(key);
      CHECK(test::wait_for([&] { return !desk.asked(); }));
      CHECK(desk.open());
    }
    desk.close_window();
    desk.box().close();
    desk.settle();
    CHECK_FALSE(desk.asked());
    CHECK(desk.open());
  }

  TEST_CASE("its other button closes the window, by Tab and Enter or by its letter") {
    OnAir desk;
    desk.close_window();
    SUBCASE("tab") {
      desk.press(Qt::Key_Tab);
      CHECK(desk.part<QPushButton>("CloseButton").hasFocus());
      desk.press(Qt::Key_Return);
    }
    SUBCASE("letter") { desk.press(Qt::Key_C, Qt::AltModifier); }
    CHECK(test::wait_for([&] { return !desk.console.Lineweir.loaded(); }));
    desk.settle();
    CHECK_FALSE(desk.asked());
  }

  TEST_CASE("it blocks nothing, comes once, and says who is on air now") {
    OnAir desk;
    desk.console.Lineweir.LineName(4).caption = "Ann Smith";
    desk.close_window();
    CHECK(desk.who() == "Ann Smith is on air, on line 5.");
    desk.close_window();
    desk.close_window();
    int boxes = 0;
    for (const QWidget* widget : QApplication::topLevelWidgets()) {
      if (widget->isVisible() && widget->windowTitle() == "Close Lineweir?") ++boxes;
    }
    CHECK(boxes == 1);
    CHECK(QApplication::activeModalWidget() == nullptr);
    desk.box_sends("C01");
    desk.settle();
    CHECK(desk.who() == "2 callers are on air, on lines 2 and 5.");
    desk.box_sends("N00");
    desk.settle();
    CHECK(desk.who() == "3 callers are on air, on lines 1, 2 and 5.");
    QTest::mouseClick(&desk.widget(desk.form().Drop1), Qt::LeftButton);
    CHECK_FALSE(desk.platform.comm1.take_writes().empty());
    CHECK(desk.asked());
    desk.box_sends("F00F01F04");
    desk.settle();
    CHECK(desk.asked());
    CHECK(desk.who() == "Nobody is on air any more.");
    CHECK(desk.open());
  }

  TEST_CASE("a minimised window comes up with it, and it goes with the window") {
    OnAir desk;
    desk.console.Lineweir.window_state = window_minimised;
    desk.settle();
    desk.console.Lineweir.close();
    desk.settle();
    CHECK(desk.asked());
    CHECK(desk.console.Lineweir.window_state == window_normal);
    desk.console.Lineweir.unload();
    desk.settle();
    CHECK_FALSE(desk.asked());
  }
}

}  // namespace
}  // namespace lineweir

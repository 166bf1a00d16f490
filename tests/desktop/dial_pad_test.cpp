#include <doctest/doctest.h>

#include <QAccessible>
#include <QApplication>
#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QWindow>
#include <cstdlib>

#include "desktop/dialogs.h"
#include "desktop/telephone_key.h"
#include "drawn_texts.h"
#include "pixels.h"
#include "shown_console.h"

namespace lineweir {
namespace {

using Words = std::vector<std::string>;

// The dial pad's window, in front, on the serial link.
struct ShownDialPad : test::ShownConsole {
  void open() {
    console.Lineweir.Dial.on_click();
    settle();
    QApplication::setActiveWindow(&window());
    settle();
  }
  DialPadForm& dial = console.DialForm;

  QWidget& window() { return *desktop.dialog(dial)->window(); }
  template <class Widget>
  Widget& part(const char* name) {
    auto* found = window().findChild<Widget*>(QString::fromLatin1(name));
    if (found == nullptr) throw std::runtime_error(std::string("no widget ") + name);
    return *found;
  }
  // Keys as the system delivers them, to the window.
  void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    QTest::keyClick(window().windowHandle(), key, modifiers);
    settle();
  }
  void type(char character) {
    QTest::keyClick(window().windowHandle(), character);
    settle();
  }
  const DialState& dial_state() const { return console.dial; }
  Words words() { return platform.comm1.take_writes(); }
  void pass(int milliseconds) {
    platform.loop.advance(platform::Milliseconds(milliseconds));
    settle();
  }
};

TEST_SUITE("dial pad") {
  TEST_CASE("digits typed anywhere in the window press its keys") {
    ShownDialPad desk;
    desk.console.lines.StatusLetter(2) = 'N';
    desk.open();
    for (const char* focus : {"Text1", "Combo1", "DialButton(9)", "TheDrop"}) {
      CAPTURE(focus);
      desk.part<QWidget>(focus).setFocus();
      desk.settle();
      for (const char character : std::string("5*#0")) desk.type(character);
      CHECK(desk.part<QLineEdit>("Text1").text() == "5*#0");
      CHECK(desk.part<QComboBox>("Combo1").currentText() == "Line 3");
      desk.pass(1000);
      CHECK(desk.words() == Words{"T05", "T11", "T12", "T00"});
      desk.dial.Text1.text = "";
      desk.settle();
    }
  }

  TEST_CASE("letters and edits leave the digits alone") {
    ShownDialPad desk;
    desk.console.lines.StatusLetter(2) = 'N';
    desk.open();
    desk.type('7');
    desk.part<QLineEdit>("Text1").setFocus();
    for (const Qt::Key key : {Qt::Key_X, Qt::Key_Backspace, Qt::Key_Delete, Qt::Key_Space}) {
      desk.press(key);
    }
    desk.press(Qt::Key_V, Qt::ControlModifier);
    CHECK(desk.dial.Text1.text.get() == "7");
    CHECK(desk.part<QLineEdit>("Text1").text() == "7");
  }

  TEST_CASE("the mouse presses keys, seizes and drops") {
    ShownDialPad desk;
    desk.open();
    QTest::mouseClick(&desk.part<QPushButton>("SSCommand1"), Qt::LeftButton);
    CHECK(desk.words() == Words{"N00"});
    desk.console.lines.StatusLetter(0) = 'N';
    desk.pass(200);
    QTest::mouseClick(&desk.part<QPushButton>("DialButton(8)"), Qt::LeftButton);
    desk.pass(200);
    CHECK(desk.words() == Words{"T08"});
    CHECK(desk.part<QLineEdit>("Text1").text() == "8");
    QTest::mouseClick(&desk.part<QPushButton>("TheDrop"), Qt::LeftButton);
    CHECK(desk.words() == Words{"F00"});
    desk.pass(200);
    CHECK(desk.part<QLineEdit>("Text1").text() == "");
  }

  TEST_CASE(
      "lists by arrow keys, keys by Space and Enter, buttons by their letters, out by Escape") {
    ShownDialPad desk;
    desk.open();
    desk.part<QComboBox>("Combo1").setFocus();
    desk.press(Qt::Key_Down);
    desk.press(Qt::Key_Down);
    CHECK(desk.dial.Combo1.text.get() == "Line 3");
    desk.part<QComboBox>("Combo2").setFocus();
    desk.press(Qt::Key_Down);
    CHECK(desk.dial.Combo2.text.get() == "Conf");
    desk.press(Qt::Key_S, Qt::AltModifier);
    // A button pressed by its letter is seen to go down before it clicks.
    CHECK(test::wait_for([&] { return desk.dial_state().DialSeizeLine == 2; }));
    CHECK(desk.words() == Words{"C02"});
    desk.part<QPushButton>("DialButton(4)").setFocus();
    desk.press(Qt::Key_Return);
    desk.press(Qt::Key_Space);
    CHECK(desk.dial.Text1.text.get() == "44");
    desk.press(Qt::Key_Escape);
    CHECK_FALSE(desk.dial.loaded());
    CHECK_FALSE(desk.window().isVisible());
  }

  TEST_CASE("Tab leads through lists and keys in the order of a telephone") {
    ShownDialPad desk;
    desk.open();
    std::vector<std::string> order;
    for (int step = 0; step < 18; ++step) {
      order.push_back(desk.window().focusWidget()->objectName().toStdString());
      desk.press(Qt::Key_Tab);
    }
    CHECK(order == Words{"Text1", "Combo1", "Combo2", "SSCommand1", "DialButton(1)",
                         "DialButton(2)", "DialButton(3)", "DialButton(4)", "DialButton(5)",
                         "DialButton(6)", "DialButton(7)", "DialButton(8)", "DialButton(9)",
                         "DialButton(10)", "DialButton(0)", "DialButton(11)", "SSCommand2",
                         "TheDrop"});
  }

  TEST_CASE("Enter in the digits dials on the server") {
    ShownDialPad desk;
    desk.platform.winsock1.stand_connected();
    desk.console.Lineweir.WinsockMenu.checked = true;
    desk.console.lines.StatusLetter(0) = 'N';
    desk.open();
    desk.part<QLineEdit>("Text1").setFocus();
    desk.press(Qt::Key_Return);
    CHECK(desk.platform.winsock1.take_writes().size() == 1);
  }

  TEST_CASE("the lamp shows on the seize key, and is told to a screen reader") {
    ShownDialPad desk;
    desk.open();
    auto& key = desk.part<QPushButton>("SSCommand1");
    CHECK(key.accessibleDescription() == "The lamp is dark");
    CHECK(test::pixels_like(test::shown_pixels(key), signal_red) == 0);
    desk.console.lines.StatusLetter(0) = 'N';
    desk.pass(200);
    CHECK(key.accessibleDescription() == "The lamp is red: the line is on air");
    CHECK(test::pixels_like(test::shown_pixels(key), signal_red) > 50);
    desk.console.Lineweir.MitelPhone1.checked = true;
    desk.console.Lineweir.ScreenerMode.on_click();
    desk.console.lines.StatusLetter(0) = 'P';
    desk.pass(200);
    CHECK(key.accessibleDescription() == "The lamp is green: the line is at this seat");
    CHECK(test::pixels_like(test::shown_pixels(key), signal_green) > 50);
  }

  TEST_CASE("everything that can have the focus has a name") {
    ShownDialPad desk;
    desk.open();
    const auto name_of = [&](const char* widget) {
      return QAccessible::queryAccessibleInterface(&desk.part<QWidget>(widget))
          ->text(QAccessible::Name)
          .toStdString();
    };
    // Here a list's name is its text, and it is told apart by its label.
    const auto label_of = [&](const char* widget) {
      const auto labels = QAccessible::queryAccessibleInterface(&desk.part<QWidget>(widget))
                              ->relations(QAccessible::Label);
      REQUIRE(labels.size() == 1);
      return labels.front().first->text(QAccessible::Name).toStdString();
    };
    CHECK(name_of("Text1") == "Digits");
    CHECK(label_of("Combo1") == "Line");
    CHECK(label_of("Combo2") == "On");
    CHECK(name_of("SSCommand1") == "Seize");
    CHECK(name_of("DialButton(5)") == "5");
    CHECK(name_of("DialButton(10)") == "Star");
    CHECK(name_of("DialButton(11)") == "Hash");
    CHECK(name_of("SSCommand2") == "Dial");
    CHECK(name_of("TheDrop") == "Drop");
  }

  TEST_CASE("the keys bear the letters of a telephone") {
    ShownDialPad desk;
    desk.open();
    const std::vector<QStringList> faces = {
        {"0"},        {"1"},         {"2", "ABC"}, {"3", "DEF"},  {"4", "GHI"}, {"5", "JKL"},
        {"6", "MNO"}, {"7", "PQRS"}, {"8", "TUV"}, {"9", "WXYZ"}, {"*"},        {"#"}};
    for (std::size_t key = 0; key < faces.size(); ++key) {
      CAPTURE(key);
      const auto name = "DialButton(" + std::to_string(key) + ")";
      CHECK(test::drawn_texts(desk.part<QPushButton>(name.c_str())) == faces[key]);
    }
  }

  TEST_CASE("the keys stand as on a telephone, all of one size") {
    ShownDialPad desk;
    desk.open();
    const auto place = [&](int key) {
      const auto name = "DialButton(" + std::to_string(key) + ")";
      return desk.part<QPushButton>(name.c_str()).geometry();
    };
    const std::vector<int> order = {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 0, 11};
    for (std::size_t i = 0; i < order.size(); ++i) {
      CAPTURE(order[i]);
      // What the window's width leaves over in thirds is a pixel.
      CHECK(std::abs(place(order[i]).width() - place(5).width()) <= 1);
      CHECK(std::abs(place(order[i]).height() - place(5).height()) <= 1);
      if (i % 3 != 0) CHECK(place(order[i]).left() > place(order[i - 1]).right());
      if (i >= 3) CHECK(place(order[i]).top() > place(order[i - 3]).bottom());
    }
  }
}

}  // namespace
}  // namespace lineweir

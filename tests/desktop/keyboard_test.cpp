// The console worked by keyboard alone, in its real windows.

#include <doctest/doctest.h>

#include <QApplication>
#include <QWidget>

#include "desktop/dialog_frame.h"
#include "desktop/shown_console.h"

namespace lineweir {
namespace {

using test::ShownConsole;
using test::wait_for;

struct KeyDesk : ShownConsole {
  // A key to whatever has the keyboard: an open menu, or the main window.
  void key(Qt::Key code, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    QWidget* menu = QApplication::activePopupWidget();
    QTest::keyClick((menu != nullptr ? menu : &window())->windowHandle(), code, modifiers);
    settle();
  }

  QWidget* dialog_window(const Form& form) {
    DialogFrame* frame = desktop.dialog(form);
    return frame == nullptr ? nullptr : frame->window();
  }
};

TEST_SUITE("desktop/keyboard") {
  TEST_CASE("a port is chosen through the menu") {
    KeyDesk desk;
    desk.key(Qt::Key_P, Qt::AltModifier);
    REQUIRE(QApplication::activePopupWidget() != nullptr);
    desk.key(Qt::Key_3);
    CHECK(QApplication::activePopupWidget() == nullptr);
    CHECK(desk.form().Com3.checked);
    CHECK_FALSE(desk.form().Com1.checked);
    CHECK(desk.action(desk.form().Com3).isChecked());
  }

  TEST_CASE("a menu is left with Esc and nothing has happened") {
    KeyDesk desk;
    desk.key(Qt::Key_P, Qt::AltModifier);
    desk.key(Qt::Key_Escape);
    CHECK(QApplication::activePopupWidget() == nullptr);
    CHECK(desk.form().Com1.checked);
  }

  TEST_CASE("the keys act again behind a choice from a menu that was left for the bar") {
    KeyDesk desk;
    desk.window().activateWindow();
    desk.key(Qt::Key_C, Qt::AltModifier);
    desk.key(Qt::Key_H);
    desk.key(Qt::Key_Escape);
    desk.key(Qt::Key_Escape);
    desk.key(Qt::Key_C, Qt::AltModifier);
    desk.key(Qt::Key_Up);
    desk.key(Qt::Key_Up);
    desk.key(Qt::Key_Return);
    REQUIRE(QApplication::activePopupWidget() == nullptr);
    desk.key(Qt::Key_3);
    CHECK(desk.platform.comm1.take_writes() == std::vector<std::string>{"N02"});
  }

  TEST_CASE("the port goes on through the menu, and its failure is a message that Enter closes") {
    KeyDesk desk;
    desk.form().Off.on_click();
    desk.platform.comm1.fail_openings(68, 1);
    desk.key(Qt::Key_P, Qt::AltModifier);
    desk.key(Qt::Key_O);
    CHECK(desk.console.MyMsgbox.visible);
    CHECK(desk.console.MyMsgbox.Label1.caption == "Could Not Open Port");
    QWidget* box = desk.dialog_window(desk.console.MyMsgbox);
    REQUIRE(box != nullptr);
    CHECK(box->isVisible());
    QTest::keyClick(box->windowHandle(), Qt::Key_Return);
    desk.settle();
    CHECK_FALSE(desk.console.MyMsgbox.visible);
    CHECK_FALSE(box->isVisible());
  }

  TEST_CASE("a message box stops nothing: the rows go on behind it") {
    KeyDesk desk;
    desk.console.messages.ShowMessage("Check the cables");
    desk.settle();
    desk.box_sends("N02");
    desk.settle();
    CHECK(desk.form().LineStatus(2).caption == "On Air");
    desk.key(Qt::Key_S);
    CHECK(desk.console.MyMsgbox.visible);
  }

  TEST_CASE("a digit takes a line to air") {
    KeyDesk desk;
    desk.key(Qt::Key_3);
    CHECK(desk.platform.comm1.take_writes() == std::vector<std::string>{"N02"});
    desk.key(Qt::Key_4, Qt::ControlModifier);
    CHECK(desk.platform.comm1.take_writes() == std::vector<std::string>{"C03"});
  }

  TEST_CASE("a row that doesn't exist gives the one message") {
    KeyDesk desk;
    desk.key(Qt::Key_1, Qt::ShiftModifier);
    CHECK(desk.console.MyMsgbox.visible);
    CHECK(desk.console.MyMsgbox.Label1.caption ==
          "That command or line is not available at this time!");
  }

  TEST_CASE("the setup key takes the menus away and brings them back") {
    KeyDesk desk;
    const int height = desk.form().height;
    desk.key(Qt::Key_S);
    CHECK_FALSE(desk.form().Options.visible);
    CHECK_FALSE(desk.action(desk.form().Options).isVisible());
    CHECK(desk.form().height == height - 285);
    desk.key(Qt::Key_S);
    CHECK(desk.form().Options.visible);
    CHECK(desk.form().height == height);
  }

  TEST_CASE("the quick line opens, takes letters and digits, and closes") {
    KeyDesk desk;
    desk.key(Qt::Key_F6);
    CHECK(desk.form().Text2.visible);
    for (const Qt::Key letter : {Qt::Key_N, Qt::Key_O, Qt::Key_4}) desk.key(letter);
    CHECK(desk.form().Text2.text == "no4");
    CHECK(desk.platform.comm1.take_writes().empty());
    desk.key(Qt::Key_Escape);
    CHECK_FALSE(desk.form().Text2.visible);
  }

  TEST_CASE("Alt with a digit opens the caller data of that row") {
    KeyDesk desk;
    desk.key(Qt::Key_5, Qt::AltModifier);
    CHECK(desk.console.Form4.visible);
    CHECK(desk.console.Form4.caption == "Caller Data - Line 5");
  }

  TEST_CASE("F3 shows the trace while it is written") {
    ShownConsole desk("D");
    QTest::keyClick(desk.window().windowHandle(), Qt::Key_F3);
    desk.settle();
    CHECK(desk.console.DebugForm.visible);
    ShownConsole other;
    QTest::keyClick(other.window().windowHandle(), Qt::Key_F3);
    other.settle();
    CHECK_FALSE(other.console.DebugForm.visible);
  }

  TEST_CASE("the console ends through the menu") {
    KeyDesk desk;
    desk.key(Qt::Key_O, Qt::AltModifier);
    desk.key(Qt::Key_X);
    CHECK(desk.platform.ended);
    CHECK_FALSE(desk.window().isVisible());
  }
}

}  // namespace
}  // namespace lineweir

// Messages between the seats in the real windows, by keyboard and mouse.

#include <doctest/doctest.h>

#include <QApplication>
#include <QHelpEvent>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QScrollBar>
#include <QTabWidget>
#include <QToolTip>

#include "desktop/dialog_frame.h"
#include "pixels.h"
#include "shown_console.h"

namespace lineweir {
namespace {

using test::pixels_of;
using test::shown_pixels;

struct MessageDesk : test::ShownConsole {
  MessageDesk() { console.login.UserName = "Ann"; }

  void receive(const std::string& message, int back_color = color_white) {
    console.message_display.ReturnMessageData(message, 1, back_color, color_black);
    settle();
  }

  QPlainTextEdit& display() {
    auto* edit = widget(form().Text1).findChild<QPlainTextEdit*>();
    REQUIRE(edit != nullptr);
    return *edit;
  }

  // Opens the dialog by its key and gives it the keyboard.
  QWidget& open_dialog() {
    QTest::keyClick(window().windowHandle(), Qt::Key_F2);
    come_to_rest();
    QWidget* dialog = desktop.dialog(console.FlashMessA)->window();
    REQUIRE(dialog != nullptr);
    look();
    QApplication::setActiveWindow(dialog);
    come_to_rest();
    return *dialog;
  }

  // A key to whatever has the focus in the dialog.
  void key(QWidget& dialog, Qt::Key code, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    QTest::keyClick(dialog.windowHandle(), code, modifiers);
    come_to_rest();
  }

  void make_list(std::initializer_list<const char*> texts) {
    HotListFile list(platform.databases, platform.letters);
    list.create("hot.lwb");
    list.open("hot.lwb");
    for (const char* text : texts) list.add(text);
    console.program.MessageFile = "hot.lwb";
  }

  FlashMessageForm& dialog_form() { return console.FlashMessA; }
};

TEST_SUITE("desktop/messages") {
  TEST_CASE("without a message the display is a hollow with a hint, with one it is paper") {
    bool grey = false;
    SUBCASE("on the metal face") {}
    SUBCASE("on the grey face") { grey = true; }
    MessageDesk desk;
    desk.form().GreyScreenOption.checked = grey;
    desk.console.layout.RedefineScreen();
    desk.settle();
    const Theme& theme = grey ? grey_theme : metal_theme;
    const auto count = [&](QRgb color) {
      return pixels_of(shown_pixels(desk.widget(desk.form().Text1)), color);
    };
    CHECK(count(theme.no_message.shading.upper) > 5000);
    CHECK(count(theme.message.shading.upper) == 0);
    CHECK(desk.display().placeholderText().startsWith("No message"));
    desk.receive(
        "Bea\x03"
        "Hi");
    CHECK(count(theme.message.shading.upper) > 5000);
    CHECK(count(theme.no_message.shading.upper) == 0);
    desk.receive("Bea\x03Stop", color_red);
    CHECK(count(theme.strip(RowState::OnAir).surface.shading.upper) > 5000);
    CHECK(count(theme.strip(RowState::OnAir).frame_color) > 200);
  }

  TEST_CASE("the newest line of a long conversation is in sight at any size") {
    MessageDesk desk;
    std::string conversation = "Ann\x03";
    for (int line = 0; line < 200; ++line) {
      conversation += "\r\nAnn> line " + std::to_string(line);
    }
    desk.receive(conversation);
    const auto at_end = [&] {
      const QScrollBar& bar = *desk.display().verticalScrollBar();
      return bar.maximum() > 0 && bar.value() == bar.maximum();
    };
    CHECK(at_end());
    for (const QSize size : {QSize(1400, 900), QSize(700, 500), QSize(628, 484)}) {
      desk.window().resize(size);
      desk.come_to_rest();
      CHECK(at_end());
    }
  }

  TEST_CASE("the display tells who wrote and when where the mouse rests") {
    MessageDesk desk;
    desk.receive(
        "Bea\x03"
        "Hi");
    QWidget& face = *desk.display().viewport();
    const QPoint place = face.rect().center();
    QHelpEvent rest(QEvent::ToolTip, place, face.mapToGlobal(place));
    QApplication::sendEvent(&face, &rest);
    CHECK(QToolTip::text() == "Bea, 10:00:00");
    QToolTip::hideText();
  }

  TEST_CASE("a double click on the display opens the dialog") {
    MessageDesk desk;
    QTest::mouseDClick(desk.display().viewport(), Qt::LeftButton);
    desk.come_to_rest();
    CHECK(desk.dialog_form().visible);
  }

  TEST_CASE("F2 opens the dialog in its text; what is typed is sent with Ctrl and Enter") {
    MessageDesk desk;
    QWidget& dialog = desk.open_dialog();
    REQUIRE(dialog.focusWidget() != nullptr);
    CHECK(dialog.focusWidget()->objectName() == "Text1");
    QTest::keyClicks(dialog.focusWidget(), "Two minutes");
    desk.key(dialog, Qt::Key_Return);
    QTest::keyClicks(dialog.focusWidget(), "to go");
    desk.key(dialog, Qt::Key_Return, Qt::ControlModifier);
    CHECK_FALSE(dialog.isVisible());
    CHECK(desk.form().Text1.text == "Ann> Two minutes\r\nto go");
    CHECK(desk.form().Text1.back_color == color_white);
  }

  TEST_CASE("Ctrl, Shift and Enter send it urgent, and the dialog is not red afterwards") {
    MessageDesk desk;
    QWidget& dialog = desk.open_dialog();
    QTest::keyClicks(dialog.focusWidget(), "Stop");
    desk.key(dialog, Qt::Key_Enter, Qt::ControlModifier | Qt::ShiftModifier | Qt::KeypadModifier);
    CHECK(desk.form().Text1.back_color == color_red);
    QWidget& again = desk.open_dialog();
    const QColor ground = again.focusWidget()->palette().color(QPalette::Base);
    CHECK(ground == QColor::fromRgb(metal_theme.control));
  }

  TEST_CASE("Esc closes the dialog and keeps what was typed, and so does closing its window") {
    MessageDesk desk;
    QWidget& dialog = desk.open_dialog();
    QTest::keyClicks(dialog.focusWidget(), "not yet");
    desk.key(dialog, Qt::Key_Escape);
    CHECK_FALSE(dialog.isVisible());
    desk.open_dialog();
    CHECK(desk.dialog_form().Text1.text == "not yet");
    dialog.close();
    desk.come_to_rest();
    CHECK_FALSE(dialog.isVisible());
    desk.open_dialog();
    CHECK(desk.dialog_form().Text1.text == "not yet");
    CHECK(desk.form().Text1.text == "");
  }

  TEST_CASE("Tab stays in the text, and Alt with a letter leads out of it") {
    MessageDesk desk;
    desk.make_list({"One", "Two"});
    QWidget& dialog = desk.open_dialog();
    desk.key(dialog, Qt::Key_Tab);
    CHECK(dialog.focusWidget()->objectName() == "Text1");
    desk.key(dialog, Qt::Key_Backtab, Qt::ShiftModifier);
    CHECK(dialog.focusWidget()->objectName() != "DBList1");
    desk.key(dialog, Qt::Key_H, Qt::AltModifier);
    CHECK(dialog.focusWidget()->objectName() == "DBList1");
    desk.key(dialog, Qt::Key_Tab);
    CHECK(dialog.focusWidget()->objectName() == "UpdateButton");
    desk.key(dialog, Qt::Key_M, Qt::AltModifier);
    CHECK(dialog.focusWidget()->objectName() == "Text1");
    CHECK(desk.dialog_form().Text1.text == "\t");
    desk.key(dialog, Qt::Key_T, Qt::AltModifier);
    CHECK(dialog.findChild<QTabWidget*>()->currentIndex() == 1);
    desk.key(dialog, Qt::Key_N, Qt::AltModifier);
    CHECK(dialog.findChild<QTabWidget*>()->currentIndex() == 0);
  }

  TEST_CASE("a hot list is worked by keyboard alone") {
    MessageDesk desk;
    desk.make_list({"One", "Two", "Three"});
    QWidget& dialog = desk.open_dialog();
    desk.key(dialog, Qt::Key_H, Qt::AltModifier);
    desk.key(dialog, Qt::Key_Down);
    desk.key(dialog, Qt::Key_Home);
    desk.key(dialog, Qt::Key_Down, Qt::ControlModifier);
    using Texts = std::vector<std::string>;
    CHECK(desk.dialog_form().DBList1.list.get() == Texts{"Two", "One", "Three"});
    desk.key(dialog, Qt::Key_Delete);
    CHECK(desk.dialog_form().DBList1.list.get() == Texts{"Two", "Three"});
    desk.key(dialog, Qt::Key_Home);
    desk.key(dialog, Qt::Key_Return);
    CHECK(desk.dialog_form().Text1.text == "Two");
    CHECK(dialog.focusWidget()->objectName() == "Text1");
    desk.key(dialog, Qt::Key_2, Qt::ControlModifier);
    CHECK(desk.form().Text1.text == "Ann> Three");
    // In the main window the next one would act on a line.
    CHECK(dialog.isVisible());
    CHECK(desk.dialog_form().Text1.text == "Two");
  }

  TEST_CASE("F6 types a line, which Esc leaves and keeps") {
    MessageDesk desk;
    QTest::keyClick(desk.window().windowHandle(), Qt::Key_F6);
    desk.come_to_rest();
    QTest::keyClicks(QApplication::focusWidget(), "1 moment");
    desk.come_to_rest();
    CHECK(desk.form().Text2.text == "1 moment");
    QTest::keyClick(desk.window().windowHandle(), Qt::Key_Escape);
    desk.come_to_rest();
    CHECK_FALSE(desk.widget(desk.form().Text2).isVisible());
    QTest::keyClick(desk.window().windowHandle(), Qt::Key_F6);
    desk.come_to_rest();
    QTest::keyClicks(QApplication::focusWidget(), "!");
    CHECK(desk.form().Text2.text == "1 moment!");
    // Nobody carries it, and it stays under the message that says so.
    QTest::keyClick(desk.window().windowHandle(), Qt::Key_Return);
    desk.come_to_rest();
    CHECK(desk.console.MyMsgbox.visible);
    CHECK(desk.form().Text2.text == "1 moment!");
    CHECK(desk.form().Text2.visible);
  }

  TEST_CASE("keys behind the one that sends and closes the dialog act on no line") {
    MessageDesk desk;
    desk.box_sends("R02");
    desk.settle();
    QWidget& dialog = desk.open_dialog();
    QTest::keyClicks(dialog.focusWidget(), "Go");
    desk.look();
    desk.key(dialog, Qt::Key_Return, Qt::ControlModifier);
    REQUIRE_FALSE(dialog.isVisible());
    desk.platform.comm1.take_writes();
    QWindow* main = desk.window().windowHandle();
    QTest::keyClick(main, Qt::Key_3);
    QTest::keyClick(main, Qt::Key_Return, Qt::ControlModifier);
    desk.come_to_rest();
    CHECK(desk.platform.comm1.take_writes().empty());
  }

  TEST_CASE(
      "F2 opens the page with the text, wherever the dialog was left, and sends nothing unseen") {
    MessageDesk desk;
    QWidget& dialog = desk.open_dialog();
    QTest::keyClicks(dialog.focusWidget(), "hidden");
    auto& pages = *dialog.findChild<QTabWidget*>();
    desk.key(dialog, Qt::Key_T, Qt::AltModifier);
    REQUIRE(pages.currentIndex() == 1);
    CHECK(dialog.focusWidget()->objectName() == "Today");
    desk.key(dialog, Qt::Key_Return, Qt::ControlModifier);
    CHECK(desk.form().Text1.text == "");
    desk.key(dialog, Qt::Key_Escape);
    CHECK_FALSE(dialog.isVisible());
    desk.open_dialog();
    CHECK(pages.currentIndex() == 0);
    CHECK(dialog.focusWidget()->objectName() == "Text1");
  }

  TEST_CASE("the page of the show's messages opens on the newest") {
    MessageDesk desk;
    for (int i = 0; i < 100; ++i)
      desk.receive(
          "Bea\x03"
          "Bea> number " +
          std::to_string(i));
    QWidget& dialog = desk.open_dialog();
    desk.key(dialog, Qt::Key_T, Qt::AltModifier);
    const QScrollBar& bar = *dialog.findChild<QPlainTextEdit*>("Today")->verticalScrollBar();
    CHECK(bar.maximum() > 0);
    CHECK(bar.value() == bar.maximum());
  }

  TEST_CASE("while a line is typed the newest line of the display stays in sight above it") {
    MessageDesk desk;
    std::string conversation = "Ann\x03";
    for (int line = 0; line < 50; ++line) conversation += "\r\nAnn> line " + std::to_string(line);
    desk.receive(conversation);
    QTest::keyClick(desk.window().windowHandle(), Qt::Key_F6);
    desk.come_to_rest();
    const QWidget& line = desk.widget(desk.form().Text2);
    const QWidget& display = desk.widget(desk.form().Text1);
    REQUIRE(line.isVisible());
    CHECK(line.height() < display.height());
    CHECK(line.geometry().bottom() <= display.geometry().bottom() + 1);
    QPlainTextEdit& text = desk.display();
    CHECK(text.mapTo(&desk.canvas(), text.rect().bottomLeft()).y() <=
          line.mapTo(&desk.canvas(), QPoint()).y());
    CHECK(text.verticalScrollBar()->value() == text.verticalScrollBar()->maximum());
    desk.receive("Bea\x03Stop", color_red);
    const QRgb red = metal_theme.strip(RowState::OnAir).surface.shading.upper;
    CHECK(pixels_of(shown_pixels(desk.widget(desk.form().Text1)), red) > 3000);
  }

  TEST_CASE("what is pasted into the quick line stays whole, on one line") {
    MessageDesk desk;
    QTest::keyClick(desk.window().windowHandle(), Qt::Key_F6);
    desk.come_to_rest();
    auto& line = *desk.widget(desk.form().Text2).findChild<QLineEdit*>();
    line.insert("one\ntwo\r\nthree");
    CHECK(desk.form().Text2.text == "one two three");
    line.clear();
    line.insert(QString(40000, 'L'));
    CHECK(desk.form().Text2.text.get().size() == 40000);
  }

  TEST_CASE("screen readers hear a message of another seat with its sender, urgent ones as such") {
    MessageDesk desk;
    std::vector<QString> heard;
    desk.desktop.announcer().tell = [&](QAccessibleEvent& event) {
      if (event.type() != QAccessible::Alert) return;
      heard.push_back(event.accessibleInterface()->text(QAccessible::Name));
    };
    desk.receive(
        "Bea\x03"
        "Bea> Hi");
    desk.receive(
        "Bea\x03"
        "Bea> Stop",
        color_red);
    desk.receive(
        "Bea\x03"
        "Bea> Stop",
        color_red);
    desk.console.message_display.ReturnMessageData("Cid\x03No", 2, color_red, color_black);
    desk.settle();
    CHECK(heard == std::vector<QString>{"Message from Bea: Hi", "Urgent message from Bea: Stop",
                                        "Urgent message from Bea: Stop"});
  }
}

}  // namespace
}  // namespace lineweir

// Where the keyboard is while boxes and windows come and go, and that no key acts in a window that
// it wasn't meant for.

#include <doctest/doctest.h>

#include <QApplication>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>

#include "desktop/dialog_frame.h"
#include "shown_console.h"
#include "state/hourglass.h"
#include "support/call_log_file.h"
#include "support/listen.h"

namespace lineweir {
namespace {

using Words = std::vector<std::string>;

// A console with a line on the main hybrid, whose log's viewer is open. The clock of the hands is
// the test's.
struct FocusDesk : test::ShownConsole {
  FocusDesk() {
    desktop.hands().now = [this] { return time; };
    window().activateWindow();
    come_to_rest();
    box_sends("N02");
    platform.comm1.take_writes();
    test::choose_log(*this);
    open(console.DatabaseViewer, [this] { console.Lineweir.ShowDatabaseMenuItem.on_click(); });
  }

  void open(Form& form, const std::function<void()>& command) {
    command();
    come_to_rest();
    of(form).activateWindow();
    come_to_rest();
    // What follows is the user's doing.
    time += 1000;
  }

  QWidget& of(const Form& form) { return *desktop.dialog(form)->window(); }
  QWidget& viewer() { return of(console.DatabaseViewer); }
  QWidget& box() { return of(console.MyMsgbox); }
  QLineEdit& search() { return *viewer().findChild<QLineEdit*>("SearchText"); }

  // A key as the system delivers it: to the window that has the keyboard.
  void key(Qt::Key code, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    REQUIRE(QApplication::focusWindow() != nullptr);
    QTest::keyClick(QApplication::focusWindow(), code, modifiers);
    come_to_rest();
  }
  void type(const char* text) {
    for (; *text != '\0'; ++text) {
      key(static_cast<Qt::Key>(std::toupper(*text)));
      time += 100;
    }
  }

  std::string active() const {
    const QWidget* found = QApplication::activeWindow();
    return found == nullptr ? "" : found->objectName().toStdString();
  }

  Words words() { return platform.comm1.take_writes(); }

  qint64 time = 0;
};

TEST_SUITE("desktop/focus: messages") {
  TEST_CASE("one that comes by itself leaves the keyboard where it is") {
    FocusDesk desk;
    desk.type("sal");
    desk.console.messages.ShowMessage("The box has gone");
    desk.come_to_rest();
    REQUIRE(desk.box().isVisible());
    desk.type("em");
    CHECK(desk.search().text() == "salem");
    CHECK(desk.box().isVisible());
  }

  TEST_CASE("it stays so while the box is brought to the front again each second") {
    FocusDesk desk;
    desk.console.messages.ShowMessage("The box has gone");
    desk.come_to_rest();
    desk.key(Qt::Key_Down);
    desk.console.Lineweir.MessageTimer.on_timer();
    desk.come_to_rest();
    CHECK(desk.active() == "DatabaseViewer");
  }

  TEST_CASE("one that a window manager gives the keyboard to gives it back") {
    FocusDesk desk;
    desk.type("sal");
    desk.console.messages.ShowMessage("The box has gone");
    desk.come_to_rest();
    desk.box().activateWindow();
    desk.come_to_rest();
    CHECK(desk.active() == "DatabaseViewer");
    // Later it is the user who goes to the box.
    desk.time += 1000;
    desk.box().activateWindow();
    desk.come_to_rest();
    CHECK(desk.active() == "MyMsgbox");
  }

  TEST_CASE("one that answers a command in a dialog has the keyboard and gives it back") {
    FocusDesk desk;
    auto* button = desk.viewer().findChild<QPushButton*>("ExportButton");
    listen(desk.console.DatabaseViewer.ExportButton.on_click,
           [&] { desk.console.messages.ShowMessage("No"); });
    button->setFocus();
    desk.key(Qt::Key_Return);
    CHECK(desk.active() == "MyMsgbox");
    desk.key(Qt::Key_Return);
    CHECK_FALSE(desk.box().isVisible());
    CHECK(desk.active() == "DatabaseViewer");
    CHECK(QApplication::focusWidget() == button);
  }

  TEST_CASE("behind the window that a command has opened nothing else is awaited") {
    FocusDesk desk;
    auto* button = desk.viewer().findChild<QPushButton*>("ExportButton");
    listen(desk.console.DatabaseViewer.ExportButton.on_click,
           [&] { desk.console.caller_data.show_for_line(2); });
    button->setFocus();
    desk.time += 1000;
    desk.key(Qt::Key_Return);
    REQUIRE(desk.active() == "Form4");
    desk.time += 100;
    desk.console.messages.ShowMessage("The call log is in use.");
    desk.come_to_rest();
    CHECK(desk.box().isVisible());
    CHECK(desk.active() == "Form4");
  }

  TEST_CASE("one that answers a button is awaited however the button is pressed") {
    FocusDesk desk;
    desk.window().activateWindow();
    desk.come_to_rest();
    desk.open(desk.console.Form4, [&] { desk.console.caller_data.show_for_line(2); });
    QWidget& form = desk.of(desk.console.Form4);
    auto* button = form.findChild<QPushButton*>("Command3D1");
    auto* field = form.findChild<QLineEdit*>("TheText(1)");
    REQUIRE(field != nullptr);
    field->setFocus();
    listen(desk.console.Form4.Command3D1.on_click,
           [&] { desk.console.messages.ShowMessage("No"); });
    desk.type("ann");
    REQUIRE(desk.console.Form4.TheText(1).text == "ann");
    desk.time += 300;
    SUBCASE("by its letter") {
      REQUIRE(button->text() == "&Save");
      desk.key(Qt::Key_S, Qt::AltModifier);
    }
    SUBCASE("by a slow click") {
      const QPoint at = button->mapTo(&form, button->rect().center());
      QTest::mousePress(form.windowHandle(), Qt::LeftButton, {}, at);
      desk.time += 600;
      QTest::mouseRelease(form.windowHandle(), Qt::LeftButton, {}, at);
    }
    SUBCASE("by a key that is held for a while") {
      button->setFocus();
      QTest::keyPress(form.windowHandle(), Qt::Key_Space);
      desk.time += 600;
      QTest::keyRelease(form.windowHandle(), Qt::Key_Space);
    }
    REQUIRE(test::wait_for([&] { return desk.console.MyMsgbox.visible.get(); }));
    desk.come_to_rest();
    CHECK(desk.active() == "MyMsgbox");
    const QWidget* before = form.focusWidget();
    desk.key(Qt::Key_Return);
    CHECK_FALSE(desk.box().isVisible());
    CHECK(desk.active() == "Form4");
    CHECK(QApplication::focusWidget() == before);
  }

  TEST_CASE("one that follows a window has the keyboard and gives it to that window's opener") {
    FocusDesk desk;
    desk.search().setFocus();
    desk.open(desk.console.ImportPreview, [&] { desk.console.ImportPreview.show(); });
    REQUIRE(desk.active() == "ImportPreview");
    desk.time += 60'000;
    desk.console.ImportPreview.unload();
    desk.console.messages.ShowMessage("Imported 3 calls.");
    desk.come_to_rest();
    CHECK(desk.active() == "MyMsgbox");
    desk.key(Qt::Key_Return);
    CHECK(desk.active() == "DatabaseViewer");
    desk.type("drop");
    CHECK(desk.search().text() == "drop");
    CHECK(desk.words() == Words{});
  }

  TEST_CASE("in front of the main window the hot keys go on, and Enter and Esc close it") {
    FocusDesk desk;
    desk.window().activateWindow();
    desk.come_to_rest();
    desk.console.messages.ShowMessage("The box has gone");
    desk.come_to_rest();
    CHECK(desk.active() == "Lineweir");
    desk.key(Qt::Key_D);
    CHECK(desk.words() == Words{"F02"});
    // Nobody has read it so soon.
    desk.key(Qt::Key_Escape);
    CHECK(desk.box().isVisible());
    desk.time += 1000;
    SUBCASE("Enter") { desk.key(Qt::Key_Return); }
    SUBCASE("Esc") { desk.key(Qt::Key_Escape); }
    CHECK_FALSE(desk.box().isVisible());
    CHECK(desk.words() == Words{});
  }

  TEST_CASE("Enter that closes one presses no key of the main window") {
    FocusDesk desk;
    desk.window().activateWindow();
    desk.come_to_rest();
    desk.widget(desk.form().OnHybrid1(0)).setFocus();
    desk.console.messages.ShowMessage("The box has gone");
    desk.come_to_rest();
    desk.time += 1000;
    desk.key(Qt::Key_Return);
    CHECK_FALSE(desk.box().isVisible());
    CHECK(desk.words() == Words{});
    desk.key(Qt::Key_Return);
    CHECK(desk.words() == Words{"N00"});
  }

  TEST_CASE("in a field Enter stays the field's, and Esc closes the message before the window") {
    FocusDesk desk;
    desk.search().setFocus();
    desk.console.messages.ShowMessage("The box has gone");
    desk.come_to_rest();
    desk.time += 1000;
    desk.key(Qt::Key_Return);
    CHECK(desk.box().isVisible());
    desk.key(Qt::Key_Escape);
    CHECK_FALSE(desk.box().isVisible());
    CHECK(desk.viewer().isVisible());
    desk.key(Qt::Key_Escape);
    CHECK_FALSE(desk.viewer().isVisible());
  }
}

TEST_SUITE("desktop/focus: windows") {
  TEST_CASE("the keyboard goes from window to window back the way it came") {
    FocusDesk desk;
    desk.open(desk.console.ImportPreview, [&] { desk.console.ImportPreview.show(); });
    desk.console.ImportPreview.unload();
    desk.come_to_rest();
    CHECK(desk.active() == "DatabaseViewer");
    desk.console.DatabaseViewer.unload();
    desk.come_to_rest();
    CHECK(desk.active() == "Lineweir");
  }

  TEST_CASE("a window manager that chooses another window has no say") {
    FocusDesk desk;
    desk.open(desk.console.ImportPreview, [&] { desk.console.ImportPreview.show(); });
    desk.console.ImportPreview.unload();
    desk.come_to_rest();
    desk.window().activateWindow();
    desk.come_to_rest();
    CHECK(desk.active() == "DatabaseViewer");
  }

  TEST_CASE("one that has no keyboard takes none when it closes") {
    FocusDesk desk;
    desk.open(desk.console.DialForm, [&] { desk.console.DialForm.show(); });
    desk.viewer().activateWindow();
    desk.come_to_rest();
    desk.console.DialForm.unload();
    desk.come_to_rest();
    CHECK(desk.active() == "DatabaseViewer");
  }

  TEST_CASE("one that opens by itself doesn't take the keyboard from somebody who types") {
    FocusDesk desk;
    desk.type("sal");
    desk.console.caller_data.show_for_line(3);
    desk.come_to_rest();
    REQUIRE(desk.console.Form4.visible);
    desk.type("em");
    CHECK(desk.search().text() == "salem");
    CHECK(desk.console.Form4.TheText(1).text == "");
  }

  TEST_CASE(
      "one that the program is at work on until then has the keyboard, however late it comes") {
    FocusDesk desk;
    desk.window().activateWindow();
    desk.come_to_rest();
    WinsockOptionsForm& server = desk.console.WinsockOptions;
    desk.open(server, [&] { server.show(); });
    listen(server.SockConnect.on_click, [&] {
      const Hourglass hourglass(desk.console.Lineweir);
      // So long a server takes to refuse a login.
      desk.time += 600;
      desk.console.LoginForm.show();
      server.unload();
    });
    desk.type("studio");
    desk.key(Qt::Key_Return);
    CHECK(desk.active() == "LoginForm");
    desk.type("hal");
    CHECK(desk.console.LoginForm.LoginCombo.text == "hal");
    CHECK(desk.words() == Words{});
  }

  TEST_CASE("one that the program closes takes what is still typed into it along") {
    FocusDesk desk;
    desk.window().activateWindow();
    desk.come_to_rest();
    desk.open(desk.console.Form4, [&] { desk.console.caller_data.show_for_line(3); });
    desk.type("smith");
    desk.console.Form4.unload();
    desk.come_to_rest();
    REQUIRE(desk.active() == "Lineweir");
    desk.type("drop13 ");
    desk.key(Qt::Key_Space);
    CHECK(desk.words() == Words{});
    desk.time += 1000;
    desk.key(Qt::Key_D);
    CHECK(desk.words() == Words{"F02"});
  }

  TEST_CASE("a letter behind the Alt key that has closed a dialog is none of the main window") {
    FocusDesk desk;
    desk.window().activateWindow();
    desk.come_to_rest();
    Form* dialog = nullptr;
    SUBCASE("the show's plan") { dialog = &desk.console.Form2; }
    SUBCASE("the fields of the log") { dialog = &desk.console.LogDataForm; }
    SUBCASE("a flash message") { dialog = &desk.console.FlashMessA; }
    REQUIRE(dialog != nullptr);
    desk.open(*dialog, [&] { dialog->show(); });
    desk.key(Qt::Key_C, Qt::AltModifier);
    // A button pressed by its letter is seen to go down before it clicks.
    REQUIRE(test::wait_for([&] { return !dialog->visible; }));
    desk.come_to_rest();
    REQUIRE(desk.active() == "Lineweir");
    desk.time += 900;
    desk.key(Qt::Key_D);
    desk.time += 300;
    desk.type("13 ");
    CHECK(desk.words() == Words{});
    desk.time += 1000;
    desk.key(Qt::Key_D);
    CHECK(desk.words() == Words{"F02"});
  }

  TEST_CASE("a menu opens at once behind the Alt key that has closed a dialog") {
    FocusDesk desk;
    desk.window().activateWindow();
    desk.come_to_rest();
    desk.open(desk.console.Form2, [&] { desk.console.Form2.show(); });
    desk.key(Qt::Key_C, Qt::AltModifier);
    REQUIRE(test::wait_for([&] { return !desk.console.Form2.visible; }));
    desk.come_to_rest();
    desk.key(Qt::Key_O, Qt::AltModifier);
    REQUIRE(QApplication::activePopupWidget() != nullptr);
    desk.key(Qt::Key_Escape);
    while (QApplication::activePopupWidget() != nullptr) desk.key(Qt::Key_Escape);
    CHECK(desk.words() == Words{});
  }

  TEST_CASE("a letter behind a dialog's Esc is the user's own") {
    FocusDesk desk;
    desk.window().activateWindow();
    desk.come_to_rest();
    desk.open(desk.console.Form2, [&] { desk.console.Form2.show(); });
    desk.key(Qt::Key_Escape);
    REQUIRE(desk.active() == "Lineweir");
    desk.key(Qt::Key_D);
    CHECK(desk.words() == Words{"F02"});
  }

  TEST_CASE("Enter behind the Alt key answers the question that this has opened") {
    FocusDesk desk;
    QMessageBox question(QMessageBox::Question, "", "Really?", QMessageBox::Yes, &desk.viewer());
    listen(desk.console.DatabaseViewer.ExportButton.on_click, [&] { question.open(); });
    desk.key(Qt::Key_E, Qt::AltModifier);
    REQUIRE(test::wait_for([&] { return question.isActiveWindow(); }));
    desk.key(Qt::Key_Return);
    CHECK_FALSE(question.isVisible());
  }

  TEST_CASE("a click in another window leads on at once") {
    FocusDesk desk;
    desk.type("smith");
    desk.window().activateWindow();
    desk.come_to_rest();
    QTest::mouseClick(desk.window().windowHandle(), Qt::LeftButton, {}, {1, 200});
    desk.key(Qt::Key_D);
    CHECK(desk.words() == Words{"F02"});
  }
}

TEST_SUITE("desktop/focus: keys that are held") {
  void hold(test::ShownConsole & desk, Qt::Key code, const QString& text) {
    QKeyEvent again(QEvent::KeyPress, code, {}, text, true);
    QCoreApplication::sendEvent(QApplication::focusWindow(), &again);
    desk.come_to_rest();
  }

  TEST_CASE("a hot key acts once") {
    FocusDesk desk;
    desk.window().activateWindow();
    desk.come_to_rest();
    desk.key(Qt::Key_D);
    hold(desk, Qt::Key_D, "d");
    CHECK(desk.words() == Words{"F02"});
  }

  TEST_CASE("Enter that has opened a box doesn't close it") {
    FocusDesk desk;
    auto* button = desk.viewer().findChild<QPushButton*>("ExportButton");
    listen(desk.console.DatabaseViewer.ExportButton.on_click,
           [&] { desk.console.messages.ShowMessage("No"); });
    button->setFocus();
    desk.key(Qt::Key_Return);
    REQUIRE(desk.active() == "MyMsgbox");
    hold(desk, Qt::Key_Return, "\r");
    CHECK(desk.box().isVisible());
  }

  TEST_CASE("a letter goes on in a field") {
    FocusDesk desk;
    desk.search().setFocus();
    desk.key(Qt::Key_S);
    hold(desk, Qt::Key_S, "s");
    CHECK(desk.search().text() == "ss");
  }
}

}  // namespace
}  // namespace lineweir

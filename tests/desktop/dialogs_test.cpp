#include <doctest/doctest.h>

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTableWidget>
#include <algorithm>

#include "desktop/dialogs.h"
#include "desktop/form_binder.h"
#include "desktop/menu_tree.h"
#include "every_dialog.h"
#include "shown_console.h"
#include "support/listen.h"

namespace lineweir {
namespace {

using test::part;

QWidget& open(test::ShownConsole& desk, Form& form) {
  form.show();
  desk.settle();
  QWidget* window = desk.desktop.dialog(form)->window();
  if (window == nullptr) throw std::runtime_error(form.name() + " has no window");
  return *window;
}

TEST_SUITE("dialogs") {
  TEST_CASE("every form of the console has its window in the table") {
    test::ShownConsole desk;
    for (const Form* form : test::dialogs_of(desk.console)) {
      CAPTURE(form->name());
      CHECK(desk.desktop.dialog(*form) != nullptr);
    }
  }

  TEST_CASE("three windows may be covered, two have no frame, and the others stay in front") {
    test::ShownConsole desk;
    std::vector<std::string> of_their_own;
    std::vector<std::string> frameless;
    std::vector<std::string> in_front;
    for (Form* form : test::dialogs_of(desk.console)) {
      form->on_load.forget_handler();
      const QWidget& window = open(desk, *form);
      const bool stays = window.parentWidget() == &desk.window();
      const bool is_frameless = window.windowFlags().testFlag(Qt::FramelessWindowHint);
      CHECK((window.windowType() == Qt::Window) == (!stays && !is_frameless));
      (stays ? in_front : is_frameless ? frameless : of_their_own).push_back(form->name());
      form->on_unload.forget_handler();
      form->unload();
      desk.settle();
    }
    using Names = std::vector<std::string>;
    for (Names* names : {&of_their_own, &frameless, &in_front}) std::ranges::sort(*names);
    CHECK(of_their_own == Names{"DatabaseViewer", "DebugForm", "ImportPreview"});
    CHECK(frameless == Names{"AboutBox", "Standby"});
    CHECK(in_front == Names{"CallerFlagForm", "DialForm", "DisplayOptionForm", "FlashMessA",
                            "Form2", "Form3", "Form4", "LogDataForm", "LoginForm", "MyMsgbox",
                            "WinsockOptions"});
  }

  TEST_CASE("names in the drawing and in the form have their partners, both ways") {
    test::ShownConsole desk;
    for (Form* form : test::dialogs_of(desk.console)) {
      CAPTURE(form->name());
      // Loading may refuse to show a form; its window is made all the same.
      form->on_load.forget_handler();
      open(desk, *form);
      const FormBinder* binder = desk.desktop.dialog(*form)->binder();
      for (const QString& name : binder->elements_without_widget()) {
        FAIL_CHECK("no widget is called ", name.toStdString());
      }
      for (const QString& name : binder->widgets_without_element()) {
        FAIL_CHECK("no element is called ", name.toStdString());
      }
      form->on_unload.forget_handler();
      form->unload();
      desk.settle();
    }
  }

  TEST_CASE("a button shows its caption and runs its handler") {
    test::ShownConsole desk;
    QWidget& window = open(desk, desk.console.MyMsgbox);
    auto& button = part<QPushButton>(window, "OKButton");
    CHECK(button.text() == "&Ok");
    CHECK_FALSE(part<QPushButton>(window, "ReconnectButton").isVisible());
    QTest::mouseClick(&button, Qt::LeftButton);
    desk.settle();
    CHECK_FALSE(desk.console.MyMsgbox.loaded());
  }

  TEST_CASE("Enter on a button is a click") {
    test::ShownConsole desk;
    QWidget& window = open(desk, desk.console.MyMsgbox);
    QTest::keyClick(&part<QPushButton>(window, "OKButton"), Qt::Key_Return);
    CHECK_FALSE(desk.console.MyMsgbox.loaded());
  }

  TEST_CASE("a label shows its caption, and a new one") {
    test::ShownConsole desk;
    desk.console.messages.ShowMessage("Could Not Open Port");
    QWidget& window = open(desk, desk.console.MyMsgbox);
    CHECK(part<QLabel>(window, "Label1").text() == "Could Not Open Port");
    desk.console.MyMsgbox.Label1.caption = "Caf\xE9";
    desk.settle();
    CHECK(part<QLabel>(window, "Label1").text() == QStringLiteral(u"Café"));
  }

  TEST_CASE("the login begins with the name however it was left") {
    test::ShownConsole desk;
    UserLoginForm& form = desk.console.LoginForm;
    for (int times = 0; times < 2; ++times) {
      form.show();
      desk.settle();
      CHECK(form.focused() == &form.LoginCombo);
      form.PasswordTextBox.set_focus();
      desk.settle();
      form.close();
      desk.settle();
    }
  }

  TEST_CASE("what is typed reaches the text box, and what the core writes shows") {
    test::ShownConsole desk;
    UserLoginForm& form = desk.console.LoginForm;
    QWidget& window = open(desk, form);
    auto& password = part<QLineEdit>(window, "PasswordTextBox");
    CHECK(password.echoMode() == QLineEdit::Password);
    QTest::keyClicks(&password, "secret");
    CHECK(form.PasswordTextBox.text.get() == "secret");
    CHECK(form.PasswordTextBox.sel_start == 6);
    form.PasswordTextBox.text = "other";
    desk.settle();
    CHECK(password.text() == "other");
  }

  TEST_CASE("Alt with a character enters nothing into a field, and its shortcuts go on") {
    test::ShownConsole desk;
    UserLoginForm& form = desk.console.LoginForm;
    auto& field = part<QLineEdit>(open(desk, form), "PasswordTextBox");
    const auto press = [&field](int key, Qt::KeyboardModifiers modifiers, const char* text) {
      QKeyEvent event(QEvent::KeyPress, key, modifiers, QString::fromLatin1(text));
      QCoreApplication::sendEvent(&field, &event);
    };
    press(Qt::Key_7, Qt::NoModifier, "7");
    press(Qt::Key_5, Qt::AltModifier, "5");
    press(Qt::Key_C, Qt::AltModifier, "c");
    press(Qt::Key_0, Qt::AltModifier, "0");
    press(Qt::Key_Percent, Qt::AltModifier | Qt::ShiftModifier, "%");
    press(Qt::Key_3, Qt::AltModifier | Qt::KeypadModifier, "3");
    CHECK(field.text() == "7");
    CHECK(form.PasswordTextBox.text == "7");
    press(Qt::Key_Left, Qt::NoModifier, "");
    press(Qt::Key_Percent, Qt::ShiftModifier, "%");
    CHECK(field.text() == "%7");
  }

  TEST_CASE("a key handler sees each character first and may swallow or replace it") {
    test::ShownConsole desk;
    UserLoginForm& form = desk.console.LoginForm;
    QWidget& window = open(desk, form);
    listen(form.PasswordTextBox.on_key_press, [](int& key) {
      if (key == 'a') key = 'A';
      if (key == 'x') key = 0;
    });
    QTest::keyClicks(&part<QLineEdit>(window, "PasswordTextBox"), "taxi");
    CHECK(form.PasswordTextBox.text.get() == "tAi");
  }

  TEST_CASE("a change handler may put another text in the box") {
    test::ShownConsole desk;
    TraceForm& form = desk.console.DebugForm;
    QWidget& window = open(desk, form);
    auto& text = part<QPlainTextEdit>(window, "Text1");
    form.Text1.text = "one\r\ntwo";
    desk.settle();
    CHECK(text.toPlainText() == "one\ntwo");
    form.Text1.text = std::string(10001, 'x');
    desk.settle();
    CHECK(text.toPlainText().isEmpty());
  }

  TEST_CASE("check boxes, lists and choices follow one another both ways") {
    test::ShownConsole desk;
    DisplayDataForm& form = desk.console.DisplayOptionForm;
    form.on_load.forget_handler();
    QWidget& window = open(desk, form);

    auto& line = part<QCheckBox>(window, "LineCheck(3)");
    int clicks = 0;
    listen(form.LineCheck(3).on_click, [&] { ++clicks; });
    const int before = form.LineCheck(3).value;
    line.click();
    CHECK(form.LineCheck(3).value == 1 - before);
    CHECK(clicks == 1);
    form.LineCheck(3).value = before;
    desk.settle();
    CHECK(line.isChecked() == (before != 0));

    form.List1.list = std::vector<std::string>{"Time", "City", "Comments"};
    form.List1.on_click.forget_handler();
    desk.settle();
    auto& order = part<QListWidget>(window, "List1");
    CHECK(order.count() == 3);
    order.setCurrentRow(2);
    CHECK(form.List1.list_index == 2);

    form.MessageGroupSelector.list = std::vector<std::string>{"Group 1", "Group 2"};
    form.MessageGroupSelector.list_index = 1;
    desk.settle();
    CHECK(part<QComboBox>(window, "MessageGroupSelector").currentIndex() == 1);
    form.on_unload.forget_handler();
  }

  TEST_CASE("a widget of an array waits hidden for its element") {
    test::ShownConsole desk;
    DisplayDataForm& form = desk.console.DisplayOptionForm;
    form.on_load.forget_handler();
    QWidget& window = open(desk, form);
    const int next = form.LineCheck.upper_bound();
    auto* waiting = window.findChild<QCheckBox*>(QStringLiteral("LineCheck_%1").arg(next));
    REQUIRE(waiting != nullptr);
    CHECK_FALSE(waiting->isVisible());
    form.LineCheck.load(next);
    form.LineCheck(next).visible = true;
    desk.settle();
    CHECK(waiting->objectName() == QStringLiteral("LineCheck(%1)").arg(next));
    CHECK(waiting->isVisible());
    form.on_unload.forget_handler();
  }

  TEST_CASE("a grid shows its cells and its selection, with row 0 as header") {
    test::ShownConsole desk;
    ShowDataForm& form = desk.console.Form2;
    QWidget& window = open(desk, form);
    auto& table = part<QTableWidget>(window, "Grid1");
    form.Grid1.set_cell(0, 2, "Words");
    form.Grid1.set_cell(3, 2, "News");
    desk.settle();
    CHECK(table.horizontalHeaderItem(2)->text() == "Words");
    REQUIRE(table.item(2, 2) != nullptr);
    CHECK(table.item(2, 2)->text() == "News");
    table.setCurrentCell(4, 1);
    CHECK(form.Grid1.row == 5);
    CHECK(form.Grid1.col == 1);
    form.Grid1.select(2, 0);
    desk.settle();
    CHECK(table.currentRow() == 1);
    CHECK(table.currentColumn() == 0);
  }

  TEST_CASE("the caller's data take the room for what is known of the caller, and keep it") {
    test::ShownConsole desk;
    CallerDataForm& form = desk.console.Form4;
    const QWidget& window = open(desk, form);
    const int narrow = window.width();
    form.MemoryLabel.caption = "Dev Patel";
    form.MemoryLabel.visible = true;
    form.MemoryFill.visible = true;
    desk.settle();
    const int wide = window.width();
    CHECK(wide > narrow + 100);
    CHECK(window.rect().contains(
        window.findChild<QWidget*>(QStringLiteral("MemoryLabel"))->geometry()));
    form.MemoryLabel.visible = false;
    form.MemoryFill.visible = false;
    desk.settle();
    CHECK(window.width() == wide);
  }

  TEST_CASE("a dialog with menus has them in its window") {
    test::ShownConsole desk;
    open(desk, desk.console.Form2);
    MenuTree* menus = desk.desktop.dialog(desk.console.Form2)->menus();
    REQUIRE(menus != nullptr);
    CHECK(menus->action_of(desk.console.Form2.SaveAs) != nullptr);
    CHECK(desk.desktop.dialog(desk.console.MyMsgbox)->menus() == nullptr);
  }

  TEST_CASE("the filter of a file question is written as Qt wants it") {
    CHECK(qt_filter("All Files (*.*)|*.*|Lineweir Database Files (*.lwb)|*.lwb") ==
          "All Files (*);;Lineweir Database Files (*.lwb)");
    CHECK(qt_filter("Text Files(*.txt)|*.txt") == "Text Files (*.txt)");
    CHECK(qt_filter("Two|*.a;*.b") == "Two (*.a *.b)");
    CHECK(qt_filter("").isEmpty());
    CHECK(qt_filter("odd").isEmpty());
  }
}

}  // namespace
}  // namespace lineweir

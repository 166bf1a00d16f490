#include <doctest/doctest.h>

#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTableWidget>

#include "clocks/show_plan.h"
#include "pixels.h"
#include "shown_console.h"

namespace lineweir {
namespace {

// The plan's editor in its window, worked with real keys.
struct ShownEditor : test::ShownConsole {
  ShownEditor() { open(); }

  void open() {
    console.Lineweir.ShowData.on_click();
    settle();
    window().activateWindow();
    settle();
  }

  QWidget& window() { return *desktop.dialog(console.Form2)->window(); }

  template <class Widget>
  Widget& part(const char* name) {
    auto* found = window().findChild<Widget*>(QString::fromLatin1(name));
    if (found == nullptr) throw std::runtime_error(std::string("no widget ") + name);
    return *found;
  }
  QLineEdit& box(const char* name) { return part<QLineEdit>(name); }
  QTableWidget& grid(int number) { return part<QTableWidget>(number == 1 ? "Grid1" : "Grid2"); }

  void type(QWidget& widget, const char* keys) {
    widget.setFocus(Qt::TabFocusReason);
    QTest::keyClicks(&widget, QString::fromLatin1(keys));
    settle();
  }
  void press(QWidget& widget, Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    QTest::keyClick(&widget, key, modifiers);
    settle();
  }

  static QString text(const QTableWidget& grid, int row, int column) {
    const QTableWidgetItem* item = grid.item(row - 1, column);
    return item == nullptr ? QString() : item->text();
  }
};

TEST_SUITE("plan editor") {
  TEST_CASE("the focus is in the first box, each time the editor is opened") {
    ShownEditor desk;
    CHECK(desk.window().focusWidget() == &desk.box("StartTime"));
    desk.type(desk.grid(2), "1");
    desk.console.Form2.CancelOption.on_click();
    desk.settle();
    desk.open();
    CHECK(desk.window().focusWidget() == &desk.box("StartTime"));
    CHECK(desk.console.Form2.focused() == &desk.console.Form2.StartTime);
  }

  TEST_CASE("what is typed in a time box becomes a time, with the caret behind it") {
    ShownEditor desk;
    desk.type(desk.box("StartTime"), "a24x3100 9");
    CHECK(desk.box("StartTime").text() == "23:10:09");
    CHECK(desk.box("StartTime").cursorPosition() == 8);
    desk.press(desk.box("StartTime"), Qt::Key_Backspace);
    CHECK(desk.box("StartTime").text() == "23:10:0");
  }

  TEST_CASE("Tab goes from box to box, and a grid's keys stay in the grids") {
    ShownEditor desk;
    desk.press(desk.box("StartTime"), Qt::Key_Tab);
    CHECK(desk.box("Text1").hasFocus());
    desk.press(desk.box("Text1"), Qt::Key_Tab);
    QTableWidget& grid = desk.grid(1);
    CHECK(grid.hasFocus());
    desk.press(grid, Qt::Key_Tab);
    CHECK(grid.hasFocus());
    CHECK(grid.currentRow() == 1);
    CHECK(grid.currentColumn() == 1);
    desk.press(grid, Qt::Key_Backtab, Qt::ShiftModifier);
    CHECK(desk.box("Text1").hasFocus());
  }

  TEST_CASE("a cell takes a time, Enter goes down and the end becomes the next start") {
    ShownEditor desk;
    QTableWidget& grid = desk.grid(1);
    desk.type(grid, "101500");
    CHECK(ShownEditor::text(grid, 1, 1) == "10:15:00");
    desk.press(grid, Qt::Key_Return);
    CHECK(grid.currentRow() == 1);
    CHECK(ShownEditor::text(grid, 2, 0) == "10:15:00");
    desk.press(grid, Qt::Key_Right);
    desk.type(grid, "Caf");
    QKeyEvent accent(QEvent::KeyPress, Qt::Key_Eacute, Qt::NoModifier, QStringLiteral(u"é"));
    QCoreApplication::sendEvent(&grid, &accent);
    desk.settle();
    CHECK(desk.console.Form2.Grid1.cell(2, 2) == "Caf\xE9");
    CHECK(ShownEditor::text(grid, 2, 2) == QStringLiteral(u"Café"));
    desk.press(grid, Qt::Key_Backspace);
    CHECK(ShownEditor::text(grid, 2, 2) == "Caf");
  }

  TEST_CASE("the arrows move the selection, which the form knows") {
    ShownEditor desk;
    QTableWidget& grid = desk.grid(1);
    grid.setFocus();
    desk.press(grid, Qt::Key_Down);
    desk.press(grid, Qt::Key_Down);
    desk.press(grid, Qt::Key_Right);
    CHECK(desk.console.Form2.Grid1.row == 3);
    CHECK(desk.console.Form2.Grid1.col == 2);
    desk.press(grid, Qt::Key_Up);
    CHECK(desk.console.Form2.Grid1.row == 2);
  }

  TEST_CASE("behind row 20 the rows and the focus go on in the other grid") {
    ShownEditor desk;
    desk.grid(1).setFocus();
    desk.grid(1).setCurrentCell(19, 2);
    desk.press(desk.grid(1), Qt::Key_Down);
    CHECK(desk.grid(2).hasFocus());
    CHECK(desk.grid(2).currentRow() == 0);
    CHECK(desk.grid(2).currentColumn() == 2);
    desk.grid(2).setCurrentCell(19, 1);
    desk.press(desk.grid(2), Qt::Key_Tab);
    CHECK(desk.grid(1).hasFocus());
    CHECK(desk.grid(1).currentRow() == 0);
    CHECK(desk.grid(1).currentColumn() == 1);
  }

  TEST_CASE("a click selects the cell that is typed in") {
    ShownEditor desk;
    QTableWidget& grid = desk.grid(2);
    const QPoint cell = grid.visualRect(grid.model()->index(4, 1)).center();
    QTest::mouseClick(grid.viewport(), Qt::LeftButton, {}, cell);
    desk.settle();
    CHECK(grid.hasFocus());
    CHECK(desk.console.Form2.Grid2.row == 5);
    desk.type(grid, "12");
    CHECK(ShownEditor::text(grid, 5, 1) == "12:");
  }

  TEST_CASE("an open menu leaves the grid its focus and its commands") {
    ShownEditor desk;
    QTableWidget& grid = desk.grid(1);
    desk.type(grid, "101500");
    REQUIRE(desk.console.Form2.InsertRow.enabled);
    QFocusEvent to_menu_bar(QEvent::FocusOut, Qt::MenuBarFocusReason);
    QCoreApplication::sendEvent(&grid, &to_menu_bar);
    CHECK(desk.console.Form2.InsertRow.enabled);
    desk.console.Form2.InsertRow.on_click();
    desk.settle();
    CHECK(ShownEditor::text(grid, 1, 1) == "");
    CHECK(ShownEditor::text(grid, 2, 1) == "10:15:00");
  }

  TEST_CASE("after a file command the focus is where the form says") {
    ShownEditor desk;
    desk.type(desk.grid(1), "1");
    desk.platform.dialogs.answer_file("other.txt");
    desk.console.Form2.New.on_click();
    desk.settle();
    CHECK(desk.window().isVisible());
    CHECK(desk.box("StartTime").hasFocus());
    CHECK(desk.part<QLabel>("Label4").text() == "other.txt");
    CHECK(ShownEditor::text(desk.grid(1), 1, 1) == "");
  }

  TEST_CASE("both grids show all their rows and columns at once") {
    ShownEditor desk;
    for (const int number : {1, 2}) {
      QTableWidget& grid = desk.grid(number);
      CHECK(grid.viewport()->rect().contains(grid.visualRect(grid.model()->index(19, 2))));
      CHECK(grid.columnWidth(0) >= 67);
      CHECK(grid.columnWidth(2) >= 166);
    }
  }

  TEST_CASE("the headings tell from until and stay, whatever the plan and the window's size") {
    ShownEditor desk;
    const auto headings = [](QTableWidget& grid) {
      QStringList texts;
      for (int column = 0; column < grid.columnCount(); ++column) {
        texts += grid.horizontalHeaderItem(column)->text();
      }
      return texts;
    };
    const QStringList told = {"From", "Until", "Text"};
    CHECK(headings(desk.grid(1)) == told);
    CHECK(headings(desk.grid(2)) == told);
    desk.type(desk.box("StartTime"), "100000");
    desk.type(desk.box("Text1"), "110000");
    desk.type(desk.grid(1), "110000");
    desk.press(desk.grid(1), Qt::Key_Return);
    REQUIRE(desk.console.Form2.Grid1.cell(0, 0) == "");
    CHECK(headings(desk.grid(1)) == told);

    desk.window().resize(desk.window().width(), desk.window().height() / 2);
    desk.settle();
    QTableWidget& grid = desk.grid(1);
    grid.setCurrentCell(19, 1);
    desk.settle();
    CHECK(grid.horizontalHeader()->isVisible());
    const QRect header(grid.horizontalHeader()->mapTo(&desk.window(), QPoint()),
                       grid.horizontalHeader()->size());
    CHECK(desk.window().rect().contains(header));
    CHECK(grid.viewport()->rect().contains(grid.visualRect(grid.model()->index(19, 1))));
  }

  TEST_CASE("a time is typed on the 24-hour clock and shown as the clock shows it") {
    ShownEditor desk;
    QTableWidget& grid = desk.grid(1);
    const auto shown = [&](int row, int column) {
      const QRect cell = grid.visualRect(grid.model()->index(row - 1, column));
      return grid.viewport()->grab(cell).toImage();
    };
    desk.type(grid, "141500");
    const QImage typed = shown(1, 1);
    desk.press(grid, Qt::Key_Return);
    CHECK(ShownEditor::text(grid, 1, 1) == "14:15:00");
    CHECK(grid.item(0, 1)->data(Qt::AccessibleTextRole).toString() == "02:15:00 PM");
    desk.box("StartTime").setFocus();
    desk.settle();
    CHECK(test::differing_pixels(typed, shown(1, 1)) > 0);
    const int needed = grid.fontMetrics().horizontalAdvance("02:15:00 PM");
    CHECK(grid.columnWidth(1) >= needed + 10);
    desk.type(desk.box("StartTime"), "130000");
    CHECK(desk.part<QLabel>("StartShown").text() == "01:00:00 PM");
    desk.press(desk.box("StartTime"), Qt::Key_Backspace);
    CHECK(desk.part<QLabel>("StartShown").text() == "");
  }

  TEST_CASE("a row that is past is told beside the button that saves, and a key leads to it") {
    ShownEditor desk;
    QTableWidget& grid = desk.grid(2);
    auto& key = desk.part<QPushButton>("PastRow");
    CHECK_FALSE(key.isVisible());
    desk.type(grid, "093000");
    desk.press(grid, Qt::Key_Return);
    CHECK(desk.part<QLabel>("PastLabel").text() ==
          "The row until 09:30:00 AM is already past today.");
    REQUIRE(key.isVisible());
    key.setFocus(Qt::TabFocusReason);
    QTest::keyClick(&key, Qt::Key_Space);
    desk.settle();
    CHECK(grid.hasFocus());
    CHECK(grid.currentRow() == 0);
    CHECK(grid.currentColumn() == 1);
    CHECK(ShownEditor::text(grid, 1, 1) == "09:30:00");
  }

  TEST_CASE("a message about the plan is in the user's hands beside it") {
    ShownEditor desk;
    desk.console.messages.ShowMessage("Times may not be later than Show End!");
    desk.settle();
    QWidget& message = *desk.desktop.dialog(desk.console.MyMsgbox)->window();
    auto* button = message.findChild<QPushButton*>("OKButton");
    REQUIRE(button != nullptr);
    QTest::mouseClick(message.windowHandle(), Qt::LeftButton, {},
                      button->mapTo(&message, button->rect().center()));
    desk.settle();
    CHECK_FALSE(desk.console.MyMsgbox.visible);
    CHECK(desk.window().isVisible());
  }

  TEST_CASE("a message that was there before the editor stays in the user's hands") {
    test::ShownConsole desk;
    desk.console.messages.ShowMessage("Could Not Open Port");
    desk.settle();
    desk.console.Lineweir.ShowData.on_click();
    desk.settle();
    desk.platform.loop.advance(platform::Milliseconds(1000));
    desk.settle();
    QWidget& message = *desk.desktop.dialog(desk.console.MyMsgbox)->window();
    auto* button = message.findChild<QPushButton*>("OKButton");
    QTest::mouseClick(message.windowHandle(), Qt::LeftButton, {},
                      button->mapTo(&message, button->rect().center()));
    desk.settle();
    CHECK_FALSE(desk.console.MyMsgbox.visible);
  }
}

TEST_SUITE("set time") {
  TEST_CASE("Escape cancels, and the box is empty the next time, with the focus in it") {
    test::ShownConsole desk;
    for (int time = 0; time < 2; ++time) {
      desk.console.Lineweir.Clock.on_click();
      desk.settle();
      QWidget& window = *desk.desktop.dialog(desk.console.Form3)->window();
      window.activateWindow();
      desk.settle();
      auto* box = window.findChild<QLineEdit*>("Text1");
      REQUIRE(box != nullptr);
      CHECK(window.focusWidget() == box);
      CHECK(box->text() == "");
      QTest::keyClicks(box, "0920");
      desk.settle();
      CHECK(box->text() == "09:20:");
      QTest::keyClick(box, Qt::Key_Escape);
      desk.settle();
      CHECK_FALSE(desk.console.Form3.visible);
    }
    CHECK(desk.platform.clock.take_settings().empty());
  }

  TEST_CASE("a full time and Enter set the clock by the half of the day") {
    test::ShownConsole desk;
    desk.console.Lineweir.Clock.on_click();
    desk.settle();
    QWidget& window = *desk.desktop.dialog(desk.console.Form3)->window();
    auto* box = window.findChild<QLineEdit*>("Text1");
    auto* afternoon = window.findChild<QRadioButton*>("PM");
    REQUIRE(afternoon != nullptr);
    afternoon->click();
    QTest::keyClicks(box, "092008");
    QTest::keyClick(box, Qt::Key_Return);
    const auto settings = desk.platform.clock.take_settings();
    REQUIRE(settings.size() == 1);
    CHECK(settings.front() == platform::DateTime{2026, 1, 5, 21, 20, 8});
    CHECK_FALSE(desk.console.Form3.visible);
  }
}

}  // namespace
}  // namespace lineweir

#include <doctest/doctest.h>

#include <QAccessible>
#include <QCheckBox>
#include <QComboBox>
#include <QFile>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QScrollBar>
#include <QTableView>
#include <QTemporaryDir>

#include "base/failure.h"
#include "desktop/pdf_tables.h"
#include "shown_console.h"
#include "support/call_log_file.h"
#include "support/failure_number.h"

namespace lineweir {
namespace {

// The viewer in its window, worked with real keys and clicks.
struct ShownViewer : test::ShownConsole {
  explicit ShownViewer(int calls = 3) {
    test::choose_log(*this);
    log_calls(0, calls);
    console.Lineweir.ShowDatabaseMenuItem.on_click();
    settle();
    window().activateWindow();
    work();
  }

  void log_calls(int first, int count) {
    const auto database = platform.databases.open(test::log_path);
    const auto rows = database->open_recordset(std::string(call_log_table));
    for (int i = first; i < first + count; ++i) {
      rows->add_new();
      rows->set_field(0, "Caller " + std::to_string(i));
      rows->set_field(2, i % 2 == 0 ? "Salem" : "Reno");
      rows->update();
    }
  }

  // What is under way comes to its end, and what was logged is seen.
  void work() {
    platform.loop.advance(platform::Milliseconds(1000));
    settle();
  }

  QWidget& window() { return *desktop.dialog(console.DatabaseViewer)->window(); }
  template <class Widget>
  Widget& part(const char* name) {
    auto* found = window().findChild<Widget*>(QString::fromLatin1(name));
    if (found == nullptr) throw std::runtime_error(std::string("no widget ") + name);
    return *found;
  }
  QTableView& grid() { return part<QTableView>("DBGrid1"); }
  QString cell(int row, int column) { return grid().model()->index(row, column).data().toString(); }
  int rows() { return grid().model()->rowCount(); }
};

TEST_SUITE("database viewer") {
  TEST_CASE("it opens with the focus in the search box and the newest call on top") {
    ShownViewer desk;
    CHECK(desk.window().isVisible());
    CHECK(desk.part<QLineEdit>("SearchText").hasFocus());
    CHECK(desk.rows() == 3);
    CHECK(desk.cell(0, 0) == "Caller 2");
    CHECK(desk.grid().model()->headerData(13, Qt::Horizontal).toString() == "Sponsor");
    CHECK(desk.part<QLabel>("CountLabel").text() == "3 calls");
  }

  TEST_CASE("typed words find their calls, Tab leads to the grid, the arrows show the details") {
    ShownViewer desk;
    QTest::keyClicks(&desk.part<QLineEdit>("SearchText"), "salem");
    desk.work();
    CHECK(desk.rows() == 2);
    CHECK(desk.part<QLabel>("CountLabel").text() == "2 of 3 calls");
    for (int i = 0; i < 3; ++i) {
      QTest::keyClick(desk.window().focusWidget(), Qt::Key_Tab);
      desk.settle();
    }
    REQUIRE(desk.grid().hasFocus());
    QTest::keyClick(&desk.grid(), Qt::Key_Down);
    desk.settle();
    const int row = desk.console.DatabaseViewer.DBGrid1.row;
    REQUIRE(row > 0);
    CHECK(desk.part<QLabel>("DetailText(0)").text() == desk.cell(row - 1, 0));
    CHECK(desk.part<QLabel>("DetailText(2)").text() == "Salem");
    QTest::keyClick(&desk.grid(), Qt::Key_Tab);
    CHECK(desk.part<QPushButton>("ImportButton").hasFocus());
  }

  TEST_CASE("the grid keeps its size while calls are looked for, come in and are shown") {
    ShownViewer desk;
    const QRect place = desk.grid().geometry();
    CHECK(place.height() > desk.window().height() / 2);
    QTest::keyClicks(&desk.part<QLineEdit>("SearchText"), "salemx");
    desk.work();
    CHECK(desk.rows() == 0);
    CHECK(desk.grid().geometry() == place);
    desk.part<QLineEdit>("SearchText").clear();
    desk.work();
    CHECK(desk.grid().geometry() == place);
    desk.log_calls(3, 60);
    desk.work();
    CHECK(desk.rows() == 63);
    CHECK(desk.grid().geometry() == place);

    const auto database = desk.platform.databases.open(test::log_path);
    const auto rows = database->open_recordset(std::string(call_log_table));
    rows->add_new();
    rows->set_field(0, std::string(30, 'W'));
    rows->set_field(6, std::string(100, 'W'));
    rows->set_field(13, std::string(100, 'W'));
    rows->update();
    desk.work();
    desk.grid().selectRow(0);
    desk.settle();
    CHECK(desk.part<QLabel>("DetailText(0)").text() == QString(30, 'W'));
    CHECK(desk.grid().geometry() == place);
  }

  TEST_CASE("a letter in the grid doesn't make it look through all its rows") {
    ShownViewer desk(2000);
    desk.grid().setFocus();
    desk.grid().selectRow(0);
    QTest::keyClicks(&desk.grid(), "Caller 1");
    desk.settle();
    CHECK(desk.console.DatabaseViewer.DBGrid1.row == 1);
  }

  TEST_CASE("a click on a heading sorts and shows so, another turns the order") {
    ShownViewer desk;
    QHeaderView& header = *desk.grid().horizontalHeader();
    const QPoint city(header.sectionViewportPosition(2) + 20, header.height() / 2);
    QTest::mouseClick(header.viewport(), Qt::LeftButton, {}, city);
    desk.work();
    CHECK(desk.cell(0, 2) == "Reno");
    CHECK(header.sortIndicatorSection() == 2);
    CHECK(header.sortIndicatorOrder() == Qt::AscendingOrder);
    CHECK(desk.part<QComboBox>("SortList").currentText() == "City");
    QTest::mouseClick(header.viewport(), Qt::LeftButton, {}, city);
    desk.work();
    CHECK(desk.cell(0, 2) == "Salem");
    CHECK(header.sortIndicatorOrder() == Qt::DescendingOrder);
    CHECK(desk.part<QCheckBox>("SortDown").isChecked());
  }

  TEST_CASE("a new call comes into sight at the top; further down what is read stays in place") {
    ShownViewer desk(500);
    desk.log_calls(500, 1);
    desk.work();
    CHECK(desk.cell(0, 0) == "Caller 500");
    CHECK(desk.grid().verticalScrollBar()->value() == 0);
    desk.grid().verticalScrollBar()->setValue(100);
    const QString read = desk.grid().indexAt({5, 5}).data().toString();
    desk.grid().selectRow(110);
    const QString selected = desk.cell(110, 0);
    desk.log_calls(501, 7);
    desk.work();
    CHECK(desk.rows() == 508);
    CHECK(desk.grid().indexAt({5, 5}).data().toString() == read);
    CHECK(desk.cell(desk.grid().currentIndex().row(), 0) == selected);
    CHECK(desk.console.DatabaseViewer.DBGrid1.row == desk.grid().currentIndex().row() + 1);
    CHECK(desk.part<QLabel>("DetailText(0)").text() == selected);
  }

  TEST_CASE("Escape closes the viewer") {
    ShownViewer desk;
    QTest::keyClick(&desk.window(), Qt::Key_Escape);
    desk.settle();
    CHECK_FALSE(desk.console.DatabaseViewer.visible);
  }

  TEST_CASE("everything has a name for those who can't see it") {
    ShownViewer desk;
    for (const char* name : {"SearchText", "SortList", "SortDown", "DBGrid1", "ImportButton",
                             "ExportButton", "PrintButton", "ExitViewer"}) {
      CAPTURE(name);
      const auto* spoken = QAccessible::queryAccessibleInterface(&desk.part<QWidget>(name));
      REQUIRE(spoken != nullptr);
      CHECK_FALSE(spoken->text(QAccessible::Name).isEmpty());
    }
  }

  TEST_CASE("an import is looked at and then stored, by keys") {
    ShownViewer desk;
    desk.platform.files.replace("old.csv", "Caller Name,City\r\nAnn,Salem\r\nBob,Reno\r\n");
    desk.platform.dialogs.answer_file("old.csv");
    QTest::keyClick(&desk.part<QPushButton>("ImportButton"), Qt::Key_Return);
    desk.work();
    QWidget& preview = *desk.desktop.dialog(desk.console.ImportPreview)->window();
    REQUIRE(preview.isVisible());
    CHECK(preview.findChild<QTableView*>("PreviewGrid")->model()->rowCount() == 2);
    CHECK(preview.findChild<QLabel*>("ResultLabel")->text() == "2 calls can be imported.");
    auto* button = preview.findChild<QPushButton*>("ImportOk");
    CHECK(preview.focusWidget() == button);
    QTest::keyClick(button, Qt::Key_Return);
    desk.work();
    CHECK_FALSE(preview.isVisible());
    CHECK(desk.rows() == 5);
    CHECK(desk.cell(0, 0) == "Bob");
  }
}

TEST_SUITE("printed tables") {
  TEST_CASE("a table becomes a PDF document with as many pages as it needs, piece by piece") {
    PdfTables printer;
    auto table = printer.begin("Call log", {{"Name", 10}, {"Comments", 30}});
    std::string document;
    for (int row = 0; row < 200; ++row) {
      table->add_row({"Jos\xC3\xA9", std::string(100, 'x') + " and more words"});
      document += table->take();
    }
    const std::size_t so_far = document.size();
    CHECK(so_far > 0);
    table->finish();
    document += table->take();
    CHECK(document.size() > so_far);
    CHECK(table->take().empty());
    CHECK(document.starts_with("%PDF-"));
    CHECK(document.find("%%EOF") != std::string::npos);
    CHECK(QByteArray::fromStdString(document).count("/Type /Page\n") > 3);
  }
}

}  // namespace
}  // namespace lineweir

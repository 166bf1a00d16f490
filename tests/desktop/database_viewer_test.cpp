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
#include "pixels.h"
#include "shown_console.h"
#include "support/call_log_file.h"
#include "support/failure_number.h"

namespace lineweir {
namespace {

// Where the columns stand in the window.
constexpr int name_column = 2;
constexpr int city_column = 4;
constexpr int sponsor_column = 8;

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
  QString name(int row) { return cell(row, name_column); }
  int rows() { return grid().model()->rowCount(); }
};

TEST_SUITE("database viewer") {
  TEST_CASE("it opens with the focus in the search box and the newest call on top") {
    ShownViewer desk;
    CHECK(desk.window().isVisible());
    CHECK(desk.part<QLineEdit>("SearchText").hasFocus());
    CHECK(desk.rows() == 3);
    CHECK(desk.name(0) == "Caller 2");
    CHECK(desk.grid().model()->headerData(sponsor_column, Qt::Horizontal).toString() == "Sponsor");
    CHECK(desk.part<QLabel>("CountLabel").text() == "3 calls");
  }

  TEST_CASE("typed words find their calls, Tab leads to the grid, the arrows show the details") {
    ShownViewer desk;
    QTest::keyClicks(&desk.part<QLineEdit>("SearchText"), "salem");
    desk.work();
    CHECK(desk.rows() == 2);
    CHECK(desk.part<QLabel>("CountLabel").text() == "2 of 3 calls");
    CHECK(desk.part<QLabel>("DetailText(2)").text() == desk.name(0));
    QTest::keyClick(desk.window().focusWidget(), Qt::Key_Tab);
    desk.settle();
    REQUIRE(desk.grid().hasFocus());
    QTest::keyClick(&desk.grid(), Qt::Key_Down);
    desk.settle();
    const int row = desk.console.DatabaseViewer.DBGrid1.row;
    REQUIRE(row == 2);
    CHECK(desk.part<QLabel>("DetailText(2)").text() == desk.name(row - 1));
    CHECK(desk.part<QLabel>("DetailText(4)").text() == "Salem");
    QTest::keyClick(&desk.grid(), Qt::Key_Tab);
    CHECK(desk.part<QComboBox>("SortList").hasFocus());
  }

  TEST_CASE("it opens with the newest call selected and told whole") {
    ShownViewer desk;
    CHECK(desk.grid().currentIndex().row() == 0);
    CHECK(desk.part<QLabel>("DetailText(2)").text() == "Caller 2");
  }

  TEST_CASE("Down in the search goes on in the table") {
    ShownViewer desk;
    QTest::keyClick(&desk.part<QLineEdit>("SearchText"), Qt::Key_Down);
    desk.settle();
    CHECK(desk.grid().hasFocus());
    CHECK(desk.grid().currentIndex().row() == 1);
    CHECK(desk.part<QLabel>("DetailText(2)").text() == "Caller 1");
  }

  TEST_CASE("when it was and who it was stand first, where the caller lives last") {
    ShownViewer desk;
    const auto heading = [&](int column) {
      return desk.grid().model()->headerData(column, Qt::Horizontal).toString();
    };
    CHECK(heading(0) == "Date");
    CHECK(heading(1) == "Placed on air");
    CHECK(heading(2) == "Caller name");
    CHECK(heading(3) == "Comments");
    CHECK(heading(12) == "Street address");
    CHECK(heading(13) == "State");
    QHeaderView& header = *desk.grid().horizontalHeader();
    for (int column = 0; column < header.count(); ++column) {
      CAPTURE(column);
      CHECK(header.sectionSize(column) >= header.sectionSizeHint(column));
    }
  }

  TEST_CASE("found words are marked in the cells, and brought into sight in a long text") {
    ShownViewer desk;
    const auto marked = [&](const QModelIndex& index) {
      const QRect cell = desk.grid().visualRect(index);
      return test::pixels_of(desk.grid().viewport()->grab(cell).toImage(), signal_yellow);
    };
    const auto database = desk.platform.databases.open(test::log_path);
    const auto rows = database->open_recordset(std::string(call_log_table));
    rows->add_new();
    rows->set_field(0, "Ann");
    rows->set_field(6, std::string(80, 'x') + " bridge");
    rows->update();
    desk.work();
    const auto* model = desk.grid().model();
    CHECK(marked(model->index(0, 3)) == 0);
    QTest::keyClicks(&desk.part<QLineEdit>("SearchText"), "BRIDGE");
    desk.work();
    REQUIRE(desk.rows() == 1);
    CHECK(marked(model->index(0, 3)) > 100);
    CHECK(marked(model->index(0, 2)) == 0);
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
    CHECK(desk.part<QLabel>("DetailText(2)").text() == QString(30, 'W'));
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
    const QPoint city(header.sectionViewportPosition(city_column) + 20, header.height() / 2);
    QTest::mouseClick(header.viewport(), Qt::LeftButton, {}, city);
    desk.work();
    CHECK(desk.cell(0, city_column) == "Reno");
    CHECK(header.sortIndicatorSection() == city_column);
    CHECK(header.sortIndicatorOrder() == Qt::AscendingOrder);
    CHECK(desk.part<QComboBox>("SortList").currentText() == "City");
    QTest::mouseClick(header.viewport(), Qt::LeftButton, {}, city);
    desk.work();
    CHECK(desk.cell(0, city_column) == "Salem");
    CHECK(header.sortIndicatorOrder() == Qt::DescendingOrder);
    CHECK(desk.part<QCheckBox>("SortDown").isChecked());
  }

  TEST_CASE("a new call comes into sight at the top; further down what is read stays in place") {
    ShownViewer desk(500);
    desk.log_calls(500, 1);
    desk.work();
    CHECK(desk.name(0) == "Caller 500");
    CHECK(desk.grid().verticalScrollBar()->value() == 0);
    desk.grid().verticalScrollBar()->setValue(100);
    const auto in_sight = [&] {
      return desk.grid().indexAt({5, 5}).siblingAtColumn(name_column).data().toString();
    };
    const QString read = in_sight();
    REQUIRE_FALSE(read.isEmpty());
    desk.grid().selectRow(110);
    const QString selected = desk.name(110);
    desk.log_calls(501, 7);
    desk.work();
    CHECK(desk.rows() == 508);
    CHECK(in_sight() == read);
    CHECK(desk.name(desk.grid().currentIndex().row()) == selected);
    CHECK(desk.console.DatabaseViewer.DBGrid1.row == desk.grid().currentIndex().row() + 1);
    CHECK(desk.part<QLabel>("DetailText(2)").text() == selected);
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
    CHECK(desk.name(0) == "Bob");
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

#include <doctest/doctest.h>

#include <QApplication>
#include <QCheckBox>
#include <QClipboard>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

#include "shown_console.h"
#include "support/call_log_file.h"

namespace lineweir {
namespace {

template <class Widget>
Widget& part(QWidget& window, const char* name) {
  auto* found = window.findChild<Widget*>(QString::fromLatin1(name));
  if (found == nullptr) throw std::runtime_error(std::string("no widget ") + name);
  return *found;
}

// Form4 in its window, opened for a line and worked with real keys.
struct ShownEntry : test::ShownConsole {
  explicit ShownEntry(int line = 4) { open(line); }

  void open(int line) {
    console.caller_data.show_for_line(line);
    settle();
    form_window().activateWindow();
    settle();
  }

  QWidget& form_window() { return *desktop.dialog(console.Form4)->window(); }
  QLineEdit& box(int entry) {
    return part<QLineEdit>(form_window(), ("TheText(" + std::to_string(entry) + ")").c_str());
  }
  // Keys go to whatever has the focus, as the keyboard's do.
  void type(const char* keys) {
    for (const char* key = keys; *key != '\0'; ++key) {
      QWidget* target = form_window().focusWidget();
      if (*key == '\n') {
        QTest::keyClick(target, Qt::Key_Return);
      } else {
        QTest::keyClick(target, *key);
      }
      settle();
    }
  }
  const std::string& shown_name(int line) { return console.Lineweir.LineName(line).caption; }
};

TEST_SUITE("caller data form") {
  TEST_CASE("a caller is typed in with the keyboard alone: Enter goes on and saves in the end") {
    ShownEntry desk;
    CHECK(desk.box(1).hasFocus());
    desk.type("Ann Smith\n5 Main Street\nSalem\nMA\n01970\n555 0100\nKLWR\nf\nBridge\nSports");
    CHECK(desk.box(8).text() == "Female");
    CHECK(desk.shown_name(4) == "");
    desk.type("\n");
    CHECK_FALSE(desk.form_window().isVisible());
    CHECK(desk.shown_name(4) == "Ann Smith");
    CHECK(desk.console.lines.CallerData(4)[CallerField::UserField].starts_with("Sports"));
  }

  TEST_CASE("Tab goes through the fields in use and to the button, in their order") {
    ShownEntry desk(0);
    desk.console.Form4.unload();
    for (const std::size_t off : {0U, 3U, 9U}) desk.console.caller_data.LogFieldOn[off] = false;
    desk.open(0);
    for (const int entry : {2, 3, 5, 6, 7, 8, 9}) {
      CAPTURE(entry);
      CHECK(desk.box(entry).hasFocus());
      QTest::keyClick(desk.form_window().focusWidget(), Qt::Key_Tab);
      desk.settle();
    }
    auto& save = part<QPushButton>(desk.form_window(), "Command3D1");
    CHECK(save.hasFocus());
    QTest::keyClick(&save, Qt::Key_Return);
    desk.settle();
    CHECK_FALSE(desk.form_window().isVisible());
  }

  TEST_CASE("the gender field takes no other key, not even Backspace") {
    ShownEntry desk;
    desk.box(8).setFocus();
    desk.type("x7m q");
    QTest::keyClick(&desk.box(8), Qt::Key_Backspace);
    desk.settle();
    CHECK(desk.box(8).text() == "Male");
    CHECK(desk.console.Form4.TheText(8).text == "Male");
  }

  TEST_CASE("fields that aren't in use are hidden, and the window closes up") {
    ShownEntry desk;
    const int all = desk.form_window().height();
    desk.console.Form4.unload();
    desk.settle();
    for (std::size_t off = 3; off < 10; ++off) desk.console.caller_data.LogFieldOn[off] = false;
    desk.open(4);
    CHECK_FALSE(desk.box(4).isVisible());
    CHECK(desk.box(3).y() < part<QPushButton>(desk.form_window(), "Command3D1").y());
    CHECK(desk.form_window().height() < all);
  }

  TEST_CASE("what was typed is there again after another line and a closed window") {
    ShownEntry desk(2);
    desk.type("Ann");
    desk.open(4);
    CHECK(desk.box(1).text() == "");
    CHECK(desk.box(1).hasFocus());
    desk.type("Bob");
    desk.form_window().close();
    desk.settle();
    CHECK_FALSE(desk.form_window().isVisible());
    desk.open(2);
    CHECK(desk.box(1).text() == "Ann");
    desk.open(4);
    CHECK(desk.box(1).text() == "Bob");
  }

  TEST_CASE(
      "the caller's history comes up quietly beside the fields and can be taken or declined") {
    ShownEntry desk(0);
    test::choose_log(desk);
    const auto database = desk.platform.databases.open(test::log_path);
    const auto rows = database->open_recordset(std::string(call_log_table));
    rows->add_new();
    rows->set_field(0, "Ann Smith");
    rows->set_field(2, "Salem");
    rows->set_field(5, "555 0100");
    rows->set_field(9, "1/2/2026");
    rows->update();
    auto& memory = part<QLabel>(desk.form_window(), "MemoryLabel");
    auto& fill = part<QPushButton>(desk.form_window(), "MemoryFill");
    CHECK_FALSE(memory.isVisible());
    desk.box(6).setFocus();
    desk.type("555-0100");
    CHECK(memory.isVisible());
    CHECK(memory.text().contains("Ann Smith, Salem"));
    CHECK(desk.box(6).hasFocus());
    QTest::keyClick(&desk.box(6), Qt::Key_Escape);
    desk.settle();
    CHECK_FALSE(memory.isVisible());
    CHECK(desk.form_window().isVisible());
    QTest::keyClick(&desk.box(6), Qt::Key_Backspace);
    desk.type("0");
    REQUIRE(fill.isVisible());
    QTest::mouseClick(&fill, Qt::LeftButton);
    desk.settle();
    CHECK(desk.box(1).text() == "Ann Smith");
    CHECK(desk.box(3).text() == "Salem");
    CHECK(desk.box(2).hasFocus());
  }

  TEST_CASE("all texts have room in the window, and none covers another") {
    ShownEntry desk;
    const QRect room = desk.form_window().rect();
    std::vector<QRect> places;
    for (QWidget* widget : desk.form_window().findChildren<QWidget*>()) {
      if (!widget->isVisible() || widget->parentWidget() != &desk.form_window()) continue;
      CAPTURE(widget->objectName().toStdString());
      CHECK(room.contains(widget->geometry()));
      for (const QRect& other : places) CHECK_FALSE(other.intersects(widget->geometry()));
      places.push_back(widget->geometry());
    }
    CHECK(places.size() == 21);
  }
}

TEST_SUITE("caller data form: what its fields take") {
  TEST_CASE("a field that is full takes no more keys, and says so at the foot of the window") {
    ShownEntry desk;
    auto& notice = part<QLabel>(desk.form_window(), "NoticeLabel");
    desk.box(5).setFocus();
    desk.type("123456789012");
    CHECK_FALSE(notice.isVisible());
    const int height = desk.form_window().height();
    desk.type("3");
    CHECK(desk.box(5).text() == "123456789012");
    CHECK(desk.box(5).cursorPosition() == 12);
    CHECK(notice.isVisible());
    CHECK(notice.text() == "ZipCode takes no more than 12 characters");
    CHECK(desk.form_window().height() > height);
    QTest::keyClick(&desk.box(5), Qt::Key_Backspace);
    desk.settle();
    CHECK(desk.box(5).text() == "12345678901");
    CHECK_FALSE(notice.isVisible());
    CHECK(desk.form_window().height() == height);
  }

  TEST_CASE("a character in the middle of a full field pushes none out") {
    ShownEntry desk;
    desk.box(5).setFocus();
    desk.type("123456789012");
    desk.box(5).setCursorPosition(3);
    desk.type("x");
    CHECK(desk.box(5).text() == "123456789012");
    CHECK(desk.box(5).cursorPosition() == 3);
  }

  TEST_CASE("what is pasted is cut where the field is full, and a number goes without separators") {
    ShownEntry desk;
    const auto paste = [&](int entry, const QString& text) {
      QApplication::clipboard()->setText(text);
      desk.box(entry).setFocus();
      QTest::keyClick(&desk.box(entry), Qt::Key_V, Qt::ControlModifier);
      desk.settle();
    };
    desk.box(5).setFocus();
    desk.type("12345");
    desk.box(5).setCursorPosition(2);
    paste(5, "abcdefghijkl");
    CHECK(desk.box(5).text() == "12abcdefg345");
    CHECK(desk.box(5).cursorPosition() == 9);
    paste(6, "+1 (312) 555-0100");
    CHECK(desk.box(6).text() == "+13125550100");
    CHECK(desk.console.Form4.TheText(6).text == "+13125550100");
  }
}

TEST_SUITE("log data form") {
  TEST_CASE("Space changes a box, Enter on Exit stores, Escape cancels") {
    test::ShownConsole desk;
    desk.console.Lineweir.LogDataOptionsMenu.on_click();
    desk.settle();
    QWidget& window = *desk.desktop.dialog(desk.console.LogDataForm)->window();
    window.activateWindow();
    desk.settle();
    auto& city = part<QCheckBox>(window, "CityCheck");
    CHECK(city.isChecked());
    CHECK(city.text() == "City");
    city.setFocus();
    QTest::keyClick(&city, Qt::Key_Space);
    QTest::keyClick(&city, Qt::Key_Escape);
    desk.settle();
    CHECK_FALSE(window.isVisible());
    CHECK(desk.console.caller_data.LogFieldOn[2]);
    desk.console.Lineweir.LogDataOptionsMenu.on_click();
    desk.settle();
    CHECK(city.isChecked());
    QTest::keyClick(&city, Qt::Key_Space);
    QTest::keyClick(&part<QPushButton>(window, "ExitLayout"), Qt::Key_Return);
    desk.settle();
    CHECK_FALSE(window.isVisible());
    CHECK_FALSE(desk.console.caller_data.LogFieldOn[2]);
  }
}

}  // namespace
}  // namespace lineweir

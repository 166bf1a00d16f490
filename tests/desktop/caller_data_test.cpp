#include <doctest/doctest.h>

#include <QApplication>
#include <QCheckBox>
#include <QClipboard>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>

#include "shown_console.h"
#include "support/call_log_file.h"

namespace lineweir {
namespace {

using test::part;

// The chosen log knows one caller, by the number 555 0100.
void log_ann_smith(platform::ScriptedPlatform& platform, std::string_view placed_on_air = "") {
  const auto database = platform.databases.open(test::log_path);
  const auto rows = database->open_recordset(std::string(call_log_table));
  rows->add_new();
  rows->set_field(0, "Ann Smith");
  rows->set_field(2, "Salem");
  rows->set_field(5, "555 0100");
  rows->set_field(9, "1/2/2026");
  if (!placed_on_air.empty()) rows->set_field(10, std::string(placed_on_air));
  rows->update();
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
  template <class Widget>
  Widget& field(int entry) {
    return part<Widget>(form_window(), ("TheText(" + std::to_string(entry) + ")").c_str());
  }
  QLineEdit& box(int entry) { return field<QLineEdit>(entry); }
  QPlainTextEdit& comments() { return field<QPlainTextEdit>(9); }
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
      CHECK(desk.field<QWidget>(entry).hasFocus());
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
    log_ann_smith(desk.platform);
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
    CHECK(desk.form_window().rect().contains(notice.geometry()));
    CHECK(desk.form_window().height() == height);
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

TEST_SUITE("caller data form: comments") {
  TEST_CASE("they stand in three lines, and Enter and Tab lead on from them") {
    ShownEntry desk;
    QPlainTextEdit& comments = desk.comments();
    CHECK(comments.viewport()->height() >= 3 * comments.fontMetrics().lineSpacing());
    comments.setFocus();
    desk.type("Bridge\n");
    CHECK(desk.box(10).hasFocus());
    CHECK(desk.console.Form4.TheText(9).text == "Bridge");
    comments.setFocus();
    QTest::keyClick(&comments, Qt::Key_Return, Qt::ShiftModifier);
    desk.settle();
    CHECK(desk.box(10).hasFocus());
    comments.setFocus();
    QTest::keyClick(&comments, Qt::Key_Tab);
    desk.settle();
    CHECK(desk.box(10).hasFocus());
    CHECK(comments.toPlainText() == "Bridge");
  }

  TEST_CASE("line breaks that are pasted become blanks, on the screen and in the record") {
    ShownEntry desk;
    QApplication::clipboard()->setText(QStringLiteral("One\r\ntwo\nthree"));
    desk.comments().setFocus();
    QTest::keyClick(&desk.comments(), Qt::Key_V, Qt::ControlModifier);
    desk.settle();
    CHECK(desk.comments().toPlainText() == "One two three");
    CHECK(desk.console.Form4.TheText(9).text == "One two three");
    desk.type("!");
    CHECK(desk.console.Form4.TheText(9).text == "One two three!");
  }

  TEST_CASE("they take what height the window has to spare") {
    ShownEntry desk;
    const int height = desk.comments().height();
    const int first = desk.box(1).y();
    desk.form_window().resize(desk.form_window().width(), desk.form_window().height() + 100);
    desk.settle();
    CHECK(desk.comments().height() == height + 100);
    CHECK(desk.box(1).y() == first);
  }
}

TEST_SUITE("caller data form: with the memory of earlier calls") {
  struct WithMemory : ShownEntry {
    WithMemory() {
      console.Form4.unload();
      test::choose_log(*this);
      open(4);
    }
    std::vector<QRect> places() {
      std::vector<QRect> all;
      for (const QWidget* widget : form_window().findChildren<QWidget*>()) {
        if (widget->parentWidget() == &form_window()) all.push_back(widget->geometry());
      }
      return all;
    }
  };

  TEST_CASE("the number is asked for first, and Tab and Enter follow what is shown") {
    WithMemory desk;
    CHECK(desk.box(6).hasFocus());
    CHECK(desk.box(6).y() < desk.box(1).y());
    CHECK(desk.box(5).y() < desk.box(7).y());
    CHECK(desk.console.Form4.TheText(6).top == caller_row_top(5));
    for (const int entry : {6, 1, 2, 3, 4, 5, 7, 8, 9, 10}) {
      CAPTURE(entry);
      CHECK(desk.field<QWidget>(entry).hasFocus());
      QTest::keyClick(desk.form_window().focusWidget(), Qt::Key_Tab);
      desk.settle();
    }
    desk.box(6).setFocus();
    desk.type("\n");
    CHECK(desk.box(1).hasFocus());
    desk.box(5).setFocus();
    desk.type("\n");
    CHECK(desk.box(7).hasFocus());
  }

  TEST_CASE("where the number stands last of what is in use, Enter saves behind the other field") {
    WithMemory desk;
    desk.console.Form4.unload();
    desk.console.caller_data.LogFieldOn.fill(false);
    for (const std::size_t on : {0U, 5U}) desk.console.caller_data.LogFieldOn[on] = true;
    desk.open(4);
    desk.type("555 0100\nAnn\n");
    CHECK_FALSE(desk.form_window().isVisible());
    CHECK(desk.shown_name(4) == "Ann");
  }

  TEST_CASE("nothing moves when it fills, and nothing when it empties") {
    WithMemory desk;
    log_ann_smith(desk.platform, "10:00:00 AM");
    auto& pane = part<QWidget>(desk.form_window(), "memoryPane");
    auto& hint = part<QLabel>(desk.form_window(), "memoryHint");
    CHECK(pane.isVisible());
    CHECK(hint.isVisible());
    const std::vector<QRect> empty = desk.places();
    const QSize size = desk.form_window().size();
    desk.type("555 0100");
    auto& fill = part<QPushButton>(desk.form_window(), "MemoryFill");
    CHECK(fill.isVisible());
    CHECK_FALSE(hint.isVisible());
    CHECK(desk.places() == empty);
    CHECK(desk.form_window().size() == size);
    CHECK(pane.rect().contains(fill.geometry()));
    QTest::keyClick(desk.form_window().focusWidget(), Qt::Key_Escape);
    desk.settle();
    CHECK(hint.isVisible());
    CHECK(desk.places() == empty);
  }

  TEST_CASE("without a log there is no pane, and the name comes first") {
    ShownEntry desk;
    CHECK_FALSE(part<QWidget>(desk.form_window(), "memoryPane").isVisible());
    CHECK(desk.box(1).hasFocus());
    CHECK(desk.box(1).y() < desk.box(6).y());
  }
}

TEST_SUITE("caller data form: save and ready") {
  struct Screener : ShownEntry {
    Screener() {
      console.Form4.unload();
      form().MitelPhone1.checked = true;
      form().ScreenerMode.on_click();
      box_sends("P04");
      open(4);
      platform.comm1.take_writes();
    }
  };

  TEST_CASE("Ctrl+Enter acts once in any field, also while it is held") {
    for (const int entry : {1, 9}) {
      CAPTURE(entry);
      Screener desk;
      desk.type("Ann");
      auto& field = desk.field<QWidget>(entry);
      field.setFocus();
      QWindow* handle = desk.form_window().windowHandle();
      for (const bool repeat : {false, true, true}) {
        QKeyEvent event(QEvent::KeyPress, Qt::Key_Return, Qt::ControlModifier, QStringLiteral("\r"),
                        repeat);
        QCoreApplication::sendEvent(handle, &event);
        desk.settle();
      }
      CHECK_FALSE(desk.form_window().isVisible());
      CHECK(desk.shown_name(4) == "Ann");
      CHECK(desk.platform.comm1.take_writes() == std::vector<std::string>{"S04"});
    }
  }

  TEST_CASE("while the caller isn't at the handset the button is dim and tells why") {
    Screener desk;
    auto& button = part<QPushButton>(desk.form_window(), "SaveReady");
    CHECK(button.isVisible());
    CHECK(button.isEnabled());
    desk.box_sends("H04");
    desk.settle();
    CHECK_FALSE(button.isEnabled());
    CHECK(button.toolTip() == "Line 5 isn't at this console's handset");
    CHECK(button.accessibleDescription() == button.toolTip());
  }
}

TEST_SUITE("caller data form: its place") {
  TEST_CASE("it opens off the keys that answer and make ready, and stays where the user puts it") {
    ShownEntry desk;
    const auto off_the_keys = [&] {
      for (const Picture* key : {&desk.form().NextButton, &desk.form().NextToConfButton}) {
        const ElementWidget& widget = desk.widget(*key);
        const QRect place(widget.mapToGlobal(QPoint(0, 0)), widget.size());
        CHECK_FALSE(place.intersects(desk.form_window().frameGeometry()));
      }
    };
    off_the_keys();
    desk.console.Form4.unload();
    desk.settle();
    desk.window().move(desk.window().pos() + QPoint(40, 60));
    desk.open(4);
    off_the_keys();

    const QPoint chosen(7, 11);
    desk.form_window().move(chosen);
    desk.settle();
    desk.form_window().close();
    desk.settle();
    desk.open(3);
    CHECK(desk.form_window().pos() == chosen);
  }
}

TEST_SUITE("caller data form: a caller who hangs up") {
  TEST_CASE(
      "the window says so below the fields, which stay where they are, and leads on by keys") {
    ShownEntry desk;
    test::choose_log(desk);
    desk.box_sends("N04");
    desk.settle();
    desk.type("Ann");
    const QRect field = desk.box(1).geometry();
    const QRect save = part<QPushButton>(desk.form_window(), "Command3D1").geometry();
    auto& notice = part<QLabel>(desk.form_window(), "NoticeLabel");
    auto& discard = part<QPushButton>(desk.form_window(), "DiscardCall");
    auto& other = part<QPushButton>(desk.form_window(), "OtherCall");
    CHECK_FALSE(notice.isVisible());
    desk.box_sends("R04");
    desk.settle();
    CHECK(notice.isVisible());
    CHECK(notice.text() == "The caller has hung up");
    CHECK(discard.isVisible());
    CHECK(other.isVisible());
    CHECK(desk.box(1).geometry() == field);
    CHECK(part<QPushButton>(desk.form_window(), "Command3D1").geometry() == save);
    CHECK(desk.box(1).hasFocus());
    CHECK(desk.form_window().rect().contains(notice.geometry()));

    // To the new caller and back. A button pressed by its letter is seen to go down before it
    // clicks.
    const auto press = [&](Qt::Key letter) {
      QTest::keyClick(desk.form_window().focusWidget(), letter, Qt::AltModifier);
    };
    press(Qt::Key_N);
    CHECK(test::wait_for([&] { return desk.box(1).text().isEmpty(); }));
    desk.settle();
    CHECK(desk.box(6).hasFocus());
    CHECK_FALSE(notice.isVisible());
    CHECK_FALSE(discard.isVisible());
    press(Qt::Key_E);
    CHECK(test::wait_for([&] { return desk.box(1).text() == "Ann"; }));
    desk.settle();
    press(Qt::Key_S);
    CHECK(test::wait_for([&] { return !desk.console.Form4.loaded(); }));
    desk.settle();
    CHECK_FALSE(desk.form_window().isVisible());
    desk.platform.loop.run_pending();
    REQUIRE(test::logged_rows(desk).size() == 1);
    CHECK(test::logged_rows(desk)[0][0] == "Ann");
    CHECK(desk.shown_name(4) == "");
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

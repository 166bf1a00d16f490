#include <doctest/doctest.h>

#include <QAccessible>
#include <QClipboard>
#include <QGuiApplication>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QTableView>

#include "platform/icu/icu_transliterator.h"
#include "shown_console.h"
#include "support/call_log_file.h"

namespace lineweir {
namespace {

const CodePage& polish = *find_code_page("windows-1250");
const CodePage& russian = *find_code_page("windows-1251");

const platform::IcuTransliterator& rules() {
  static const platform::IcuTransliterator made;
  return made;
}

// Form4 in the windows of a console with that set, opened for line 4.
struct ShownLetters : test::ShownConsole {
  explicit ShownLetters(const CodePage& page) : ShownConsole(page, &rules()) {
    console.caller_data.show_for_line(4);
    settle();
    window_of("Form4").activateWindow();
    settle();
  }

  QWidget& window_of(const char* form) { return *desktop.window_of(QString::fromLatin1(form)); }
  QLineEdit& box(int entry) {
    return *window_of("Form4").findChild<QLineEdit*>(QStringLiteral("TheText(%1)").arg(entry));
  }
  const std::string& text(int entry) { return console.Form4.TheText(entry).text.get(); }

  // A key for each letter, whatever the keyboard's layout.
  void type(QWidget& target, const QString& letters) {
    for (const QChar letter : letters) {
      for (const auto kind : {QEvent::KeyPress, QEvent::KeyRelease}) {
        QKeyEvent event(kind, letter.unicode(), Qt::NoModifier, letter);
        QCoreApplication::sendEvent(&target, &event);
      }
      settle();
    }
  }
  void paste(QLineEdit& target, const QString& letters) {
    QGuiApplication::clipboard()->setText(letters);
    target.paste();
    settle();
  }
  // Several keys make the letter.
  void compose(QWidget& target, const QString& letter) {
    QInputMethodEvent event;
    event.setCommitString(letter);
    QCoreApplication::sendEvent(&target, &event);
    settle();
  }
};

TEST_SUITE("letters in the windows") {
  TEST_CASE("a language's letters are typed, kept a byte a character, and shown") {
    ShownLetters desk(polish);
    desk.type(desk.box(1), QStringLiteral("Żółć"));
    CHECK(desk.text(1) == "\xAF\xF3\xB3\xE6");
    CHECK(desk.box(1).text() == QStringLiteral("Żółć"));
    desk.compose(desk.box(1), QStringLiteral("ń"));
    CHECK(desk.text(1) == "\xAF\xF3\xB3\xE6\xF1");

    ShownLetters other(russian);
    other.type(other.box(1), QStringLiteral("Щукин"));
    CHECK(other.text(1) == "\xD9\xF3\xEA\xE8\xED");
    CHECK(other.box(1).text() == QStringLiteral("Щукин"));
  }

  TEST_CASE("letters that the set doesn't have are written near them at once") {
    ShownLetters desk(default_code_page());
    desk.paste(desk.box(1), QStringLiteral("Иван Łódź \U0001F600"));
    CHECK(desk.text(1) ==
          "Ivan L\xF3"
          "dz ?");
    CHECK(desk.box(1).text() == QStringLiteral("Ivan Lódz ?"));
    CHECK(desk.box(1).cursorPosition() == 11);
    desk.box(1).setCursorPosition(4);
    desk.type(desk.box(1), QStringLiteral("Ж"));
    CHECK(desk.box(1).text() == QStringLiteral("IvanZ Lódz ?"));
    CHECK(desk.box(1).cursorPosition() == 5);
    CHECK(desk.console.Form4.TheText(1).sel_start == 5);
    desk.paste(desk.box(1), QStringLiteral("中国"));
    CHECK(desk.box(1).text() == QStringLiteral("IvanZzhong guo Lódz ?"));
    CHECK(desk.box(1).cursorPosition() == 14);
  }

  TEST_CASE("a field with rules of its own sees each letter, however it is typed") {
    ShownLetters desk(default_code_page());
    desk.type(desk.box(8), QStringLiteral("ЩЛ中"));
    desk.compose(desk.box(8), QStringLiteral("é"));
    CHECK(desk.box(8).text().isEmpty());
    desk.compose(desk.box(8), QStringLiteral("м"));
    CHECK(desk.box(8).text() == QStringLiteral("Male"));
    CHECK(desk.text(8) == "Male");
  }

  TEST_CASE("rows and screen readers have the letters too") {
    ShownLetters desk(russian);
    Label& name = desk.form().LineName(4);
    name.caption = desk.platform.letters.from_utf8("Иван");
    desk.settle();
    ElementWidget& widget = desk.widget(name);
    CHECK(widget.shown_caption() == QStringLiteral("Иван"));
    CHECK(QAccessible::queryAccessibleInterface(&widget)
              ->text(QAccessible::Name)
              .contains(QStringLiteral("Иван")));
    desk.console.messages.ShowMessage(desk.platform.letters.from_utf8("Привет"));
    desk.settle();
    CHECK(desk.window_of("MyMsgbox").findChild<QLabel*>(QStringLiteral("Label1"))->text() ==
          QStringLiteral("Привет"));
  }

  TEST_CASE("the log's window takes and shows any letters, whatever the set") {
    ShownLetters desk(default_code_page());
    test::choose_log(desk);
    const auto database = desk.platform.databases.open(test::log_path);
    const auto rows = database->open_recordset(std::string(call_log_table));
    for (const char* name : {"Иван Щукин", "Grażyna Żółć", "Ann"}) {
      rows->add_new();
      rows->set_field(0, name);
      rows->update();
    }
    desk.console.Lineweir.ShowDatabaseMenuItem.on_click();
    desk.settle();
    QWidget& window = desk.window_of("DatabaseViewer");
    auto& grid = *window.findChild<QTableView*>(QStringLiteral("DBGrid1"));
    const auto shown = [&grid](int row) { return grid.model()->index(row, 2).data().toString(); };
    CHECK(shown(1) == QStringLiteral("Grażyna Żółć"));
    auto& search = *window.findChild<QLineEdit*>(QStringLiteral("SearchText"));
    desk.type(search, QStringLiteral("щук"));
    desk.platform.loop.advance(platform::Milliseconds(1000));
    desk.settle();
    CHECK(search.text() == QStringLiteral("щук"));
    CHECK(grid.model()->rowCount() == 1);
    CHECK(shown(0) == QStringLiteral("Иван Щукин"));
    grid.selectRow(0);
    desk.settle();
    CHECK(window.findChild<QLabel*>(QStringLiteral("DetailText(2)"))->text() ==
          QStringLiteral("Иван Щукин"));
  }
}

}  // namespace
}  // namespace lineweir

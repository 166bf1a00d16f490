#include "desktop/manual_window.h"

#include <doctest/doctest.h>

#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QTextBlock>
#include <set>

#include "desktop/dialog_table.h"
#include "desktop/manual_pages.h"
#include "desktop/manual_sections.h"
#include "shown_console.h"

namespace lineweir {
namespace {

struct Reader : test::ShownConsole {
  QWidget& manual() { return *desktop.manual().window(); }
  bool open() { return desktop.manual().window() != nullptr && manual().isVisible(); }
  template <class Widget>
  Widget& part(const char* name) {
    return *manual().findChild<Widget*>(QString::fromLatin1(name));
  }
  QLineEdit& words() { return part<QLineEdit>("searchText"); }
  ManualPages& pages() { return part<ManualPages>("pages"); }
  QString hits() { return part<QLabel>("hits").text(); }
  QString selected() { return pages().textCursor().selectedText(); }

  void choose() {
    action(form().ManualMenuItem).trigger();
    come_to_rest();
  }
  void press(QWidget& at, Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    QTest::keyClick(&at, key, modifiers);
    come_to_rest();
  }
  void press_f1(QWidget& in) { press_in_window(in, Qt::Key_F1); }
  // As the display sends it, which knows windows alone.
  void press_in_window(QWidget& in, Qt::Key key) {
    QTest::keyClick(in.window()->windowHandle(), key);
    come_to_rest();
  }
  std::string in_sight() {
    const ManualPages::Heading* heading = pages().heading_in_sight();
    return heading == nullptr ? std::string() : heading->anchor.toStdString();
  }
};

TEST_SUITE("desktop/manual") {
  TEST_CASE(
      "the menu opens it at the chapter of this console's work, with the keyboard in the search") {
    Reader desk;
    desk.choose();
    REQUIRE(desk.open());
    CHECK(desk.manual().windowTitle() == "Lineweir - Manual");
    CHECK(desk.words().hasFocus());
    CHECK(desk.in_sight() == "for-the-host");
    CHECK(QApplication::activeModalWidget() == nullptr);
  }

  TEST_CASE("a screener's opens at the screener's work") {
    Reader desk;
    desk.form().MitelPhone1.on_click();
    desk.form().ScreenerMode.on_click();
    desk.settle();
    desk.choose();
    CHECK(desk.in_sight() == "for-the-screener");
  }

  TEST_CASE("typed words are found, and Enter, F3 and Shift with F3 lead on and back") {
    Reader desk;
    desk.choose();
    QTest::keyClicks(&desk.words(), "brenvox");
    desk.settle();
    CHECK(desk.selected() == "Brenvox");
    CHECK(desk.hits() == "1 of 1");
    desk.words().clear();
    CHECK(desk.hits().isEmpty());
    QTest::keyClicks(&desk.words(), "padlocks");
    desk.settle();
    REQUIRE(desk.hits().endsWith(" of 2"));
    const int first = desk.pages().textCursor().selectionStart();
    desk.press(desk.words(), Qt::Key_Return);
    const int second = desk.pages().textCursor().selectionStart();
    CHECK(second != first);
    desk.press(desk.words(), Qt::Key_F3);
    CHECK(desk.pages().textCursor().selectionStart() == first);
    desk.press(desk.words(), Qt::Key_F3, Qt::ShiftModifier);
    CHECK(desk.pages().textCursor().selectionStart() == second);
    QTest::keyClicks(&desk.words(), " and nothing like it");
    CHECK(desk.hits() == "not found");
    desk.press(desk.words(), Qt::Key_Return);
    CHECK(desk.hits() == "not found");
  }

  TEST_CASE("the list marks the heading of the place that was found") {
    Reader desk;
    desk.choose();
    QTest::keyClicks(&desk.words(), "padlocks");
    desk.press(desk.words(), Qt::Key_Return);
    desk.press(desk.words(), Qt::Key_Return);
    const QListWidgetItem* marked = desk.part<QListWidget>("headings").currentItem();
    REQUIRE(marked != nullptr);
    CHECK(
        (marked->text().trimmed() == "Lock and unlock" || marked->text().trimmed() == "The rows"));
  }

  TEST_CASE("the places in sight that have the words are marked") {
    Reader desk;
    desk.choose();
    QTest::keyClicks(&desk.words(), "padlocks");
    CHECK(desk.pages().extraSelections().size() >= 1);
    desk.words().clear();
    QTest::keyClicks(&desk.words(), "e");
    CHECK(desk.pages().extraSelections().size() > 20);
    CHECK(desk.pages().extraSelections().size() < 2000);
    desk.words().clear();
    CHECK(desk.pages().extraSelections().empty());
  }

  TEST_CASE("Esc closes it from each of its parts, and the keyboard goes back to the main window") {
    for (const char* part : {"searchText", "headings", "pages"}) {
      CAPTURE(part);
      Reader desk;
      desk.choose();
      REQUIRE(desk.open());
      desk.part<QWidget>(part).setFocus();
      desk.press(desk.part<QWidget>(part), Qt::Key_Escape);
      CHECK_FALSE(desk.open());
      CHECK(test::wait_for([&] { return desk.window().isActiveWindow(); }));
    }
  }

  TEST_CASE("opened again it is where the reader was") {
    Reader desk;
    desk.choose();
    desk.pages().go_to("the-dial-pad");
    desk.settle();
    desk.press(desk.words(), Qt::Key_Escape);
    desk.choose();
    REQUIRE(desk.open());
    CHECK(desk.in_sight() == "the-dial-pad");
  }

  TEST_CASE("F1 in a dialog opens the section that tells of it, and Esc leads back there") {
    Reader desk;
    desk.console.DialForm.show();
    desk.come_to_rest();
    QWidget& dial = *desk.desktop.window_of("DialForm");
    desk.press_f1(dial);
    REQUIRE(desk.open());
    CHECK(desk.in_sight() == "the-dial-pad");
    desk.press(desk.words(), Qt::Key_Escape);
    CHECK(test::wait_for([&] { return dial.isActiveWindow(); }));
  }

  TEST_CASE("F1 works on the main window without its menus too") {
    Reader desk;
    desk.form().OptionsButton.on_click();
    desk.settle();
    desk.press_f1(desk.canvas());
    CHECK(desk.open());
  }

  TEST_CASE("beside a message F1 leads to what the manual says of it") {
    Reader desk;
    desk.console.messages.ShowMessage(
        "The hot list 'show.lwb' isn't there any more. Put it back, or choose one with Browse.");
    desk.come_to_rest();
    desk.press_f1(desk.canvas());
    REQUIRE(desk.open());
    CHECK(desk.selected().contains("any more. Put it back, or choose one with Browse."));
    CHECK(desk.pages().viewport()->rect().contains(desk.pages().cursorRect()));
  }

  TEST_CASE("the keys of the show work while it is open, and typing in it presses none") {
    Reader desk;
    desk.box_sends("N04");
    desk.choose();
    desk.platform.comm1.take_writes();
    QTest::keyClicks(&desk.words(), "drop hold 5");
    desk.settle();
    CHECK(desk.platform.comm1.take_writes().empty());
    desk.window().activateWindow();
    desk.come_to_rest();
    desk.press_in_window(desk.window(), Qt::Key_D);
    CHECK(desk.platform.comm1.take_writes() == std::vector<std::string>{"F04"});
  }

  TEST_CASE("each window of the program has its section") {
    Reader desk;
    desk.choose();
    std::set<QString> anchors;
    for (const ManualPages::Heading& heading : desk.pages().headings()) {
      anchors.insert(heading.anchor);
    }
    int windows = 0;
    for (const DialogRow& row : dialog_table()) {
      ++windows;
      CAPTURE(row.form(desk.console).name());
      CHECK(anchors.contains(manual_section_of(row.form(desk.console).name())));
    }
    CHECK(windows >= 15);
    CHECK(anchors.contains(manual_section_of(desk.form())));
    CHECK(anchors.contains(manual_section_of(desk.desktop.close_question().form().name())));
    CHECK(anchors.contains(manual_section_of(desk.desktop.certificate_question().form().name())));
  }

  TEST_CASE("each window's section is the one that tells of it") {
    Reader desk;
    desk.choose();
    struct Section {
      const char* window;
      const char* heading;
    };
    for (const Section& section : {
             Section{"AboutBox", "Options"},
             Section{"CallerFlagForm", "Caller data"},
             Section{"CertificateQuestion", "About a server's certificate"},
             Section{"CloseQuestion", "Close the console on air"},
             Section{"DatabaseViewer", "Looking at it"},
             Section{"DebugForm", "Trace"},
             Section{"DialForm", "The dial pad"},
             Section{"DisplayOptionForm", "Columns and lines"},
             Section{"FlashMessA", "Messages"},
             Section{"Form2", "The show plan"},
             Section{"Form3", "Time Clocks"},
             Section{"Form4", "Caller data"},
             Section{"ImportPreview", "Export, print, import"},
             Section{"LogDataForm", "Fields of the caller data"},
             Section{"LoginForm", "Who you are"},
             Section{"MyMsgbox", "What the program says"},
             Section{"Standby", "On the main window"},
             Section{"WinsockOptions", "A server"},
         }) {
      CAPTURE(std::string(section.window));
      CHECK(desk.pages().go_to(manual_section_of(std::string_view(section.window))));
      REQUIRE(desk.pages().heading_in_sight() != nullptr);
      CHECK(desk.pages().heading_in_sight()->text.toStdString() == section.heading);
    }
    CHECK(manual_section_of(std::string_view("Nothing")).isEmpty());
  }

  TEST_CASE("a link to a page leads to its title") {
    Reader desk;
    desk.choose();
    for (const auto& [page, title] :
         {std::pair{"keys.md", "Keys on one page"}, {"manual.md", "The operator's manual"}}) {
      emit desk.pages().anchorClicked(QUrl(page));
      desk.settle();
      REQUIRE(desk.pages().heading_in_sight() != nullptr);
      CHECK(desk.pages().heading_in_sight()->text == title);
    }
  }

  TEST_CASE("every heading of the list leads to its place, and every picture is there") {
    Reader desk;
    desk.choose();
    auto& list = desk.part<QListWidget>("headings");
    REQUIRE(list.count() >= 40);
    for (const int row : {list.count() / 2, 0, list.count() / 3}) {
      list.setFocus();
      list.setCurrentRow(row);
      desk.settle();
      CHECK(desk.pages().textCursor().block().text() == list.item(row)->text().trimmed());
    }
    int pictures = 0;
    for (QTextBlock block = desk.pages().document()->begin(); block.isValid();
         block = block.next()) {
      for (auto piece = block.begin(); !piece.atEnd(); ++piece) {
        const QTextImageFormat format = piece.fragment().charFormat().toImageFormat();
        if (!format.isValid()) continue;
        ++pictures;
        CAPTURE(format.name().toStdString());
        const QVariant shown =
            desk.pages().document()->resource(QTextDocument::ImageResource, format.name());
        CHECK_FALSE(shown.value<QImage>().isNull());
      }
    }
    CHECK(pictures >= 16);
  }

  TEST_CASE("its parts have names for screen readers") {
    Reader desk;
    desk.choose();
    for (const char* part : {"searchText", "headings", "pages"}) {
      CAPTURE(part);
      CHECK_FALSE(desk.part<QWidget>(part).accessibleName().isEmpty());
    }
  }
}

}  // namespace
}  // namespace lineweir

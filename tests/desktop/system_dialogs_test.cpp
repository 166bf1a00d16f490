#include <doctest/doctest.h>

#include <sys/inotify.h>
#include <unistd.h>

#include <QApplication>
#include <QFile>
#include <QFileDialog>
#include <QFontDialog>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QTemporaryDir>
#include <QTimer>
#include <QWindow>
#include <array>

#include "desktop/dialogs.h"
#include "shown_console.h"
#include "support/call_log_file.h"

namespace lineweir {
namespace {

// Runs once the question is on the screen; without an answer it would stand there for ever.
void when_asked(const std::function<void(QDialog&)>& answer) {
  QTimer::singleShot(0, qApp, [answer] {
    auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
    if (dialog == nullptr) return when_asked(answer);
    answer(*dialog);
  });
}

struct Asking : test::ShownConsole {
  Asking() {
    dialogs.owner = [this] { return desktop.focus().user_window(); };
    window().activateWindow();
    test::choose_log(*this);
    console.Lineweir.ShowDatabaseMenuItem.on_click();
    come_to_rest();
    viewer().activateWindow();
    come_to_rest();
  }

  QWidget& viewer() { return *desktop.dialog(console.DatabaseViewer)->window(); }

  SystemDialogs dialogs{platform.letters};
};

TEST_SUITE("desktop/questions") {
  TEST_CASE("one belongs to the window that asked and gives the keyboard back to its field") {
    Asking desk;
    auto* search = desk.viewer().findChild<QLineEdit*>("SearchText");
    REQUIRE(search->hasFocus());
    const QWidget* owner = nullptr;
    const auto leave = [&](QDialog& dialog) {
      owner = dialog.parentWidget();
      dialog.reject();
    };
    when_asked(leave);
    SUBCASE("a file") { CHECK_FALSE(desk.dialogs.ask_file({}).has_value()); }
    SUBCASE("a text") { CHECK_FALSE(desk.dialogs.ask_input({"Title?", "User"}).has_value()); }
    SUBCASE("yes or no") { CHECK_FALSE(desk.dialogs.ask_yes_no("Change it?")); }
    SUBCASE("a font") { CHECK_FALSE(desk.dialogs.ask_font({"DejaVu Sans"}).has_value()); }
    SUBCASE("a message") { desk.dialogs.message("Done"); }
    desk.come_to_rest();
    CHECK(owner == &desk.viewer());
    CHECK(QApplication::activeWindow() == &desk.viewer());
    CHECK(QApplication::focusWidget() == search);
  }

  TEST_CASE("what looks like markup is shown as it was written") {
    Asking desk;
    const auto look = [](QDialog& dialog) {
      bool whole = false;
      for (const QLabel* label : dialog.findChildren<QLabel*>()) {
        if (label->text() == "<i>Change it?</i>") whole = label->textFormat() == Qt::PlainText;
      }
      CHECK(whole);
      dialog.reject();
    };
    when_asked(look);
    SUBCASE("a text") { desk.dialogs.ask_input({"<i>Change it?</i>", "User"}); }
    SUBCASE("yes or no") { desk.dialogs.ask_yes_no("<i>Change it?</i>"); }
    SUBCASE("a message") { desk.dialogs.message("<i>Change it?</i>"); }
  }

  TEST_CASE("a message that stood there before doesn't come to lie on one") {
    Asking desk;
    desk.console.messages.ShowMessage("The box has gone");
    desk.come_to_rest();
    const QWindow* box = desk.desktop.dialog(desk.console.MyMsgbox)->window()->windowHandle();
    const QWindow* in_front_of = nullptr;
    when_asked([&](QDialog& dialog) {
      // The message is brought to the front each second; what belongs to a window lies on it.
      desk.console.Lineweir.MessageTimer.on_timer();
      desk.come_to_rest();
      in_front_of = box->transientParent();
      CHECK(in_front_of != dialog.windowHandle());
      dialog.reject();
    });
    CHECK_FALSE(desk.dialogs.ask_yes_no("Change it?"));
    CHECK(in_front_of == desk.viewer().windowHandle());
  }

  TEST_CASE("a file dialog says what is chosen and begins with the files that are taken") {
    Asking desk;
    platform::FileQuestion question{.title = "Open",
                                    .filter = "All Files (*.*)|*.*|Text Files (*.txt)|*.txt"};
    QString title;
    QStringList filters;
    const auto look = [&](QDialog& dialog) {
      title = dialog.windowTitle();
      filters = dynamic_cast<QFileDialog&>(dialog).nameFilters();
      dialog.reject();
    };
    when_asked(look);
    desk.dialogs.ask_file(question);
    CHECK(title == "Open");
    CHECK(filters == QStringList{"All Files (*)", "Text Files (*.txt)"});
    question.shown_title = "Open a show plan";
    question.shown_filter = "Show plans (*.txt)|*.txt|All files (*.*)|*.*";
    when_asked(look);
    desk.dialogs.ask_file(question);
    CHECK(title == "Open a show plan");
    CHECK(filters == QStringList{"Show plans (*.txt)", "All files (*)"});
  }

  TEST_CASE("each question for a file says what is chosen") {
    Asking desk;
    const auto title_of = [&](const Event<void()>& asking) {
      desk.platform.dialogs.take_asked();
      asking();
      const auto asked = desk.platform.dialogs.take_asked();
      REQUIRE(asked.size() == 1);
      const auto& question = std::get<platform::FileQuestion>(asked.front());
      CHECK_FALSE(question.title == question.shown_title);
      return question.shown_title;
    };
    Console& console = desk.console;
    CHECK(title_of(console.DatabaseViewer.ImportButton.on_click) == "Import calls from a CSV file");
    CHECK(title_of(console.DatabaseViewer.ExportButton.on_click) ==
          "Export the calls shown to a CSV file");
    CHECK(title_of(console.DatabaseViewer.PrintButton.on_click) ==
          "Print the calls shown to a PDF file");
    CHECK(title_of(console.Lineweir.DatabasePathMenuItem.on_click) ==
          "Choose or create the call log");
    CHECK(title_of(console.FlashMessA.BrowseButton.on_click) == "Choose or create the hot list");
    CHECK(title_of(console.Form2.New.on_click) == "Make a new, empty show plan");
    CHECK(title_of(console.Form2.Open.on_click) == "Open a show plan");
    CHECK(title_of(console.Form2.SaveAs.on_click) == "Save the show plan as");
  }

  TEST_CASE("the font dialog opens on the font in force") {
    Asking desk;
    for (const bool bold : {false, true}) {
      for (const bool italic : {false, true}) {
        CAPTURE(bold);
        CAPTURE(italic);
        QFont shown;
        QString sample;
        when_asked([&](QDialog& dialog) {
          for (const QGroupBox* group : dialog.findChildren<QGroupBox*>()) {
            if (const auto* edit = group->findChild<QLineEdit*>()) sample = edit->text();
          }
          shown = dynamic_cast<QFontDialog&>(dialog).currentFont();
          dialog.accept();
        });
        const auto choice = desk.dialogs.ask_font({"DejaVu Sans", 11, bold, italic});
        CHECK(shown.family() == "DejaVu Sans");
        CHECK(shown.pointSize() == 11);
        CHECK_FALSE(sample.isEmpty());
        REQUIRE(choice.has_value());
        CHECK(choice->name == "DejaVu Sans");
        CHECK(choice->size == 11);
        CHECK(choice->bold == bold);
        CHECK(choice->italic == italic);
      }
    }
  }

  TEST_CASE("the file dialog opens none of the files that it shows") {
    Asking desk;
    const QTemporaryDir folder;
    // Neither names nor beginnings tell what these are.
    for (const char* name : {"calls", "calls.wherever"}) {
      QFile file(folder.filePath(QString::fromLatin1(name)));
      REQUIRE(file.open(QIODevice::WriteOnly));
      file.write("SQLite format 3");
    }
    const int watch = inotify_init1(IN_NONBLOCK);
    REQUIRE(inotify_add_watch(watch, folder.path().toUtf8().constData(), IN_OPEN) >= 0);
    int shown = 0;
    when_asked([&](QDialog& dialog) {
      const auto* list = dialog.findChild<QListView*>(QStringLiteral("listView"));
      const auto rows = [list] { return list->model()->rowCount(list->rootIndex()); };
      while (rows() < 2) QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
      // The pictures follow.
      for (int turn = 0; turn < 20; ++turn) QCoreApplication::processEvents();
      shown = rows();
      dialog.reject();
    });
    platform::FileQuestion question;
    question.filter = "All Files (*.*)|*.*";
    question.default_path = folder.filePath(QStringLiteral("calls")).toStdString();
    desk.dialogs.ask_file(question);
    CHECK(shown == 2);

    std::vector<std::string> opened;
    alignas(inotify_event) std::array<char, 4096> events{};
    const ssize_t size = ::read(watch, events.data(), events.size());
    for (ssize_t at = 0; at < size;) {
      const auto* event = reinterpret_cast<const inotify_event*>(events.data() + at);
      if ((event->mask & IN_ISDIR) == 0) opened.emplace_back(event->len > 0 ? event->name : "");
      at += ssize_t(sizeof(inotify_event) + event->len);
    }
    ::close(watch);
    CHECK(opened.empty());
  }
}

}  // namespace
}  // namespace lineweir

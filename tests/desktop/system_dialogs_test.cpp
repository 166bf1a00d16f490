#include <doctest/doctest.h>

#include <QApplication>
#include <QFontDialog>
#include <QLineEdit>
#include <QTimer>

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
    SUBCASE("a text") { CHECK_FALSE(desk.dialogs.ask_input("Title?", "User").has_value()); }
    SUBCASE("yes or no") { CHECK_FALSE(desk.dialogs.ask_yes_no("Change it?")); }
    SUBCASE("a font") { CHECK_FALSE(desk.dialogs.ask_font({"DejaVu Sans"}).has_value()); }
    SUBCASE("a message") { desk.dialogs.message("Done"); }
    desk.come_to_rest();
    CHECK(owner == &desk.viewer());
    CHECK(QApplication::activeWindow() == &desk.viewer());
    CHECK(QApplication::focusWidget() == search);
  }

  TEST_CASE("the font dialog opens on the font in force") {
    Asking desk;
    for (const bool bold : {false, true}) {
      for (const bool italic : {false, true}) {
        CAPTURE(bold);
        CAPTURE(italic);
        QFont shown;
        when_asked([&](QDialog& dialog) {
          shown = dynamic_cast<QFontDialog&>(dialog).currentFont();
          dialog.accept();
        });
        const auto choice = desk.dialogs.ask_font({"DejaVu Sans", 11, bold, italic});
        CHECK(shown.family() == "DejaVu Sans");
        CHECK(shown.pointSize() == 11);
        REQUIRE(choice.has_value());
        CHECK(choice->name == "DejaVu Sans");
        CHECK(choice->size == 11);
        CHECK(choice->bold == bold);
        CHECK(choice->italic == italic);
      }
    }
  }
}

}  // namespace
}  // namespace lineweir

#include "desktop/practice_windows.h"

#include <doctest/doctest.h>

#include <QAccessible>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>

#include "desktop/practice_start.h"
#include "desktop/practice_titles.h"
#include "practice/practice_show.h"
#include "practice/practice_world.h"
#include "shown_console.h"

namespace lineweir {
namespace {

using std::chrono::minutes;
using std::chrono::seconds;

// A console for practice whose windows are on the screen, with its level asked for.
struct ShownPractice {
  ShownPractice() {
    console.startup.Main("");
    windows.emplace(desktop, show);
    show.seed = [] { return std::uint64_t{11}; };
    show.begin();
    settle();
  }

  void settle() {
    desktop.flush();
    windows->flush();
    QCoreApplication::processEvents();
  }
  void pass(std::chrono::milliseconds time) {
    platform.loop.advance(time);
    settle();
  }
  QWidget& main() { return *desktop.main_frame().window(); }
  QWidget& level() { return *windows->window_of(QStringLiteral("PracticeLevel")); }
  QWidget& score() { return *windows->window_of(QStringLiteral("PracticeScore")); }
  QWidget& band() { return *desktop.main_frame().main_window()->band(); }
  template <class Widget>
  static Widget& part(QWidget& window, const char* name) {
    return *window.findChild<Widget*>(QString::fromLatin1(name));
  }
  static QString text(QWidget& window, const char* name) {
    return part<QLabel>(window, name).text();
  }
  void press(QWidget& window, Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    CHECK(test::wait_for([&] { return window.isActiveWindow(); }));
    // The user has had time to look at what is there.
    desktop.hands().now = [now = desktop.hands().now] { return now() + 1000; };
    QWidget* focus = window.focusWidget();
    QTest::keyClick(focus != nullptr ? focus : &window, key, modifiers);
    settle();
  }
  // A button that is chosen by its letter goes down for a moment before it clicks.
  bool choose(QWidget& window, Qt::Key letter, const std::function<bool()>& done) {
    press(window, letter, Qt::AltModifier);
    const bool came = test::wait_for(done);
    settle();
    return came;
  }

  platform::ScriptedPlatform platform;
  practice::PracticeWorld world{platform.services(), "/console"};
  PracticeTitles titles;
  Console console{world.services()};
  Desktop desktop{console};
  practice::PracticeShow show{console, world.port()};
  std::optional<PracticeWindows> windows;
};

TEST_SUITE("desktop/practice") {
  TEST_CASE("every window says PRACTICE in its title, also when the title changes") {
    ShownPractice practice;
    CHECK(practice.level().windowTitle() == "PRACTICE - Practice Show");
    CHECK(practice.main().windowTitle().startsWith("PRACTICE - Lineweir - Talent"));
    practice.show.band.RoleButton.on_click();
    practice.settle();
    CHECK(practice.main().windowTitle().startsWith("PRACTICE - Lineweir - Producer"));
    for (Form* form : practice.console.forms()) form->show();
    practice.show.score_form.show();
    practice.settle();
    int titled = 0;
    for (const QWidget* window : QApplication::topLevelWidgets()) {
      if (!window->isVisible() || window->windowTitle().isEmpty()) continue;
      CAPTURE(window->windowTitle().toStdString());
      CHECK(window->windowTitle().startsWith("PRACTICE - "));
      CHECK(window->windowTitle().count("PRACTICE") == 1);
      ++titled;
    }
    CHECK(titled >= 14);
    QWidget dialog;
    dialog.setWindowTitle("Open");
    dialog.show();
    QCoreApplication::processEvents();
    CHECK(dialog.windowTitle() == "PRACTICE - Open");
  }

  TEST_CASE("the band stands between menus and form, and takes nothing of the form") {
    test::ShownConsole real;
    const QSize form = real.canvas().size();
    ShownPractice practice;
    MainWindow& window = *practice.desktop.main_frame().main_window();
    CHECK(window.canvas().size() == form);
    CHECK(practice.band().isVisible());
    CHECK(practice.band().geometry().bottom() + 1 == window.canvas().geometry().top());
    CHECK(practice.band().height() == practice.band().sizeHint().height());
    CHECK(ShownPractice::text(practice.band(), "practice") == "PRACTICE");
    QFont large = QApplication::font();
    const QFont before = large;
    large.setPixelSize(large.pixelSize() + 9);
    practice.band().setFont(large);
    practice.settle();
    CHECK(test::wait_for(
        [&] { return practice.band().height() == practice.band().sizeHint().height(); }));
    CHECK(window.canvas().size() == form);
  }

  TEST_CASE("a show is begun, ended and closed by keys alone, and its page read") {
    ShownPractice practice;
    CHECK(ShownPractice::part<QRadioButton>(practice.level(), "EasyLevel").hasFocus());
    auto& hard = ShownPractice::part<QRadioButton>(practice.level(), "HardLevel");
    CHECK(practice.choose(practice.level(), Qt::Key_H, [&] { return hard.isChecked(); }));
    practice.press(practice.level(), Qt::Key_Up);
    CHECK(ShownPractice::part<QRadioButton>(practice.level(), "NormalLevel").isChecked());
    CHECK(ShownPractice::text(practice.level(), "LastLabel").contains("not played"));
    practice.press(practice.level(), Qt::Key_Return);
    CHECK(practice.show.runs());
    CHECK_FALSE(practice.level().isVisible());

    practice.pass(seconds(6));
    CHECK(ShownPractice::text(practice.band(), "ShowLabel").startsWith("Normal show. Segment 1: "));
    practice.console.Lineweir.OnHybrid1(0).on_click();
    practice.pass(seconds(20));
    REQUIRE(practice.choose(practice.main(), Qt::Key_W, [&] { return !practice.show.runs(); }));
    CHECK(practice.score().isVisible());
    CHECK(ShownPractice::text(practice.score(), "ShowLabel") ==
          "Normal show, the first that you have played");
    CHECK(ShownPractice::text(practice.score(), "RowName(0)") == "Length of the show");
    CHECK(ShownPractice::text(practice.score(), "RowNow(0)") == "0:26");
    CHECK(ShownPractice::text(practice.score(), "RowNow(1)").startsWith("1 of "));
    CHECK(ShownPractice::text(practice.score(), "RowNow(2)") == "1");
    CHECK(ShownPractice::part<QPushButton>(practice.score(), "CloseButton").hasFocus());
    CHECK(practice.choose(practice.score(), Qt::Key_P,
                          [&] { return practice.show.level_form.visible.get(); }));
    CHECK_FALSE(practice.score().isVisible());
    CHECK(practice.level().isVisible());
    CHECK(ShownPractice::text(practice.level(), "LastLabel").startsWith("Last time: 1 of "));
    practice.press(practice.level(), Qt::Key_Escape);
    CHECK_FALSE(practice.level().isVisible());
    CHECK(practice.choose(practice.main(), Qt::Key_W,
                          [&] { return practice.show.level_form.visible.get(); }));
    CHECK(practice.level().isVisible());
  }

  TEST_CASE("the band's keys have names and roles, and change the mode") {
    ShownPractice practice;
    practice.show.level_form.CancelButton.on_click();
    practice.settle();
    for (const char* name : {"RoleButton", "ShowButton"}) {
      auto& button = ShownPractice::part<QPushButton>(practice.band(), name);
      QAccessibleInterface* spoken = QAccessible::queryAccessibleInterface(&button);
      REQUIRE(spoken != nullptr);
      CHECK(spoken->role() == QAccessible::Button);
      CHECK_FALSE(spoken->text(QAccessible::Name).isEmpty());
      CHECK_FALSE(spoken->text(QAccessible::Name).contains('&'));
    }
    MainForm& form = practice.console.Lineweir;
    CHECK(practice.choose(practice.main(), Qt::Key_G,
                          [&] { return form.ScreenerMode.checked.get(); }));
    CHECK(
        practice.choose(practice.main(), Qt::Key_G, [&] { return form.StudioMode.checked.get(); }));
  }

  TEST_CASE("a show that is left alone ends by itself, with the page") {
    ShownPractice practice;
    practice.press(practice.level(), Qt::Key_Return);
    practice.pass(minutes(5) + seconds(1));
    CHECK(practice.score().isVisible());
    CHECK(ShownPractice::text(practice.score(), "RowNow(0)") == "5:00");
    CHECK(ShownPractice::text(practice.score(), "RowNow(1)").startsWith("0 of "));
    CHECK(practice.main().isVisible());
  }

  TEST_CASE("the real console's menu starts a process, and says where that isn't possible") {
    test::ShownConsole real;
    int started = 0;
    bool possible = true;
    const PracticeStart start(real.console, [&] {
      ++started;
      return possible;
    });
    real.action(real.form().PracticeMenu).trigger();
    CHECK(started == 1);
    CHECK(real.take_messages().empty());
    possible = false;
    real.action(real.form().PracticeMenu).trigger();
    CHECK(started == 2);
    CHECK(real.take_messages() ==
          std::vector<std::string>{"The practice show could not be started!"});
    CHECK_FALSE(real.window().windowTitle().contains("PRACTICE"));
  }
}

}  // namespace
}  // namespace lineweir

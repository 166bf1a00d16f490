#include <doctest/doctest.h>

#include <QMenu>

#include "desktop/dialog_letters.h"
#include "desktop/new_user.h"
#include "desktop/twips.h"
#include "shown_console.h"

namespace lineweir {
namespace {

// The window of a console that starts with these files, on a screen with that room.
struct NewUser {
  NewUser(QSize room, const std::string& settings) : console(platform.services()) {
    if (!settings.empty()) platform.files.replace(std::string(settings_file_name), settings);
    console.startup.on_new_user = [this, room] { welcome_new_user(console, room); };
    desktop.emplace(console);
    console.startup.Main("");
    for (int turn = 0; turn < 4; ++turn) {
      desktop->flush();
      QCoreApplication::processEvents();
    }
  }

  MainWindow& window() { return *desktop->main_frame().main_window(); }

  platform::ScriptedPlatform platform;
  Console console;
  std::optional<Desktop> desktop;
};

TEST_SUITE("a new user") {
  TEST_CASE("the first window has two thirds of the screen's height and the design's proportion") {
    const QSize design(9420, 7255);
    const QSize first = first_size({1920 * 15, 1080 * 15}, design);
    CHECK(first.height() == doctest::Approx(720 * 15).epsilon(0.01));
    CHECK(first.width() == doctest::Approx(720 * 15 * 9420.0 / 7255).epsilon(0.01));
  }

  TEST_CASE("it is never wider than the screen nor smaller than the design") {
    const QSize design(9420, 7255);
    const QSize upright = first_size({1080 * 15, 1920 * 15}, design);
    CHECK(upright.width() < 1080 * 15);
    CHECK(upright.height() == doctest::Approx(upright.width() * 7255.0 / 9420).epsilon(0.01));
    CHECK(first_size({640 * 15, 480 * 15}, design) == design);
  }

  TEST_CASE("without settings the window is large and its texts, menus and dialogs grow with it") {
    NewUser user({820, 900}, "");
    CHECK(user.console.Lineweir.TextGrowToggle.checked);
    CHECK(user.window().height() == doctest::Approx(600).epsilon(0.03));
    const FormCanvas& canvas = user.window().canvas();
    CHECK(canvas.zoom() > 1.2);
    CHECK(canvas.text_zoom() == canvas.zoom());
    const MenuItem& options = user.console.Lineweir.Options;
    CHECK(user.window().menus().action_of(options)->menu()->font().pixelSize() >
          design_letter_pixels);
    CHECK(user.console.Lineweir.LineStatus(0).font.size == 8);
    // That size is stored as any other one.
    CHECK(user.console.settings.collect().TextGrowOn);
    CHECK(user.console.settings.collect().WindowHeight == user.console.Lineweir.height - 285);
  }

  TEST_CASE("who has settings begins with them") {
    test::ScriptedConsole desk;
    NewUser user({820, 900}, encode_settings(desk.console.settings.collect()));
    CHECK_FALSE(user.console.Lineweir.TextGrowToggle.checked);
    CHECK(user.console.Lineweir.width == 9420);
  }
}

}  // namespace
}  // namespace lineweir

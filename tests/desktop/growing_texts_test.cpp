#include <doctest/doctest.h>

#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>

#include "desktop/growing_texts.h"
#include "full_dialogs.h"
#include "shown_console.h"

namespace lineweir {
namespace {

struct GrowingDesk : test::ShownConsole {
  explicit GrowingDesk(bool texts_grow) {
    form().TextGrowToggle.checked = texts_grow;
    settle();
  }

  // The user drags the window to that size, and the form is rebuilt.
  void drag(QSize size) {
    window().resize(size);
    come_to_rest();
    console.layout.RedefineScreen();
    come_to_rest();
  }

  QMenuBar& bar() { return *window().findChild<QMenuBar*>(); }
  int menu_letters() { return action(form().Options).menu()->font().pixelSize(); }
};

TEST_SUITE("growing texts") {
  TEST_CASE("texts that don't grow follow half of the way") {
    CHECK(text_zoom(1, false) == 1);
    CHECK(text_zoom(3, false) == 2);
    CHECK(text_zoom(3, true) == 3);
  }

  TEST_CASE("letters of dialogs have room on the screen, and are never smaller than designed") {
    CHECK(dialog_letters(8, 1080) == design_letter_pixels);
    CHECK(dialog_letters(16, 1080) == 16);
    CHECK(dialog_letters(40, 1080) * highest_dialog_in_letters <= 1080);
    CHECK(dialog_letters(40, 300) == design_letter_pixels);
  }

  TEST_CASE("menu bar and menus grow with the texts") {
    for (const bool texts_grow : {true, false}) {
      GrowingDesk desk(texts_grow);
      CHECK(desk.menu_letters() == design_letter_pixels);
      const int low = desk.bar().height();
      desk.drag({1600, 1240});
      CHECK(desk.menu_letters() == grown_letters(desk.canvas().text_zoom()));
      CHECK(desk.bar().height() > low);
      CHECK(desk.canvas().y() == desk.bar().height());
      desk.drag(desk.window().minimumSize());
      CHECK(desk.menu_letters() == design_letter_pixels);
    }
  }

  TEST_CASE("turning growth on or off leaves the form its size") {
    GrowingDesk desk(false);
    desk.drag({1600, 1240});
    const int width = desk.form().width;
    const int height = desk.form().height;
    for (int turn = 0; turn < 4; ++turn) {
      desk.form().TextGrowToggle.on_click();
      desk.come_to_rest();
      CHECK(desk.form().width == width);
      CHECK(desk.form().height == height);
    }
  }

  TEST_CASE("bar and form come to rest at any size of the window") {
    GrowingDesk desk(true);
    for (int side = 0; side < 240; ++side) {
      const QSize size(700 + 5 * side, 560 + 4 * side);
      CAPTURE(side);
      desk.drag(size);
      CHECK(desk.window().size() == size);
      const QRect form = desk.canvas().geometry();
      desk.form().timResize.enabled = false;
      desk.drag(size);
      CHECK(desk.canvas().geometry() == form);
      CHECK_FALSE(desk.form().timResize.enabled);
    }
  }

  TEST_CASE("dialogs that were made before grow too") {
    GrowingDesk desk(true);
    desk.form().DisplayDataOptionsMenu.on_click();
    desk.come_to_rest();
    QWidget* window = desk.desktop.dialog(desk.console.DisplayOptionForm)->window();
    auto* field = window->findChild<QLineEdit*>("WidthText(3)");
    REQUIRE(field != nullptr);
    const QSize before = field->size();
    desk.drag({1600, 1240});
    CHECK(QApplication::font().pixelSize() > design_letter_pixels);
    CHECK(field->width() > before.width());
    CHECK(field->height() > before.height());
    CHECK(window->height() >= window->minimumSizeHint().height());
  }
}

}  // namespace
}  // namespace lineweir

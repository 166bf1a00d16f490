#include "desktop/screen_room.h"
#include "every_dialog.h"

#include <doctest/doctest.h>

#include <QPushButton>
#include <QScrollArea>
#include <array>

#include "full_dialogs.h"
#include "shown_console.h"

namespace lineweir {
namespace {

// What is seen of a screen of 1600 x 1200 and of 1920 x 1080 pixels where each counts double.
constexpr std::array rooms = {QRect(0, 0, 800, 600), QRect(0, 0, 960, 540)};
// The least that a window manager's title bar takes.
constexpr int title = 20;

bool is_scrolled(const QWidget* part) {
  for (; part != nullptr; part = part->parentWidget()) {
    if (qobject_cast<const QScrollArea*>(part) != nullptr) return true;
  }
  return false;
}

TEST_SUITE("desktop/screen room") {
  TEST_CASE("every dialog fits a screen that shows little, and its buttons can be reached") {
    for (const QRect& room : rooms) {
      test::ShownConsole desk;
      int buttons = 0;
      for (Form* form : test::dialogs_of(desk.console)) {
        CAPTURE(form->name());
        QWidget& window = test::open_full(desk, *form);
        window.move(room.right() - 100, room.bottom() - 100);
        keep_in_room(window, room);
        desk.settle();
        CHECK(room.contains(QRect(window.pos(), window.size()).adjusted(0, -title, 0, 0)));
        for (const QPushButton* button : window.findChildren<QPushButton*>()) {
          if (!button->isVisible()) continue;
          ++buttons;
          CAPTURE(button->objectName().toStdString());
          const QRect place(button->mapTo(&window, QPoint(0, 0)), button->size());
          CHECK((window.rect().contains(place) || is_scrolled(button)));
        }
        form->on_unload.forget_handler();
        form->unload();
        desk.settle();
      }
      CHECK(buttons > 40);
    }
  }

  TEST_CASE("a window that fits stays as it is") {
    QWidget window;
    window.setGeometry(100, 100, 300, 200);
    const QRect place = window.geometry();
    keep_in_room(window, {0, 0, 800, 600});
    CHECK(window.geometry() == place);
  }
}

}  // namespace
}  // namespace lineweir

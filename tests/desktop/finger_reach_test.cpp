#include <doctest/doctest.h>

#include <QMouseEvent>
#include <QPointingDevice>
#include <QWindow>
#include <array>

#include "desktop/finger_reach.h"
#include "shown_console.h"
#include "support/listen.h"

namespace lineweir {
namespace {

// The window of a tablet, maximised, with that many rows.
struct Tablet : test::ShownConsole {
  explicit Tablet(int rows) {
    console.layout.set_line_count(rows);
    console.layout.RedefineScreen();
    settle();
    window().resize(1280, 800);
    come_to_rest();
    console.layout.RedefineScreen();
    come_to_rest();
  }

  FingerReach& reach() {
    for (QObject* child : window().children()) {
      if (auto* found = dynamic_cast<FingerReach*>(child)) return *found;
    }
    throw std::runtime_error("nothing leads fingers");
  }

  std::vector<ElementWidget*> keys() {
    std::vector<ElementWidget*> found;
    for (ElementWidget* widget : canvas().element_widgets()) {
      const Look look = widget->element_look().look;
      const bool key = look == Look::RowKey || look == Look::PanelKey || look == Look::NextKey;
      if (key && widget->isVisible()) found.push_back(widget);
    }
    return found;
  }

  // A press and release at that place of the canvas.
  void tap(QPoint place, const QPointingDevice& device) {
    const QPointF at = window().mapFromGlobal(canvas().mapToGlobal(place));
    for (const auto type : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease}) {
      const auto held = type == QEvent::MouseButtonPress ? Qt::LeftButton : Qt::NoButton;
      QMouseEvent event(type, at, at, window().mapToGlobal(at), Qt::LeftButton, held,
                        Qt::NoModifier, &device);
      QCoreApplication::sendEvent(window().windowHandle(), &event);
    }
    settle();
  }
};

TEST_SUITE("fingers") {
  TEST_CASE("a small key has the room around it, and of a gap to another key the half") {
    const QRect form(0, 0, 1000, 1000);
    const QRect key(500, 500, 30, 20);
    CHECK(touch_area(key, {}, {}, form) == QRect(495, 490, 40, 40));
    // Where one side has no room the other one gives it.
    const std::array above{QRect(480, 470, 80, 26)};
    CHECK(touch_area(key, above, {}, form) == QRect(495, 498, 40, 40));
    const std::array around{QRect(480, 470, 80, 26), QRect(480, 524, 80, 26)};
    CHECK(touch_area(key, around, {}, form) == QRect(495, 498, 40, 24));
    CHECK(touch_area(key, {}, around, form) == QRect(495, 496, 40, 28));
    CHECK(touch_area(QRect(0, 0, 20, 60), {}, {}, form) == QRect(0, 0, 40, 60));
    CHECK(touch_area(QRect(100, 100, 90, 60), {}, {}, form) == QRect(100, 100, 90, 60));
  }

  TEST_CASE("on a tablet every key has room for a finger, or the whole height of its row") {
    for (int rows = 5; rows <= 20; ++rows) {
      CAPTURE(rows);
      Tablet desk(rows);
      REQUIRE(desk.keys().size() >= static_cast<std::size_t>(2 * rows + 8));
      for (const ElementWidget* key : desk.keys()) {
        CAPTURE(key->objectName().toStdString());
        const QRect area = desk.reach().area_of(*key);
        CHECK(area.width() >= finger_pixels);
        // The upper drop key shares the gap to the last row's key; its rounding may cost a pixel.
        int wanted = finger_pixels - 1;
        // Keys of rows lie edge to edge, so that none has more than its row.
        if (key->element_look().look == Look::RowKey) {
          const Control& strip = desk.form().DataRow(key->control()->index());
          wanted = std::min(wanted, desk.widget(strip).height());
        }
        CHECK(area.height() >= wanted);
      }
    }
  }

  TEST_CASE("no place belongs to two keys") {
    for (const int rows : {5, 10, 18, 19, 20}) {
      CAPTURE(rows);
      Tablet desk(rows);
      const auto keys = desk.keys();
      for (std::size_t i = 0; i < keys.size(); ++i) {
        for (std::size_t j = i + 1; j < keys.size(); ++j) {
          CAPTURE(keys[i]->objectName().toStdString());
          CAPTURE(keys[j]->objectName().toStdString());
          CHECK_FALSE(desk.reach().area_of(*keys[i]).intersects(desk.reach().area_of(*keys[j])));
        }
      }
    }
  }

  TEST_CASE("a finger beside a small key presses it, and a mouse does not") {
    Tablet desk(20);
    int presses = 0;
    listen(desk.form().Hold1.on_click, [&] { ++presses; });
    const ElementWidget& hold = desk.widget(desk.form().Hold1);
    const QRect drawn(desk.canvas().origin_of(hold), hold.size());
    const QPoint below(drawn.center().x(), drawn.bottom() + 3);
    REQUIRE(desk.reach().area_of(hold).contains(below));
    const QPointingDevice finger(QStringLiteral("panel"), 7, QInputDevice::DeviceType::TouchScreen,
                                 QPointingDevice::PointerType::Finger,
                                 QInputDevice::Capability::Position, 10, 0);
    const QPointingDevice mouse(QStringLiteral("mouse"), 8, QInputDevice::DeviceType::Mouse,
                                QPointingDevice::PointerType::Generic,
                                QInputDevice::Capability::Position, 1, 3);
    desk.tap(below, mouse);
    CHECK(presses == 0);
    desk.tap(below, finger);
    CHECK(presses == 1);
    desk.tap(drawn.center(), finger);
    CHECK(presses == 2);
    desk.tap(QPoint(drawn.center().x(), drawn.bottom() + 30), finger);
    CHECK(presses == 2);
  }
}

}  // namespace
}  // namespace lineweir

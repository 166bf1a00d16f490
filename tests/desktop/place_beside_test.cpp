#include "desktop/place_beside.h"

#include <doctest/doctest.h>

namespace lineweir {
namespace {

// A main window of 600 x 400 with its rows above and its keys below.
struct Scene {
  explicit Scene(QPoint at) : main(at, QSize(600, 400)) {}

  QRect main;
  QRect rows() const { return {main.left() + 50, main.top() + 40, 500, 200}; }
  QRect keys() const { return {main.left() + 50, main.top() + 260, 200, 40}; }
  std::vector<CoveredPart> parts() const { return {{main, 1}, {rows(), 20}, {keys(), 10'000}}; }
  QRect open(QSize size, const QRect& screen) const {
    return {place_beside(size, screen, rows(), parts()), size};
  }
};

TEST_SUITE("desktop/place beside") {
  TEST_CASE("with room beside or below the main window it covers nothing of it") {
    for (const QRect& screen : {QRect(0, 0, 1920, 1080), QRect(0, 0, 700, 1080),
                                QRect(0, 0, 1300, 420), QRect(1920, 0, 1920, 1080)}) {
      for (const QPoint corner : {QPoint(0, 0), QPoint(80, 0), QPoint(1300, 640)}) {
        Scene scene(screen.topLeft() + corner);
        if (!screen.contains(scene.main)) continue;
        const QRect window = scene.open({450, 380}, screen);
        CAPTURE(screen.width());
        CAPTURE(corner.x());
        CHECK(screen.contains(window));
        const bool room_left = corner.x() >= 450;
        const bool room_right = screen.width() - corner.x() - 600 >= 450;
        const bool room_above = corner.y() >= 380;
        const bool room_below = screen.height() - corner.y() - 400 >= 380;
        if (room_left || room_right || room_above || room_below) {
          CHECK_FALSE(window.intersects(scene.main));
        }
      }
    }
  }

  TEST_CASE("it touches the main window, no further away than it must") {
    Scene scene({100, 100});
    CHECK(scene.open({200, 380}, {0, 0, 1920, 1080}).left() == scene.main.right() + 1);
    CHECK(scene.open({450, 380}, {0, 0, 800, 1080}).top() == scene.main.bottom() + 1);
  }

  TEST_CASE(
      "on a small screen it leaves the keys free and covers as little as it can of the rows") {
    const QRect screen(0, 0, 800, 600);
    Scene scene({100, 0});
    const QRect window = scene.open({450, 290}, screen);
    CHECK(screen.contains(window));
    CHECK_FALSE(window.intersects(scene.keys()));
    CHECK_FALSE(window.intersects(scene.rows()));
    // With no place free of both it covers rows.
    const QRect large = scene.open({700, 250}, {0, 0, 800, 400});
    CHECK_FALSE(large.intersects(scene.keys()));
    CHECK(large.intersects(scene.rows()));
  }

  TEST_CASE("a window larger than the screen shows its upper left corner") {
    Scene scene({0, 0});
    CHECK(scene.open({900, 700}, {0, 0, 800, 600}).topLeft() == QPoint(0, 0));
  }
}

}  // namespace
}  // namespace lineweir

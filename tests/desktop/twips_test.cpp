#include "desktop/twips.h"

#include <doctest/doctest.h>

namespace lineweir {
namespace {

TEST_SUITE("twips") {
  TEST_CASE("fifteen twips are a pixel, and edges round to the nearest one") {
    CHECK(pixel_edge(0) == 0);
    CHECK(pixel_edge(15) == 1);
    CHECK(pixel_edge(7) == 0);
    CHECK(pixel_edge(8) == 1);
    CHECK(pixel_edge(-8) == -1);
    CHECK(pixel_edge(420) == 28);
    CHECK(pixel_edge(420, 1.5) == 42);
    CHECK(pixel_edge(15, 1.5) == 2);
  }

  TEST_CASE("rows never gap or overlap at any scale and any stretch of the form") {
    for (const double scale : {1.0, 1.25, 1.5, 1.75, 2.0, 2.25, 3.0}) {
      for (int pitch = 200; pitch < 700; pitch += 7) {
        for (int row = 0; row < 20; ++row) {
          const QRect upper = pixel_rect(QRectF(1260, 420 + row * pitch, 7590, pitch), scale);
          const QRect lower = pixel_rect(QRectF(1260, 420 + (row + 1) * pitch, 7590, pitch), scale);
          REQUIRE(upper.top() + upper.height() == lower.top());
        }
      }
    }
  }

  TEST_CASE("a width is what lies between its rounded edges") {
    // 21 pixels wide or 22, by where it stands.
    CHECK(pixel_rect(QRectF(0, 0, 322, 15)).width() == 21);
    CHECK(pixel_rect(QRectF(1, 0, 322, 15)).width() == 22);
  }
}

}  // namespace
}  // namespace lineweir

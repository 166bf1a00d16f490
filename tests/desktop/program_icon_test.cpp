#include "desktop/program_icon.h"

#include <doctest/doctest.h>

#include <QApplication>

namespace lineweir {
namespace {

TEST_SUITE("desktop/icon") {
  TEST_CASE("windows have an icon for title bars, lists of windows and large ones") {
    const QList<QSize> sizes = QApplication::windowIcon().availableSizes();
    for (const int side : {16, 24, 32, 48, 256}) {
      CAPTURE(side);
      CHECK(sizes.contains(QSize(side, side)));
    }
    CHECK(program_icon().availableSizes() == sizes);
  }

  TEST_CASE("the icon has a ground that is clear at its corners, and a handset that is light") {
    const QImage picture = program_icon().pixmap(64, 64).toImage();
    CHECK(picture.pixelColor(0, 0).alpha() == 0);
    CHECK(picture.pixelColor(17, 22).lightness() > 200);
  }
}

}  // namespace
}  // namespace lineweir

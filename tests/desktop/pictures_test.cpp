#include "desktop/picture_painters.h"

#include <doctest/doctest.h>

#include <QImage>
#include <QPainter>
#include <string>
#include <vector>

#include "pixels.h"

namespace lineweir {
namespace {

using test::pixels_of;
using Names = std::vector<std::string>;

QImage drawn(const std::string& picture, const Theme& theme) {
  CAPTURE(picture);
  const PicturePainter paint = painter_of(picture);
  REQUIRE(static_cast<bool>(paint));
  QImage image(60, 40, QImage::Format_ARGB32_Premultiplied);
  image.fill(Qt::transparent);
  QPainter painter(&image);
  paint(painter, image.rect(), {theme, 1});
  painter.end();
  return test::readable(image);
}

// Pictures that are all drawn as the first of them is.
QImage drawn_alike(const Names& pictures, const Theme& theme) {
  const QImage first = drawn(pictures.front(), theme);
  for (const std::string& picture : pictures) {
    CAPTURE(picture);
    CHECK(drawn(picture, theme) == first);
  }
  return first;
}

int lightness(const QImage& image, int y) { return qGray(image.pixel(image.width() / 2, y)); }

TEST_SUITE("desktop/pictures") {
  TEST_CASE("a key is lit from above, sunk while it is down, flat while it is disabled") {
    for (const Theme* theme : {&metal_theme, &grey_theme}) {
      const QImage up = drawn_alike(
          {"HybridNormUp", "DropLargeUp", "DropSmallUp", "Center1Up", "ButtonRightUp", "SetupUp"},
          *theme);
      const QImage down = drawn_alike(
          {"HybridNormDown", "DropLargeDown", "DropSmallDown", "Center1Down", "ButtonRightDown"},
          *theme);
      const QImage disabled =
          drawn_alike({"HybridDisabledNorm", "DropLargeDisabled", "DropSmallDisabled",
                       "CenterDisabled", "ButtonRightDisabled"},
                      *theme);
      constexpr int above = 8;
      constexpr int below = 31;
      CHECK(lightness(up, above) > lightness(up, below) + 5);
      CHECK(lightness(down, above) < lightness(up, above) - 20);
      CHECK(lightness(down, above) < lightness(down, below));
      CHECK(lightness(disabled, above) == lightness(disabled, below));
      CHECK(pixels_of(down, theme->latch_light) == 0);
      // Setup stays down while its panel is there, and says so.
      CHECK(pixels_of(drawn("SetupDown", *theme), theme->latch_light) > 20);
    }
  }

  TEST_CASE("each state of a line has a colour and a form of its own on the keys") {
    struct Icon {
      const char* picture;
      QRgb color;
    };
    std::vector<QImage> forms;
    for (const Icon& icon : {Icon{"RedIcon", signal_red}, Icon{"YellowIcon", signal_yellow},
                             Icon{"GreenIcon", signal_green}, Icon{"BlueIcon", signal_blue}}) {
      CAPTURE(std::string(icon.picture));
      const QImage image = drawn(icon.picture, metal_theme);
      CHECK(pixels_of(image, icon.color) > 100);
      const QImage form = image.createAlphaMask();
      for (const QImage& other : forms) CHECK(test::differing_pixels(form, other) > 100);
      forms.push_back(form);
    }
  }

  TEST_CASE("a lamp is dark, red or green") {
    const QImage dark = drawn("GreyPic", grey_theme);
    CHECK(test::pixels_like(dark, grey_theme.icon_outline) > 200);
    CHECK(test::pixels_like(drawn("RedPic", grey_theme), signal_red) > 200);
    CHECK(test::pixels_like(drawn("GreenPic", grey_theme), signal_green) > 200);
  }

  TEST_CASE("the time's dial has the hours, an event's has ticks alone, a warning's is red") {
    const QImage time = drawn("TimeDial", metal_theme);
    const QImage show = drawn("ShowDial", metal_theme);
    CHECK(test::differing_pixels(time, show) > 40);
    const QColor warning(drawn("RedDial", metal_theme).pixel(30, 20));
    CHECK(warning.red() > warning.green() + 80);
    const QColor plain(show.pixel(30, 20));
    CHECK(plain.red() < plain.green() + 20);
  }
}

}  // namespace
}  // namespace lineweir

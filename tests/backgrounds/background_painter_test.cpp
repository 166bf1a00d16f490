#include "backgrounds/background_painter.h"

#include <doctest/doctest.h>

#include "desktop/theme.h"
#include "forms/layout.h"

namespace lineweir::test {
namespace {

const Theme& theme_of(const Background& background) {
  return background.face == ScreenFace::Grey ? grey_theme : metal_theme;
}

TEST_SUITE("backgrounds/painter") {
  TEST_CASE("there are 28 pictures, among them all that any row count asks for") {
    const std::vector<Background> backgrounds = all_backgrounds();
    CHECK(backgrounds.size() == 28);
    for (int rows = 0; rows <= 20; ++rows) {
      for (const ScreenPart part : {ScreenPart::Top, ScreenPart::Bottom}) {
        for (const ScreenFace face : {ScreenFace::Metal, ScreenFace::Grey}) {
          const std::string file = background_file(part, face, rows);
          CAPTURE(file);
          CHECK(std::ranges::find(backgrounds, file, &Background::file) != backgrounds.end());
        }
      }
    }
  }

  TEST_CASE("each has the shape of the background that it stands behind") {
    for (const Background& background : all_backgrounds()) {
      CAPTURE(background.file);
      const int rows = background.visible_lines;
      const QImage picture = paint_background(background, 2);
      CHECK(picture.width() == root_width(rows) * 2 / 15);
      const int height = background.part == ScreenPart::Top
                             ? layout_range(rows).first_row_top
                             : content_height(rows) - panel_top(rows);
      CHECK(picture.height() == height * 2 / 15);
    }
  }

  TEST_CASE("what stands on it can be read") {
    for (const Background& background : all_backgrounds()) {
      CAPTURE(background.file);
      const Theme& theme = theme_of(background);
      const bool top = background.part == ScreenPart::Top;
      const QColor text = QColor::fromRgb(top ? theme.heading : theme.panel.text);
      const QImage picture = paint_background(background, 1);
      // The groove along the panel's upper edge carries no text.
      for (int y = top ? 0 : 4; y < picture.height(); y += 3) {
        for (int x = 0; x < picture.width(); x += 7) {
          if (contrast(text, picture.pixelColor(x, y)) >= readable_contrast) continue;
          FAIL_CHECK("unreadable at " << x << ", " << y);
          return;
        }
      }
    }
  }
}

}  // namespace
}  // namespace lineweir::test

#include "backgrounds/background_painter.h"

#include <QPainter>
#include <algorithm>
#include <array>

#include "desktop/painter_faces.h"
#include "desktop/picture_painters.h"
#include "forms/layout.h"

namespace lineweir {
namespace {

constexpr int twips_of_unit = 15;

const Theme& theme_of(ScreenFace face) {
  return face == ScreenFace::Grey ? grey_theme : metal_theme;
}

}  // namespace

std::vector<Background> all_backgrounds() {
  std::vector<Background> backgrounds;
  for (int rows = 1; rows <= background_ranges.back().last_row_count; ++rows) {
    for (const ScreenPart part : {ScreenPart::Top, ScreenPart::Bottom}) {
      for (const ScreenFace face : {ScreenFace::Metal, ScreenFace::Grey}) {
        std::string file = background_file(part, face, rows);
        if (std::ranges::find(backgrounds, file, &Background::file) != backgrounds.end()) continue;
        backgrounds.push_back({std::move(file), part, face, rows});
      }
    }
  }
  return backgrounds;
}

QImage paint_background(const Background& background, int pixels_per_unit) {
  const int rows = background.visible_lines;
  const auto pixels = [&](int twips) { return twips * pixels_per_unit / twips_of_unit; };
  const bool top = background.part == ScreenPart::Top;
  const int form_height = content_height(rows);
  const int height = top ? layout_range(rows).first_row_top : form_height - panel_top(rows);

  QImage picture(pixels(root_width(rows)), pixels(height), QImage::Format_RGB32);
  picture.fill(Qt::black);
  const Brushwork brushwork{theme_of(background.face), static_cast<double>(pixels_per_unit)};
  QPainter painter(&picture);
  if (top) {
    const QRect form(0, 0, picture.width(), pixels(form_height));
    paint_face(painter, picture.rect(), form, brushwork);
  } else {
    paint_panel(painter, picture.rect(), brushwork);
  }
  return picture;
}

}  // namespace lineweir

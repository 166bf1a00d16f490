#include "desktop/strip_look.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "desktop/form_canvas.h"
#include "elements/picture.h"

namespace lineweir {
namespace {

struct StripRow {
  std::string_view picture;
  StripColors Theme::*colors;
};
constexpr std::array strips = {
    StripRow{"DataRowWhite", &Theme::white_strip},
    StripRow{"DataRowGreen", &Theme::green_strip},
    StripRow{"DataRowRed", &Theme::red_strip},
    StripRow{"DataRowWhiteShort", &Theme::white_strip},
    StripRow{"DataRowGreenShort", &Theme::green_strip},
    StripRow{"DataRowRedShort", &Theme::red_strip},
    StripRow{"DataRowWhiteLong", &Theme::white_strip},
    StripRow{"DataRowGreenLong", &Theme::green_strip},
    StripRow{"DataRowRedLong", &Theme::red_strip},
};

StripColors Theme::*colors_of(const FormCanvas& canvas, int row) {
  const Control* strip = canvas.control_named("DataRow", row);
  if (strip == nullptr) return &Theme::white_strip;
  const std::string& picture = static_cast<const Picture*>(strip)->picture.get();
  const auto* found = std::ranges::find(strips, picture, &StripRow::picture);
  return found == strips.end() ? &Theme::white_strip : found->colors;
}

}  // namespace

const StripColors& strip_colors(const FormCanvas& canvas, int row) {
  return canvas.row_theme().*colors_of(canvas, row);
}

QRectF clipped_to_strip(const FormCanvas& canvas, int row, const QRectF& place) {
  const Control* strip = canvas.control_named("DataRow", row);
  if (strip == nullptr) return place;
  const double left = std::max<double>(place.left(), strip->left);
  const double right = std::min<double>(place.right(), strip->left + strip->width);
  return {left, place.top(), std::max(0.0, right - left), place.height()};
}

QRectF clipped_to_strips(const FormCanvas& canvas, const QRectF& place) {
  for (int row = 0;; ++row) {
    const Control* strip = canvas.control_named("DataRow", row);
    if (strip == nullptr) return place;
    if (strip->visible) return clipped_to_strip(canvas, row, place);
  }
}

}  // namespace lineweir

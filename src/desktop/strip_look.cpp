#include "desktop/strip_look.h"

#include <algorithm>

#include "desktop/form_canvas.h"
#include "elements/control.h"

namespace lineweir {

const StripColors& strip_colors(const FormCanvas& canvas, int row) {
  return canvas.row_theme().strip(canvas.row_look(row).state);
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

#include "desktop/placement.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace lineweir {
namespace {

struct Design {
  std::string_view picture;
  int width;
  int height;
};
constexpr std::array designs = {
    Design{"picRealTimeClock", 1695, 1740},
    Design{"picShowTimeClock", 1695, 1740},
    Design{"RedClock", 1285, 1285},
};

// The countdown is as large as the time of day, with the event's name under it: the dial leaves
// them room that the design doesn't have.
struct DrawnPlace {
  std::string_view element;
  QRectF place;
};
constexpr std::array drawn_places = {
    DrawnPlace{"CountDownTime", {0, 30, 1695, 330}},
    DrawnPlace{"StatusText", {0, 355, 1695, 190}},
    DrawnPlace{"imgShowClock", {295, 560, 1105, 1105}},
    DrawnPlace{"RedClock", {295, 560, 1105, 1105}},
};

QRectF own_place(const Control& control) {
  const auto* drawn = std::ranges::find(drawn_places, control.name(), &DrawnPlace::element);
  if (drawn != drawn_places.end()) return drawn->place;
  return {static_cast<double>(control.left), static_cast<double>(control.top),
          static_cast<double>(control.width), static_cast<double>(control.height)};
}

}  // namespace

QSizeF inner_size(const Control& picture) {
  const auto* design = std::ranges::find(designs, picture.name(), &Design::picture);
  if (design == designs.end()) {
    return {static_cast<double>(picture.width), static_cast<double>(picture.height)};
  }
  return {static_cast<double>(design->width), static_cast<double>(design->height)};
}

QRectF place_on_form(const Control& control) {
  const QRectF own = own_place(control);
  const Control* container = control.container();
  if (container == nullptr) return own;
  const QRectF outer = place_on_form(*container);
  const QSizeF inner = inner_size(*container);
  const double stretch_x = inner.width() > 0 ? outer.width() / inner.width() : 1;
  const double stretch_y = inner.height() > 0 ? outer.height() / inner.height() : 1;
  return {outer.left() + own.left() * stretch_x, outer.top() + own.top() * stretch_y,
          own.width() * stretch_x, own.height() * stretch_y};
}

}  // namespace lineweir

#pragma once

#include <algorithm>
#include <cmath>
#include <cstdlib>

#include "forms/layout.h"

namespace lineweir {

// From twips of the design to twips of the form as it stands: left and width follow the form's
// width, top and height its height.
struct DesignScale {
  double ratio_across = 1;
  double ratio_down = 1;

  int across(int twips) const { return nearest(twips * ratio_across); }
  int down(int twips) const { return nearest(twips * ratio_down); }
  Place of(const Place& design) const {
    return {across(design.left), down(design.top), across(design.width), down(design.height)};
  }

  // Back from a width on the form to the one that it has at design size.
  int design_width(int twips) const { return nearest(twips / ratio_across); }

 private:
  static int nearest(double twips) { return static_cast<int>(std::lround(twips)); }
};

// How much larger a side is than its design. Less than a pixel is no difference: a reset gives some
// row counts a height that is a twip off.
inline double design_ratio(int side, int design_side) {
  constexpr int twips_of_pixel = 15;
  if (std::abs(side - design_side) < twips_of_pixel) return 1;
  return static_cast<double>(std::max(1, side)) / design_side;
}

// The scale of a form of that size, its menu bar included where it is shown.
inline DesignScale design_scale(int width, int height, int visible_lines, bool menu_bar) {
  DesignScale scale;
  scale.ratio_across = design_ratio(width, root_width(visible_lines));
  scale.ratio_down = design_ratio(height, root_height(visible_lines, menu_bar));
  return scale;
}

}  // namespace lineweir

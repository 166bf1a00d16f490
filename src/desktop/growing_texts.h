#pragma once

#include <algorithm>
#include <cmath>

#include "desktop/dialog_letters.h"

namespace lineweir {

// How much larger than designed texts are in a form that is so much larger. Texts that don't grow
// follow half of the way, since the letters of a small window can't be read in high rows.
inline double text_zoom(double zoom, bool texts_grow) {
  return texts_grow ? zoom : 1 + (zoom - 1) / 2;
}

// The same for a form that may be stretched more one way than the other: letters grow by the
// smaller growth, and follow half of the way what the form's area has grown by.
inline double text_zoom(double across, double down, bool texts_grow) {
  return std::max(text_zoom(std::min(across, down), texts_grow),
                  text_zoom(std::sqrt(across * down), false));
}

// The letters of rows have 8 points by design. Menus and dialogs keep their own, larger ones until
// those of the rows have grown as large, and then are as large as those.
inline int grown_letters(double text_zoom) {
  constexpr double row_letter_pixels = 8 * 96.0 / 72.0;
  return std::max(design_letter_pixels,
                  static_cast<int>(std::lround(row_letter_pixels * text_zoom)));
}

// The highest dialog has so many letters' heights, with the frame around its window.
inline constexpr int highest_dialog_in_letters = 58;

// The size of letters in dialogs, which must have room on a screen of that height.
inline int dialog_letters(int wanted_pixels, int screen_height) {
  return std::clamp(wanted_pixels, design_letter_pixels,
                    std::max(design_letter_pixels, screen_height / highest_dialog_in_letters));
}

}  // namespace lineweir

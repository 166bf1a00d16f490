#pragma once

#include <QImage>
#include <string>
#include <vector>

#include "screen/background_files.h"

namespace lineweir {

// One picture behind the elements of the main form.
struct Background {
  std::string file;
  ScreenPart part;
  ScreenFace face;
  // A row count that the picture is for.
  int visible_lines;
};

// All pictures that any row count needs, each file once.
std::vector<Background> all_backgrounds();

// Draws the picture in the shape of the background that it stands behind at design size, with
// `pixels_per_unit` pixels in a 96th of an inch.
QImage paint_background(const Background& background, int pixels_per_unit);

}  // namespace lineweir

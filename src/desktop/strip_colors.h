#pragma once

#include <QRgb>
#include <array>

#include "desktop/surface.h"
#include "screen/row_states.h"

namespace lineweir {

// What tells a strip apart whose colour isn't seen: the line around it, and the sign at its left
// end.
enum class StripFrame {
  None,
  // A thin line inside the edge.
  Thin,
  // A broad one, at the edge itself.
  Broad,
  // A thin one that is broken.
  Broken,
};
enum class StripSign {
  None,
  // A pointer towards the line's number.
  Pointer,
  Padlock,
};

struct StripColors {
  Surface surface;
  // The line of light inside the upper edge.
  QRgb rim;
  QRgb edge;
  // The marks between the columns.
  QRgb mark;
  StripFrame frame;
  QRgb frame_color;
  StripSign sign;
  QRgb sign_color;
};

// By the row's state. The brightest is what matters most.
using StripColorTable = std::array<StripColors, row_state_count>;

extern const StripColorTable metal_strips;
extern const StripColorTable grey_strips;

// The same while nobody knows whether they still hold: nearer to the ground, and as well to read.
StripColorTable dimmed(const StripColorTable& strips, QRgb ground);

}  // namespace lineweir

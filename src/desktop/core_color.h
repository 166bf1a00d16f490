#pragma once

#include <QColor>

namespace lineweir {

// The core's colours hold red in the low byte.
inline QColor shown_color(int core_color) {
  return {core_color & 0xff, (core_color >> 8) & 0xff, (core_color >> 16) & 0xff};
}

}  // namespace lineweir

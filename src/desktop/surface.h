#pragma once

#include <QRgb>

namespace lineweir {

// From the upper to the lower edge of a surface.
struct Shading {
  QRgb upper;
  QRgb lower;
};

// A surface that text stands on.
struct Surface {
  Shading shading;
  QRgb text;
};

}  // namespace lineweir

#pragma once

#include <QRect>
#include <QRectF>
#include <cmath>

namespace lineweir {

// The core's lengths are twips, 1440 to the inch; a screen's logical pixels are 96 to the inch.
inline constexpr int twips_per_pixel = 15;

// The pixel edge nearest to a place in twips. `scale` is the number of device's pixels in a logical
// one.
inline int pixel_edge(double twips, double scale = 1) {
  return static_cast<int>(std::floor(twips * scale / twips_per_pixel + 0.5));
}

// Edges are rounded, not widths: neighbours that share an edge in twips share it in pixels, at any
// scale.
inline QRect pixel_rect(const QRectF& twips, double scale = 1) {
  const int left = pixel_edge(twips.left(), scale);
  const int top = pixel_edge(twips.top(), scale);
  return {left, top, pixel_edge(twips.right(), scale) - left,
          pixel_edge(twips.bottom(), scale) - top};
}

inline int twips_of(int pixels) { return pixels * twips_per_pixel; }

}  // namespace lineweir

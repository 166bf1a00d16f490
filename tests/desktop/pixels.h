#pragma once

#include <QColor>
#include <QImage>
#include <QWidget>
#include <algorithm>
#include <cstdlib>
#include <map>

#include "desktop/theme.h"

namespace lineweir::test {

// What the window shows in that place of the widget, which counts from the widget's corner.
inline QImage shown_pixels(QWidget& widget, const QRect& place) {
  QWidget& window = *widget.window();
  return window.grab(QRect(widget.mapTo(&window, place.topLeft()), place.size())).toImage();
}

inline QImage shown_pixels(QWidget& widget) { return shown_pixels(widget, widget.rect()); }

// The best contrast of a pixel with the ground that its line of pixels mostly consists of. Where
// there is text that is the text's: its strokes are at least a pixel wide.
inline double best_contrast(const QImage& image) {
  double best = 1;
  for (int y = 0; y < image.height(); ++y) {
    std::map<QRgb, int> counts;
    for (int x = 0; x < image.width(); ++x) ++counts[image.pixel(x, y)];
    if (counts.size() < 2) continue;
    const auto ground =
        std::ranges::max_element(counts, {}, [](const auto& entry) { return entry.second; });
    for (const auto& [color, count] : counts) {
      best = std::max(best, contrast(QColor::fromRgb(color), QColor::fromRgb(ground->first)));
    }
  }
  return best;
}

// How many pixels of the two pictures, which have one size, differ.
inline int differing_pixels(const QImage& a, const QImage& b) {
  int differing = 0;
  for (int y = 0; y < a.height(); ++y) {
    for (int x = 0; x < a.width(); ++x) differing += a.pixel(x, y) != b.pixel(x, y);
  }
  return differing;
}

inline int pixels_of(const QImage& image, QRgb color) {
  int found = 0;
  for (int y = 0; y < image.height(); ++y) {
    for (int x = 0; x < image.width(); ++x) found += image.pixel(x, y) == color;
  }
  return found;
}

// The same for what is drawn with light and shade, in which few pixels have the very colour.
inline int pixels_like(const QImage& image, QRgb wanted) {
  constexpr int tolerance = 40;
  int found = 0;
  for (int y = 0; y < image.height(); ++y) {
    for (int x = 0; x < image.width(); ++x) {
      const QRgb pixel = image.pixel(x, y);
      found += std::abs(qRed(pixel) - qRed(wanted)) < tolerance &&
               std::abs(qGreen(pixel) - qGreen(wanted)) < tolerance &&
               std::abs(qBlue(pixel) - qBlue(wanted)) < tolerance;
    }
  }
  return found;
}

}  // namespace lineweir::test

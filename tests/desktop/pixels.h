#pragma once

#include <QColor>
#include <QImage>
#include <QWidget>
#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <map>
#include <span>

#include "desktop/theme.h"

namespace lineweir::test {

// What the window shows in that place of the widget, which counts from the widget's corner.
inline QImage shown_pixels(QWidget& widget, const QRect& place) {
  QWidget& window = *widget.window();
  return window.grab(QRect(widget.mapTo(&window, place.topLeft()), place.size())).toImage();
}

inline QImage shown_pixels(QWidget& widget) { return shown_pixels(widget, widget.rect()); }

// A picture as its rows are read: each pixel a QRgb. Asking QImage for one pixel after the other
// takes several times as long.
inline QImage readable(const QImage& image) { return image.convertToFormat(QImage::Format_ARGB32); }

inline std::span<const QRgb> row_of(const QImage& readable, int y) {
  return {reinterpret_cast<const QRgb*>(readable.constScanLine(y)),
          static_cast<std::size_t>(readable.width())};
}

// How many pixels of the picture are such.
template <class IsSuch>
int count_pixels(const QImage& image, IsSuch&& is_such) {
  const QImage picture = readable(image);
  std::ptrdiff_t found = 0;
  for (int y = 0; y < picture.height(); ++y) {
    found += std::ranges::count_if(row_of(picture, y), is_such);
  }
  return static_cast<int>(found);
}

// The best contrast of a pixel with the ground that its line of pixels mostly consists of. Where
// there is text that is the text's: its strokes are at least a pixel wide.
inline double best_contrast(const QImage& image) {
  const QImage picture = readable(image);
  double best = 1;
  for (int y = 0; y < picture.height(); ++y) {
    std::map<QRgb, int> counts;
    for (const QRgb pixel : row_of(picture, y)) ++counts[pixel];
    if (counts.size() < 2) continue;
    const auto ground =
        std::ranges::max_element(counts, {}, [](const auto& entry) { return entry.second; });
    for (const auto& [color, count] : counts) {
      best = std::max(best, contrast(QColor::fromRgb(color), QColor::fromRgb(ground->first)));
    }
  }
  return best;
}

// Where two pictures of one size differ; empty where they don't.
inline QRect differing_place(const QImage& one, const QImage& other) {
  const QImage a = readable(one);
  const QImage b = readable(other);
  QRect differing;
  for (int y = 0; y < a.height(); ++y) {
    const auto a_row = row_of(a, y);
    const auto b_row = row_of(b, y);
    if (std::ranges::equal(a_row, b_row)) continue;
    for (std::size_t x = 0; x < a_row.size(); ++x) {
      if (a_row[x] != b_row[x]) differing |= QRect(static_cast<int>(x), y, 1, 1);
    }
  }
  return differing;
}

// How many pixels of the two pictures, which have one size, differ.
inline int differing_pixels(const QImage& one, const QImage& other) {
  const QImage a = readable(one);
  const QImage b = readable(other);
  int differing = 0;
  for (int y = 0; y < a.height(); ++y) {
    const auto b_row = row_of(b, y);
    std::size_t x = 0;
    for (const QRgb pixel : row_of(a, y)) differing += pixel != b_row[x++];
  }
  return differing;
}

inline int pixels_of(const QImage& image, QRgb color) {
  return count_pixels(image, [color](QRgb pixel) { return pixel == color; });
}

// The same for what is drawn with light and shade, in which few pixels have the very colour.
inline int pixels_like(const QImage& image, QRgb wanted) {
  constexpr int tolerance = 40;
  return count_pixels(image, [wanted](QRgb pixel) {
    return std::abs(qRed(pixel) - qRed(wanted)) < tolerance &&
           std::abs(qGreen(pixel) - qGreen(wanted)) < tolerance &&
           std::abs(qBlue(pixel) - qBlue(wanted)) < tolerance;
  });
}

}  // namespace lineweir::test

#include "desktop/painter_surfaces.h"

#include <QImage>
#include <QLinearGradient>
#include <QPainter>
#include <algorithm>
#include <array>
#include <cstdint>

namespace lineweir {
namespace {

constexpr int tile_width = 256;
constexpr int tile_height = 128;

// A small generator of its own, so that the metal looks the same on every machine.
class Scratches {
 public:
  int next(int limit) {
    state_ = state_ * 1664525u + 1013904223u;
    return static_cast<int>((state_ >> 8) % static_cast<std::uint32_t>(limit));
  }

 private:
  std::uint32_t state_ = 20240117;
};

QImage metal_tile(int strength) {
  QImage tile(tile_width, tile_height, QImage::Format_ARGB32_Premultiplied);
  Scratches scratches;
  for (int y = 0; y < tile_height; ++y) {
    auto* row = reinterpret_cast<QRgb*>(tile.scanLine(y));
    int left = 0;
    int shade = 0;
    // Each row's scratches begin elsewhere, so that no seam shows where tiles meet.
    const int start = scratches.next(tile_width);
    for (int i = 0; i < tile_width; ++i) {
      const int x = (start + i) % tile_width;
      if (left == 0) {
        left = 24 + scratches.next(96);
        shade = scratches.next(2 * strength + 1) - strength;
      }
      --left;
      const int alpha = std::abs(shade);
      const int grey = shade > 0 ? alpha : 0;
      row[x] = qRgba(grey, grey, grey, alpha);
    }
  }
  return tile;
}

const QImage& cached_tile(int strength) {
  struct Entry {
    int strength = -1;
    QImage tile;
  };
  static std::array<Entry, 2> entries;
  for (Entry& entry : entries) {
    if (entry.strength == strength) return entry.tile;
    if (entry.strength < 0) {
      entry = {strength, metal_tile(strength)};
      return entry.tile;
    }
  }
  entries[0] = {strength, metal_tile(strength)};
  return entries[0].tile;
}

}  // namespace

void fill_shaded(QPainter& painter, const QRect& place, const QRect& whole, const Shading& shading,
                 double radius) {
  QBrush brush(QColor::fromRgb(shading.upper));
  if (shading.upper != shading.lower) {
    QLinearGradient gradient(0, whole.top(), 0, whole.top() + whole.height());
    gradient.setColorAt(0, QColor::fromRgb(shading.upper));
    gradient.setColorAt(1, QColor::fromRgb(shading.lower));
    brush = gradient;
  }
  if (radius <= 0) {
    painter.fillRect(place, brush);
    return;
  }
  painter.setRenderHint(QPainter::Antialiasing, true);
  painter.setPen(Qt::NoPen);
  painter.setBrush(brush);
  painter.drawRoundedRect(place, radius, radius);
  painter.setRenderHint(QPainter::Antialiasing, false);
}

void draw_edge(QPainter& painter, const QRect& place, QRgb color, int width, double radius) {
  painter.setRenderHint(QPainter::Antialiasing, true);
  painter.setPen(QPen(QColor::fromRgba(color), width));
  painter.setBrush(Qt::NoBrush);
  const double inset = width / 2.0;
  painter.drawRoundedRect(QRectF(place).adjusted(inset, inset, -inset, -inset), radius, radius);
  painter.setRenderHint(QPainter::Antialiasing, false);
}

void brush_metal(QPainter& painter, const QRect& place, int strength) {
  // The tile counts from the painter's origin, whatever part of a surface is painted.
  painter.save();
  painter.setBrushOrigin(0, 0);
  painter.fillRect(place, QBrush(cached_tile(strength)));
  painter.restore();
}

}  // namespace lineweir

#pragma once

#include <QRect>

#include "desktop/theme.h"

class QPainter;

namespace lineweir {

struct Brushwork;

// Fills the place with a shading that runs from the upper to the lower edge of `whole`, which may
// be larger, with corners of that radius.
void fill_shaded(QPainter& painter, const QRect& place, const QRect& whole, const Shading& shading,
                 double radius = 0);

// A line of that width along the inside of the place's edge.
void draw_edge(QPainter& painter, const QRect& place, QRgb color, int width, double radius);

// The brushing of a metal face: fine horizontal scratches, the same at each drawing.
void brush_metal(QPainter& painter, const QRect& place, int strength);

}  // namespace lineweir

#include "desktop/painter_keys.h"

#include <QPainter>

#include "desktop/painter_surfaces.h"
#include "desktop/picture_painters.h"

namespace lineweir {
namespace {

constexpr double key_corner = 3;

double radius_of(const Brushwork& brushwork) { return key_corner * brushwork.unit; }

void paint_raised_key(QPainter& painter, const QRect& place, const KeyColors& colors,
                      const Brushwork& brushwork) {
  const int line = brushwork.line();
  const double radius = radius_of(brushwork);
  const QRect face = key_face(place, brushwork);
  const QRect inner = face.adjusted(line, line, -line, -line);
  fill_shaded(painter, face, face, {colors.edge, colors.edge}, radius);
  fill_shaded(painter, inner, face, {colors.rim, colors.rim}, radius - line);
  fill_shaded(painter, inner.adjusted(0, line, 0, 0), face, colors.surface.shading, radius - line);
}

}  // namespace

QRect key_face(const QRect& place, const Brushwork& brushwork) {
  return place.adjusted(0, 0, -brushwork.line(), -brushwork.line());
}

int pressed_step(const Brushwork& brushwork) { return brushwork.line(); }

void paint_key_up(QPainter& painter, const QRect& place, const Brushwork& brushwork) {
  paint_raised_key(painter, place, brushwork.theme.key_up, brushwork);
}

void paint_key_hover(QPainter& painter, const QRect& place, const Brushwork& brushwork) {
  paint_raised_key(painter, place, brushwork.theme.key_hover, brushwork);
}

void paint_key_down(QPainter& painter, const QRect& place, const Brushwork& brushwork) {
  const KeyColors& colors = brushwork.theme.key_down;
  const int line = brushwork.line();
  const double radius = radius_of(brushwork);
  const QRect face = key_face(place, brushwork);
  const QRect inner = face.adjusted(line, line, -line, -line);
  fill_shaded(painter, face, face, {colors.edge, colors.edge}, radius);
  fill_shaded(painter, inner, face, {colors.rim, colors.rim}, radius - line);
  fill_shaded(painter, inner.adjusted(0, 2 * line, 0, 0), face, colors.surface.shading,
              radius - line);
}

void paint_key_disabled(QPainter& painter, const QRect& place, const Brushwork& brushwork) {
  const KeyColors& colors = brushwork.theme.key_disabled;
  const QRect face = key_face(place, brushwork);
  const double radius = radius_of(brushwork);
  fill_shaded(painter, face, face, colors.surface.shading, radius);
  draw_edge(painter, face, colors.edge, brushwork.line(), radius);
}

void paint_key_latched(QPainter& painter, const QRect& place, const Brushwork& brushwork) {
  paint_key_down(painter, place, brushwork);
  paint_key_light(painter, place, brushwork.theme.latch_light, brushwork);
}

void paint_key_light(QPainter& painter, const QRect& place, QRgb color,
                     const Brushwork& brushwork) {
  const int line = brushwork.line();
  const QRect face = key_face(place, brushwork);
  const int inset = 5 * line;
  painter.fillRect(
      QRect(face.left() + inset, face.bottom() - 4 * line + 1, face.width() - 2 * inset, 2 * line),
      QColor::fromRgb(color));
}

void paint_key_edge(QPainter& painter, const QRect& place, QRgb color, int lines,
                    const Brushwork& brushwork) {
  draw_edge(painter, key_face(place, brushwork), color, lines * brushwork.line(),
            radius_of(brushwork));
}

void paint_focus_ring(QPainter& painter, const QRect& place, const Brushwork& brushwork) {
  const int width = 2 * brushwork.line();
  draw_edge(painter, key_face(place, brushwork), brushwork.theme.focus_ring, width,
            radius_of(brushwork));
}

}  // namespace lineweir

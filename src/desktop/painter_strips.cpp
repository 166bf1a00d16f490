#include "desktop/painter_strips.h"

#include <QPainter>
#include <QPainterPath>
#include <algorithm>

#include "desktop/painter_surfaces.h"
#include "desktop/picture_painters.h"

namespace lineweir {
namespace {

constexpr double corner = 2;

// As far as the pointer reaches before it would touch a line's number, of the strip's height and of
// its width: a form may be stretched one way only.
constexpr double pointer_of_height = 0.3;
constexpr double pointer_of_width = 0.0125;

void paint_pointer(QPainter& painter, const QRect& strip, QRgb color) {
  const QRectF box(strip);
  const double reach = std::min(box.height() * pointer_of_height, box.width() * pointer_of_width);
  QPainterPath path;
  path.moveTo(box.topLeft());
  path.lineTo(box.left() + reach, box.center().y());
  path.lineTo(box.bottomLeft());
  path.closeSubpath();
  painter.setRenderHint(QPainter::Antialiasing, true);
  painter.fillPath(path, QColor::fromRgb(color));
  painter.setRenderHint(QPainter::Antialiasing, false);
}

}  // namespace

void paint_strip(QPainter& painter, const QRect& place, const StripColors& colors,
                 const Brushwork& brushwork) {
  const int line = brushwork.line();
  const QRect strip = place.adjusted(0, 0, 0, -line);
  const double radius = corner * brushwork.unit;
  fill_shaded(painter, strip, strip, {colors.edge, colors.edge}, radius);
  fill_shaded(painter, strip.adjusted(0, 0, 0, -line), strip, {colors.rim, colors.rim}, radius);
  fill_shaded(painter, strip.adjusted(0, line, 0, -line), strip, colors.surface.shading, radius);
  switch (colors.sign) {
    case StripSign::Pointer:
      return paint_pointer(painter, strip, colors.sign_color);
    case StripSign::Frame:
      // Inside the dark edge, so that it is seen on a light face too.
      draw_edge(painter, strip, colors.edge, line, radius);
      return draw_edge(painter, strip.adjusted(line, line, -line, -line), colors.sign_color, line,
                       radius);
    case StripSign::None:
      break;
  }
}

void paint_mark(QPainter& painter, const QRect& place, const StripColors& colors,
                const Brushwork& brushwork) {
  const int line = brushwork.line();
  const int inset = 3 * line;
  const QRect mark(place.left(), place.top() + inset, std::min(line, place.width()),
                   place.height() - line - 2 * inset);
  painter.fillRect(mark, QColor::fromRgb(colors.mark));
}

}  // namespace lineweir

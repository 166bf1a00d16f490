#include "desktop/painter_strips.h"

#include <QPainter>

#include "desktop/painter_surfaces.h"
#include "desktop/picture_painters.h"

namespace lineweir {
namespace {

constexpr double corner = 2;

}  // namespace

void paint_strip(QPainter& painter, const QRect& place, const StripColors& colors,
                 const Brushwork& brushwork) {
  const int line = brushwork.line();
  const QRect strip = place.adjusted(0, 0, 0, -line);
  const double radius = corner * brushwork.unit;
  fill_shaded(painter, strip, strip, {colors.edge, colors.edge}, radius);
  fill_shaded(painter, strip.adjusted(0, 0, 0, -line), strip, {colors.rim, colors.rim}, radius);
  fill_shaded(painter, strip.adjusted(0, line, 0, -line), strip, colors.surface.shading, radius);
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

#include "desktop/painter_strips.h"

#include <QPainter>
#include <QPainterPath>
#include <QPen>
#include <algorithm>

#include "desktop/painter_signs.h"
#include "desktop/painter_surfaces.h"
#include "desktop/picture_painters.h"

namespace lineweir {
namespace {

constexpr double strip_corner = 2;

// As far as a sign reaches before it would touch a line's number, of the strip's height and of its
// width: a form may be stretched one way only.
constexpr double sign_of_height = 0.42;
constexpr double sign_of_width = 0.0155;
// A padlock keeps off the number.
constexpr double padlock_part = 0.85;

double sign_reach(const QRect& strip) {
  return std::min(strip.height() * sign_of_height, strip.width() * sign_of_width);
}

void paint_pointer(QPainter& painter, const QRect& strip, QRgb color) {
  const QRectF box(strip);
  QPainterPath path;
  path.moveTo(box.topLeft());
  path.lineTo(box.left() + sign_reach(strip), box.center().y());
  path.lineTo(box.bottomLeft());
  path.closeSubpath();
  painter.setRenderHint(QPainter::Antialiasing, true);
  painter.fillPath(path, QColor::fromRgb(color));
  painter.setRenderHint(QPainter::Antialiasing, false);
}

void paint_sign(QPainter& painter, const QRect& strip, const StripColors& colors, int line) {
  switch (colors.sign) {
    case StripSign::Pointer:
      return paint_pointer(painter, strip, colors.sign_color);
    case StripSign::Padlock: {
      const double wide = sign_reach(strip) * padlock_part;
      const double high = wide * 1.3;
      return paint_padlock(
          painter,
          {strip.left() + 2.0 * line, QRectF(strip).center().y() - high / 2, wide - line, high},
          colors.sign_color);
    }
    case StripSign::None:
      break;
  }
}

void paint_frame(QPainter& painter, const QRect& strip, StripFrame frame, const StripColors& colors,
                 int line, double radius) {
  switch (frame) {
    case StripFrame::Thin:
      // Inside the dark edge, so that it is seen on a light face too.
      draw_edge(painter, strip, colors.edge, line, radius);
      return draw_edge(painter, strip.adjusted(line, line, -line, -line), colors.frame_color, line,
                       radius);
    case StripFrame::Broad:
      return draw_edge(painter, strip, colors.frame_color, 2 * line, radius);
    case StripFrame::Broken: {
      QPen pen(QColor::fromRgb(colors.frame_color), line, Qt::CustomDashLine, Qt::FlatCap);
      pen.setDashPattern({5, 3});
      painter.setPen(pen);
      painter.setBrush(Qt::NoBrush);
      const double inset = line / 2.0;
      return painter.drawRect(QRectF(strip).adjusted(inset, inset, -inset, -inset));
    }
    case StripFrame::None:
      break;
  }
}

}  // namespace

void paint_strip(QPainter& painter, const QRect& place, const StripColors& colors,
                 const Brushwork& brushwork) {
  const int line = brushwork.line();
  const QRect strip = place.adjusted(0, 0, 0, -line);
  const double radius = strip_corner * brushwork.unit;
  fill_shaded(painter, strip, strip, {colors.edge, colors.edge}, radius);
  fill_shaded(painter, strip.adjusted(0, 0, 0, -line), strip, {colors.rim, colors.rim}, radius);
  fill_shaded(painter, strip.adjusted(0, line, 0, -line), strip, colors.surface.shading, radius);
  paint_frame(painter, strip, colors.frame, colors, line, radius);
  paint_sign(painter, strip, colors, line);
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

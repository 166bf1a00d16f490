#include "desktop/painter_icons.h"

#include <QPainter>
#include <QPainterPath>
#include <algorithm>

#include "desktop/picture_painters.h"

namespace lineweir {
namespace {

// A square of whole pixels, so that an icon has the same form in each row.
QRectF square_in(const QRect& place) {
  const int side = std::min(place.width(), place.height());
  return {static_cast<double>(place.left() + (place.width() - side) / 2),
          static_cast<double>(place.top() + (place.height() - side) / 2), static_cast<double>(side),
          static_cast<double>(side)};
}

// The outline lies around the shape and takes nothing of it.
void draw_filled(QPainter& painter, const QPainterPath& path, QRgb color,
                 const Brushwork& brushwork) {
  painter.setRenderHint(QPainter::Antialiasing, true);
  painter.setPen(QPen(QColor::fromRgb(brushwork.theme.icon_outline), 2 * brushwork.unit,
                      Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
  painter.setBrush(Qt::NoBrush);
  painter.drawPath(path);
  painter.fillPath(path, QColor::fromRgb(color));
  painter.setRenderHint(QPainter::Antialiasing, false);
}

}  // namespace

void paint_circle(QPainter& painter, const QRect& place, const Brushwork& brushwork) {
  QPainterPath path;
  path.addEllipse(square_in(place));
  draw_filled(painter, path, signal_red, brushwork);
}

void paint_triangle(QPainter& painter, const QRect& place, const Brushwork& brushwork) {
  const QRectF square = square_in(place);
  // Wider than the square, since its upper half is mostly empty.
  const double spread = square.width() * 0.1;
  QPainterPath path;
  path.moveTo(square.center().x(), square.top());
  path.lineTo(square.right() + spread, square.bottom());
  path.lineTo(square.left() - spread, square.bottom());
  path.closeSubpath();
  draw_filled(painter, path, signal_yellow, brushwork);
}

void paint_bars(QPainter& painter, const QRect& place, const Brushwork& brushwork) {
  const QRectF square = square_in(place);
  const double bar = std::round(square.width() * 0.33);
  QPainterPath path;
  path.addRect(QRectF(square.left(), square.top(), bar, square.height()));
  path.addRect(QRectF(square.right() - bar, square.top(), bar, square.height()));
  draw_filled(painter, path, signal_green, brushwork);
}

void paint_cross(QPainter& painter, const QRect& place, const Brushwork& brushwork) {
  const double arm = square_in(place).width() * 0.26;
  const QRectF box = square_in(place).adjusted(arm / 2, arm / 2, -arm / 2, -arm / 2);
  painter.setRenderHint(QPainter::Antialiasing, true);
  const auto draw = [&](QRgb color, double width) {
    painter.setPen(QPen(QColor::fromRgb(color), width, Qt::SolidLine, Qt::RoundCap));
    painter.drawLine(box.topLeft(), box.bottomRight());
    painter.drawLine(box.topRight(), box.bottomLeft());
  };
  draw(brushwork.theme.icon_outline, arm + 2 * brushwork.unit);
  draw(signal_blue, arm);
  painter.setRenderHint(QPainter::Antialiasing, false);
}

}  // namespace lineweir

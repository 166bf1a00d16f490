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

void draw_filled(QPainter& painter, const QPainterPath& path, QRgb color,
                 const Brushwork& brushwork) {
  painter.setRenderHint(QPainter::Antialiasing, true);
  painter.setPen(QPen(QColor::fromRgb(brushwork.theme.icon_outline), brushwork.unit, Qt::SolidLine,
                      Qt::RoundCap, Qt::RoundJoin));
  painter.setBrush(QColor::fromRgb(color));
  painter.drawPath(path);
  painter.setRenderHint(QPainter::Antialiasing, false);
}

}  // namespace

void paint_circle(QPainter& painter, const QRect& place, const Brushwork& brushwork) {
  const double inset = brushwork.unit / 2;
  QPainterPath path;
  path.addEllipse(square_in(place).adjusted(inset, inset, -inset, -inset));
  draw_filled(painter, path, signal_red, brushwork);
}

void paint_triangle(QPainter& painter, const QRect& place, const Brushwork& brushwork) {
  const QRectF square = square_in(place);
  const double inset = brushwork.unit / 2;
  const QRectF box = square.adjusted(-inset, inset, inset, -inset);
  QPainterPath path;
  path.moveTo(box.center().x(), box.top());
  path.lineTo(box.right(), box.bottom());
  path.lineTo(box.left(), box.bottom());
  path.closeSubpath();
  draw_filled(painter, path, signal_yellow, brushwork);
}

void paint_bars(QPainter& painter, const QRect& place, const Brushwork& brushwork) {
  const QRectF square = square_in(place);
  const double inset = brushwork.unit / 2;
  const double bar = std::round(square.width() * 0.36);
  QPainterPath path;
  for (const double left : {square.left(), square.right() - bar}) {
    path.addRect(
        QRectF(left, square.top(), bar, square.height()).adjusted(inset, inset, -inset, -inset));
  }
  draw_filled(painter, path, signal_green, brushwork);
}

void paint_cross(QPainter& painter, const QRect& place, const Brushwork& brushwork) {
  const double arm = 2 * brushwork.unit;
  const QRectF box = square_in(place).adjusted(arm, arm, -arm, -arm);
  painter.setRenderHint(QPainter::Antialiasing, true);
  const auto draw = [&](QRgb color, double width) {
    painter.setPen(QPen(QColor::fromRgb(color), width, Qt::SolidLine, Qt::RoundCap));
    painter.drawLine(box.topLeft(), box.bottomRight());
    painter.drawLine(box.topRight(), box.bottomLeft());
  };
  draw(brushwork.theme.icon_outline, 3.6 * brushwork.unit);
  draw(signal_blue, 2.2 * brushwork.unit);
  painter.setRenderHint(QPainter::Antialiasing, false);
}

}  // namespace lineweir

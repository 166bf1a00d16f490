#include "desktop/painter_dials.h"

#include <QPainter>
#include <QPainterPath>
#include <algorithm>
#include <cmath>

#include "desktop/picture_painters.h"

namespace lineweir {
namespace {

constexpr int ticks = 60;
constexpr int ticks_per_hour = 5;

struct Circle {
  QPointF middle;
  double radius;
};

Circle circle_in(const QRect& place) {
  return {QRectF(place).center(), std::min(place.width(), place.height()) / 2.0};
}

}  // namespace

void paint_dial(QPainter& painter, const QRect& place, const DialColors& colors,
                const Brushwork& brushwork) {
  const auto [middle, radius] = circle_in(place);
  const double ring = std::max(1.0, radius * 0.03);
  painter.setRenderHint(QPainter::Antialiasing, true);

  QLinearGradient gradient(0, middle.y() - radius, 0, middle.y() + radius);
  gradient.setColorAt(0, QColor::fromRgb(colors.surface.shading.upper));
  gradient.setColorAt(1, QColor::fromRgb(colors.surface.shading.lower));
  painter.setBrush(gradient);
  painter.setPen(QPen(QColor::fromRgb(colors.ring), ring));
  painter.drawEllipse(middle, radius - ring / 2, radius - ring / 2);

  for (int tick = 0; tick < ticks; ++tick) {
    const bool hour = tick % ticks_per_hour == 0;
    const bool quarter = tick % (3 * ticks_per_hour) == 0;
    const double angle = tick * 2 * M_PI / ticks;
    const QPointF direction(std::sin(angle), -std::cos(angle));
    const double outer = radius * 0.92;
    const double inner = radius * (quarter ? 0.76 : hour ? 0.8 : 0.87);
    const double width = quarter ? radius * 0.055 : hour ? radius * 0.035 : radius * 0.016;
    painter.setPen(QPen(QColor::fromRgb(hour ? colors.surface.text : colors.minute_tick),
                        std::max(hour ? brushwork.unit : brushwork.unit * 0.75, width),
                        Qt::SolidLine, Qt::FlatCap));
    painter.drawLine(middle + direction * inner, middle + direction * outer);
  }
  painter.setRenderHint(QPainter::Antialiasing, false);
}

void paint_hand(QPainter& painter, const QRect& dial, QPointF tip, const HandShape& shape,
                QRgb color) {
  const auto [middle, radius] = circle_in(dial);
  const double length = std::hypot(tip.x(), tip.y());
  if (length <= 0) return;
  const QPointF along = tip / length;
  const QPointF across(-along.y(), along.x());
  const QPointF end = middle + tip * radius;
  const QPointF start = middle - along * (shape.tail * radius);
  const QPointF wide = across * (shape.width * radius / 2);
  const QPointF narrow = shape.tapered ? wide * 0.45 : wide;

  QPainterPath path;
  path.moveTo(start - wide);
  path.lineTo(end - narrow);
  path.lineTo(end + narrow);
  path.lineTo(start + wide);
  path.closeSubpath();
  painter.setRenderHint(QPainter::Antialiasing, true);
  painter.setPen(Qt::NoPen);
  painter.setBrush(QColor::fromRgb(color));
  painter.drawPath(path);
  if (shape.hub > 0) painter.drawEllipse(middle, shape.hub * radius, shape.hub * radius);
  painter.setRenderHint(QPainter::Antialiasing, false);
}

}  // namespace lineweir

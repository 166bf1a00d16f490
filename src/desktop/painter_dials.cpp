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

// Of the dial's radius.
constexpr double bezel_width = 0.045;
constexpr double shadow_offset = 0.018;
constexpr int shadow_alpha = 90;

struct Circle {
  QPointF middle;
  double radius;
};

Circle circle_in(const QRect& place) {
  return {QRectF(place).center(), std::min(place.width(), place.height()) / 2.0};
}

// A rim that the light from above makes round.
void paint_bezel(QPainter& painter, const Circle& circle, double width, QRgb ring) {
  const QColor color = QColor::fromRgb(ring);
  QLinearGradient light(0, circle.middle.y() - circle.radius, 0, circle.middle.y() + circle.radius);
  light.setColorAt(0, color.lighter(135));
  light.setColorAt(0.5, color);
  light.setColorAt(1, color.darker(145));
  const double inside = circle.radius - width / 2;
  painter.setBrush(Qt::NoBrush);
  painter.setPen(QPen(QBrush(light), width));
  painter.drawEllipse(circle.middle, inside, inside);
}

void paint_shape(QPainter& painter, const QPainterPath& path, QPointF shadow, QRgb color) {
  painter.setRenderHint(QPainter::Antialiasing, true);
  painter.setPen(Qt::NoPen);
  painter.setBrush(QColor(0, 0, 0, shadow_alpha));
  painter.drawPath(path.translated(shadow));
  painter.setBrush(QColor::fromRgb(color));
  painter.drawPath(path);
  painter.setRenderHint(QPainter::Antialiasing, false);
}

}  // namespace

void paint_dial(QPainter& painter, const QRect& place, const DialColors& colors,
                const Brushwork& brushwork) {
  const Circle circle = circle_in(place);
  const auto [middle, radius] = circle;
  const double ring = std::max(1.0, radius * bezel_width);
  painter.setRenderHint(QPainter::Antialiasing, true);

  QLinearGradient gradient(0, middle.y() - radius, 0, middle.y() + radius);
  gradient.setColorAt(0, QColor::fromRgb(colors.surface.shading.upper));
  gradient.setColorAt(1, QColor::fromRgb(colors.surface.shading.lower));
  painter.setBrush(gradient);
  painter.setPen(Qt::NoPen);
  painter.drawEllipse(middle, radius - ring / 2, radius - ring / 2);
  paint_bezel(painter, circle, ring, colors.ring);

  for (int tick = 0; tick < ticks; ++tick) {
    const bool hour = tick % ticks_per_hour == 0;
    const bool quarter = tick % (3 * ticks_per_hour) == 0;
    const double angle = tick * 2 * M_PI / ticks;
    const QPointF direction(std::sin(angle), -std::cos(angle));
    const double outer = radius * 0.91;
    const double inner = radius * (quarter ? 0.75 : hour ? 0.79 : 0.86);
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
  path.setFillRule(Qt::WindingFill);
  if (shape.hub > 0) path.addEllipse(middle, shape.hub * radius, shape.hub * radius);
  paint_shape(painter, path, QPointF(shadow_offset, shadow_offset) * radius, color);
}

}  // namespace lineweir

#include "desktop/painter_dials.h"

#include <QFontMetricsF>
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
constexpr double bezel_width = 0.06;
constexpr double shadow_offset = 0.018;
constexpr int shadow_alpha = 90;
constexpr double pin_radius = 0.02;
constexpr double tick_end = 0.9;
constexpr double numeral_radius = 0.63;

// All twelve hours where their digits can be read, the quarters alone on a small dial.
constexpr double numeral_size = 0.2;
constexpr double quarter_size = 0.24;
constexpr int least_numeral_pixels = 11;

// A hand is thickest from its middle to this part of its length, and ends in these parts of its
// width.
constexpr double shoulder = 0.25;
constexpr double tip_part = 0.3;
constexpr double tail_part = 0.7;

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

struct Tick {
  double start;
  double width;
};

void paint_ticks(QPainter& painter, const Circle& circle, DialFace face, const DialColors& colors,
                 double unit) {
  const auto [middle, radius] = circle;
  const bool numerals = face == DialFace::Hours;
  for (int tick = 0; tick < ticks; ++tick) {
    const bool hour = tick % ticks_per_hour == 0;
    const bool quarter = tick % (3 * ticks_per_hour) == 0;
    // Numerals need the room that longer ticks would take.
    const Tick shape = quarter ? Tick{numerals ? 0.78 : 0.74, 0.055}
                       : hour  ? Tick{0.79, 0.035}
                               : Tick{0.85, 0.016};
    const double angle = tick * 2 * M_PI / ticks;
    const QPointF direction(std::sin(angle), -std::cos(angle));
    painter.setPen(QPen(QColor::fromRgb(hour ? colors.surface.text : colors.minute_tick),
                        std::max(hour ? unit : unit * 0.75, shape.width * radius), Qt::SolidLine,
                        Qt::FlatCap));
    painter.drawLine(middle + direction * (shape.start * radius),
                     middle + direction * (tick_end * radius));
  }
}

void paint_numerals(QPainter& painter, const Circle& circle, QRgb color) {
  const auto [middle, radius] = circle;
  const bool all = numeral_size * radius >= least_numeral_pixels;
  QFont font = painter.font();
  font.setBold(true);
  font.setPixelSize(std::max(1, static_cast<int>(radius * (all ? numeral_size : quarter_size))));
  painter.setFont(font);
  painter.setPen(QColor::fromRgb(color));
  const QFontMetricsF metrics(font);
  for (int hour = all ? 1 : 3; hour <= 12; hour += all ? 1 : 3) {
    const QString text = QString::number(hour);
    const double angle = hour * 2 * M_PI / 12;
    const QPointF place =
        middle + QPointF(std::sin(angle), -std::cos(angle)) * (numeral_radius * radius);
    // By the digits' own extent, since all of them stand on the line and none below it.
    const QRectF extent = metrics.tightBoundingRect(text);
    painter.drawText(place - extent.center(), text);
  }
}

}  // namespace

void paint_dial(QPainter& painter, const QRect& place, DialFace face, const DialColors& colors,
                const Brushwork& brushwork) {
  const Circle circle = circle_in(place);
  const auto [middle, radius] = circle;
  const double ring = std::max(1.0, radius * bezel_width);
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing, true);

  QLinearGradient gradient(0, middle.y() - radius, 0, middle.y() + radius);
  gradient.setColorAt(0, QColor::fromRgb(colors.surface.shading.upper));
  gradient.setColorAt(1, QColor::fromRgb(colors.surface.shading.lower));
  painter.setBrush(gradient);
  painter.setPen(Qt::NoPen);
  painter.drawEllipse(middle, radius - ring / 2, radius - ring / 2);
  paint_bezel(painter, circle, ring, colors.ring);
  paint_ticks(painter, circle, face, colors, brushwork.unit);
  if (face == DialFace::Hours) paint_numerals(painter, circle, colors.minute_tick);
  painter.restore();
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
  const QPointF thickest = middle + tip * (radius * shoulder);
  const QPointF wide = across * (shape.width * radius / 2);
  const QPointF at_tip = shape.tapered ? wide * tip_part : wide;
  const QPointF at_tail = shape.tapered ? wide * tail_part : wide;

  QPainterPath path;
  path.moveTo(start - at_tail);
  path.lineTo(thickest - wide);
  path.lineTo(end - at_tip);
  path.lineTo(end + at_tip);
  path.lineTo(thickest + wide);
  path.lineTo(start + at_tail);
  path.closeSubpath();
  path.setFillRule(Qt::WindingFill);
  if (shape.hub > 0) path.addEllipse(middle, shape.hub * radius, shape.hub * radius);
  paint_shape(painter, path, QPointF(shadow_offset, shadow_offset) * radius, color);
}

void paint_pin(QPainter& painter, const QRect& dial, QRgb color) {
  const auto [middle, radius] = circle_in(dial);
  painter.setRenderHint(QPainter::Antialiasing, true);
  painter.setPen(Qt::NoPen);
  painter.setBrush(QColor::fromRgb(color));
  painter.drawEllipse(middle, pin_radius * radius, pin_radius * radius);
  painter.setRenderHint(QPainter::Antialiasing, false);
}

}  // namespace lineweir

#include "desktop/painter_signs.h"

#include <QPainter>
#include <QPainterPath>
#include <algorithm>
#include <cmath>

#include "desktop/picture_painters.h"

namespace lineweir {
namespace {

// A receiver seen from the side, lying on its cradle: in a square of 2 by 2 around the middle.
QPainterPath receiver_path() {
  QPainterPath receiver;
  receiver.moveTo(-1.0, 0.28);
  receiver.cubicTo(-1.0, -0.62, 1.0, -0.62, 1.0, 0.28);
  receiver.lineTo(1.0, 0.42);
  receiver.cubicTo(1.0, 0.54, 0.44, 0.54, 0.44, 0.42);
  receiver.lineTo(0.44, 0.12);
  receiver.cubicTo(0.3, -0.02, -0.3, -0.02, -0.44, 0.12);
  receiver.lineTo(-0.44, 0.42);
  receiver.cubicTo(-0.44, 0.54, -1.0, 0.54, -1.0, 0.42);
  receiver.closeSubpath();
  return receiver;
}

QRectF square_in(const QRectF& place) {
  const double side = std::min(place.width(), place.height());
  return {place.center().x() - side / 2, place.center().y() - side / 2, side, side};
}

void paint_path(QPainter& painter, const QPainterPath& path, const QColor& color, SignFill fill,
                double width) {
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing, true);
  painter.setPen(fill == SignFill::Full
                     ? QPen(Qt::NoPen)
                     : QPen(color, width, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
  painter.setBrush(fill == SignFill::Full ? QBrush(color) : QBrush(Qt::NoBrush));
  painter.drawPath(path);
  painter.restore();
}

}  // namespace

void paint_drop_sign(QPainter& painter, const QRect& place, const QColor& word, bool enabled,
                     const Brushwork& brushwork) {
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing, true);
  painter.translate(QRectF(place).center());
  painter.scale(place.width() / 2.0, place.width() / 2.0);
  painter.setPen(Qt::NoPen);
  painter.setBrush(enabled ? QColor::fromRgb(brushwork.theme.drop_sign) : word);
  painter.drawPath(receiver_path());
  painter.restore();
}

void paint_hold_sign(QPainter& painter, const QRect& place, const QColor& word, bool enabled,
                     const Brushwork& brushwork) {
  const QColor color = enabled ? QColor::fromRgb(brushwork.theme.hold_sign) : word;
  const int bar = std::max(1, static_cast<int>(std::lround(place.width() * 0.26)));
  const int inset = std::max(0, static_cast<int>(std::lround(place.width() * 0.08)));
  const QRect left(place.left() + inset, place.top(), bar, place.height());
  painter.fillRect(left, color);
  painter.fillRect(left.translated(place.width() - 2 * inset - bar, 0), color);
}

void paint_receiver(QPainter& painter, const QRectF& place, const QColor& color, SignFill fill) {
  const QRectF square = square_in(place);
  const QPainterPath lifted = QTransform().rotate(-40).map(receiver_path());
  const QRectF natural = lifted.boundingRect();
  const double scale = square.width() / std::max(natural.width(), natural.height());
  QTransform fitted;
  fitted.translate(square.center().x(), square.center().y());
  fitted.scale(scale, scale);
  fitted.translate(-natural.center().x(), -natural.center().y());
  paint_path(painter, fitted.map(lifted), color, fill, std::max(1.0, square.width() * 0.07));
}

void paint_headset(QPainter& painter, const QRectF& place, const QColor& color, SignFill fill) {
  const QRectF square = square_in(place);
  const double side = square.width();
  const double thin = std::max(1.0, side * 0.13);
  const double cup_wide = side * 0.26;
  const double cup_high = side * 0.42;
  const QRectF bow = square.adjusted(thin / 2 + cup_wide * 0.1, thin / 2,
                                     -thin / 2 - cup_wide * 0.1, -side * 0.12);
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing, true);
  painter.setPen(
      QPen(color, fill == SignFill::Full ? thin : thin * 0.75, Qt::SolidLine, Qt::FlatCap));
  painter.setBrush(Qt::NoBrush);
  painter.drawArc(bow, 0, 180 * 16);
  // The microphone's arm.
  QPainterPath arm;
  arm.moveTo(square.right() - cup_wide * 0.55, square.bottom() - side * 0.18);
  arm.quadTo(square.right() - cup_wide * 0.6, square.bottom() - thin / 2,
             square.center().x() + side * 0.04, square.bottom() - thin / 2);
  painter.drawPath(arm);
  painter.restore();
  QPainterPath cups;
  const double top = square.center().y() - side * 0.06;
  cups.addRoundedRect(QRectF(square.left(), top, cup_wide, cup_high), side * 0.08, side * 0.08);
  cups.addRoundedRect(QRectF(square.right() - cup_wide, top, cup_wide, cup_high), side * 0.08,
                      side * 0.08);
  paint_path(painter, cups, color, fill, thin * 0.75);
}

void paint_padlock(QPainter& painter, const QRectF& place, const QColor& color) {
  const double wide = std::min(place.width(), place.height() / 1.25);
  const QRectF box(place.center().x() - wide / 2, place.center().y() - wide * 0.625, wide,
                   wide * 1.25);
  const double thin = std::max(1.0, wide * 0.17);
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing, true);
  painter.setPen(QPen(color, thin, Qt::SolidLine, Qt::FlatCap));
  painter.setBrush(Qt::NoBrush);
  QPainterPath shackle;
  const double left = box.left() + wide * 0.22;
  const double right = box.right() - wide * 0.22;
  const double shoulder = box.top() + (right - left) / 2 + thin / 2;
  shackle.moveTo(left, box.top() + box.height() * 0.5);
  shackle.lineTo(left, shoulder);
  shackle.arcTo(QRectF(left, box.top() + thin / 2, right - left, right - left), 180, -180);
  shackle.lineTo(right, box.top() + box.height() * 0.5);
  painter.drawPath(shackle);
  painter.setPen(Qt::NoPen);
  painter.setBrush(color);
  painter.drawRoundedRect(
      QRectF(box.left(), box.top() + box.height() * 0.44, wide, box.height() * 0.56), wide * 0.1,
      wide * 0.1);
  painter.restore();
}

}  // namespace lineweir

#include "desktop/painter_flags.h"

#include <QPainter>
#include <QPainterPath>
#include <algorithm>

#include "callerdata/known_caller_text.h"
#include "desktop/core_color.h"
#include "desktop/theme.h"

namespace lineweir {
namespace {

QPainterPath outline_of(CallerFlag flag, const QRectF& box) {
  QPainterPath path;
  switch (flag) {
    case CallerFlag::None:
      break;
    case CallerFlag::Regular:
      path.addEllipse(box);
      break;
    case CallerFlag::Careful:
      path.moveTo(box.center().x(), box.top());
      path.lineTo(box.bottomRight());
      path.lineTo(box.bottomLeft());
      path.closeSubpath();
      break;
    case CallerFlag::Barred:
      path.addRect(box);
      break;
  }
  return path;
}

void paint_letter(QPainter& painter, const QRectF& box) {
  QFont font = painter.font();
  font.setBold(true);
  font.setPixelSize(std::max(1, static_cast<int>(box.height() * 0.78)));
  painter.setFont(font);
  painter.drawText(box, Qt::AlignCenter, QStringLiteral("R"));
}

void paint_exclamation_mark(QPainter& painter, const QRectF& box, const QColor& color) {
  const double width = box.width() * 0.15;
  const double left = box.center().x() - width / 2;
  painter.fillRect(QRectF(left, box.top() + box.height() * 0.36, width, box.height() * 0.3), color);
  painter.fillRect(QRectF(left, box.top() + box.height() * 0.75, width, width), color);
}

void paint_bar(QPainter& painter, const QRectF& box, const QColor& color) {
  const double height = box.height() * 0.24;
  painter.fillRect(QRectF(box.left() + box.width() * 0.18, box.center().y() - height / 2,
                          box.width() * 0.64, height),
                   color);
}

}  // namespace

void paint_flag(QPainter& painter, const QRectF& place, CallerFlag flag, const QColor& edge) {
  const double side = std::min(place.width(), place.height());
  const double line = std::max(1.0, side * 0.08);
  const QRectF square(place.left(), place.center().y() - side / 2, side, side);
  const QRectF box = square.adjusted(line / 2, line / 2, -line / 2, -line / 2);
  const QColor ground = shown_color(flag_color(flag));
  const QColor ink = readable_on(ground, QColor(Qt::white));
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing, true);
  painter.setPen(QPen(edge, line, Qt::SolidLine, Qt::FlatCap, Qt::RoundJoin));
  painter.setBrush(ground);
  painter.drawPath(outline_of(flag, box));
  painter.setPen(ink);
  if (flag == CallerFlag::Regular) paint_letter(painter, box);
  if (flag == CallerFlag::Careful) paint_exclamation_mark(painter, box, ink);
  if (flag == CallerFlag::Barred) paint_bar(painter, box, ink);
  painter.restore();
}

}  // namespace lineweir

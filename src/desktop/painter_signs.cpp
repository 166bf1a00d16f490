#include "desktop/painter_signs.h"

#include <QPainter>
#include <QPainterPath>
#include <algorithm>
#include <cmath>

#include "desktop/picture_painters.h"

namespace lineweir {

void paint_drop_sign(QPainter& painter, const QRect& place, const QColor& word, bool enabled,
                     const Brushwork& brushwork) {
  // A receiver seen from the side, lying on its cradle: in a square of 2 by 2 around the middle.
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

  painter.save();
  painter.setRenderHint(QPainter::Antialiasing, true);
  painter.translate(QRectF(place).center());
  painter.scale(place.width() / 2.0, place.width() / 2.0);
  painter.setPen(Qt::NoPen);
  painter.setBrush(enabled ? QColor::fromRgb(brushwork.theme.drop_sign) : word);
  painter.drawPath(receiver);
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

}  // namespace lineweir

#include "desktop/painter_lamps.h"

#include <QPainter>
#include <QRadialGradient>
#include <algorithm>

#include "desktop/picture_painters.h"

namespace lineweir {
namespace {

struct Disc {
  QPointF middle;
  double radius;
};

Disc disc_in(const QRect& place, const Brushwork& brushwork) {
  const QRectF box(place);
  return {box.center(), std::min(box.width(), box.height()) / 2 - brushwork.unit};
}

void light_disc(QPainter& painter, const Disc& disc, const QColor& color,
                const Brushwork& brushwork) {
  const QPointF glint = disc.middle - QPointF(disc.radius, disc.radius) * 0.35;
  QRadialGradient gradient(glint, disc.radius * 1.5);
  gradient.setColorAt(0, color.lighter(150));
  gradient.setColorAt(0.45, color);
  gradient.setColorAt(1, color.darker(135));
  painter.setPen(QPen(QColor::fromRgb(brushwork.theme.icon_outline), brushwork.unit));
  painter.setBrush(gradient);
  painter.drawEllipse(disc.middle, disc.radius, disc.radius);
}

}  // namespace

void paint_lamp_dark(QPainter& painter, const QRect& place, const Brushwork& brushwork) {
  const Disc disc = disc_in(place, brushwork);
  painter.setRenderHint(QPainter::Antialiasing, true);
  painter.setPen(QPen(QColor::fromRgb(brushwork.theme.disabled_text), 2 * brushwork.unit));
  painter.setBrush(QColor::fromRgb(brushwork.theme.icon_outline));
  painter.drawEllipse(disc.middle, disc.radius - brushwork.unit, disc.radius - brushwork.unit);
  painter.setRenderHint(QPainter::Antialiasing, false);
}

void paint_lamp_on_air(QPainter& painter, const QRect& place, const Brushwork& brushwork) {
  painter.setRenderHint(QPainter::Antialiasing, true);
  light_disc(painter, disc_in(place, brushwork), QColor::fromRgb(signal_red), brushwork);
  painter.setRenderHint(QPainter::Antialiasing, false);
}

void paint_lamp_at_handset(QPainter& painter, const QRect& place, const Brushwork& brushwork) {
  const Disc disc = disc_in(place, brushwork);
  painter.setRenderHint(QPainter::Antialiasing, true);
  light_disc(painter, disc, QColor::fromRgb(signal_green), brushwork);
  const double width = disc.radius * 0.3;
  const double height = disc.radius * 1.0;
  painter.setPen(Qt::NoPen);
  painter.setBrush(QColor::fromRgb(brushwork.theme.icon_outline));
  for (const double left : {-1.5 * width, 0.5 * width}) {
    painter.drawRect(QRectF(disc.middle.x() + left, disc.middle.y() - height / 2, width, height));
  }
  painter.setRenderHint(QPainter::Antialiasing, false);
}

}  // namespace lineweir

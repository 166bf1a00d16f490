#include "desktop/lamp_widget.h"

#include <QPainter>
#include <QRadialGradient>
#include <algorithm>

#include "desktop/core_color.h"
#include "desktop/form_canvas.h"
#include "elements/line.h"

namespace lineweir {

LampWidget::LampWidget(FormCanvas& canvas, Shape& shape, const ElementLook& look)
    : ElementWidget(canvas, shape, look) {}

void LampWidget::paint(QPainter& painter, const QRect& face) {
  const int core = static_cast<const Shape&>(*control()).fill_color;
  const bool stands = core == color_green;
  const QColor color = stands              ? QColor::fromRgb(signal_green)
                       : core == color_red ? QColor::fromRgb(signal_red)
                                           : shown_color(core);
  const Brushwork work = brushwork();
  const double radius = std::min(face.width(), face.height()) / 2.0 - work.unit;
  const QPointF middle = QRectF(face).center();

  QRadialGradient gradient(middle - QPointF(radius, radius) * 0.35, radius * 1.5);
  gradient.setColorAt(0, color.lighter(165));
  gradient.setColorAt(0.45, color);
  gradient.setColorAt(1, color.darker(135));
  painter.setRenderHint(QPainter::Antialiasing, true);
  painter.setPen(QPen(QColor::fromRgb(work.theme.icon_outline), work.unit));
  painter.setBrush(gradient);
  painter.drawEllipse(middle, radius, radius);
  if (!stands) {
    painter.setPen(
        QPen(readable_on(color, Qt::white), 1.6 * work.unit, Qt::SolidLine, Qt::FlatCap));
    painter.drawLine(middle - QPointF(radius * 0.55, 0), middle + QPointF(radius * 0.55, 0));
  }
}

}  // namespace lineweir

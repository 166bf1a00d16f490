#include "desktop/lamp_widget.h"

#include <QPainter>
#include <QRadialGradient>
#include <algorithm>
#include <cmath>

#include "desktop/core_color.h"
#include "desktop/form_canvas.h"
#include "elements/line.h"

namespace lineweir {
namespace {

// In 96ths of an inch, as the form is designed.
constexpr double word_size = 11;
constexpr double gap = 5;
constexpr double spare = 2;

}  // namespace

LampWidget::LampWidget(FormCanvas& canvas, Shape& shape, const ElementLook& look)
    : ElementWidget(canvas, shape, look) {}

bool LampWidget::linked() const { return canvas().no_link().isEmpty(); }

QRect LampWidget::device_place() const {
  const QRect lamp = ElementWidget::device_place();
  if (control() == nullptr || shown_caption().isEmpty()) return lamp;
  return lamp.adjusted(-room_for_words(), -room_above(), 0, room_above());
}

void LampWidget::element_changed() {
  // Beside more than ten rows a label without a text lies over the lamp; the mouse is to find it.
  raise();
  ElementWidget::element_changed();
}

QString LampWidget::shown_caption() const {
  return linked() ? canvas().link_word() : QStringLiteral("No link");
}

QString LampWidget::tool_tip() const {
  return linked() ? canvas().linked_to() : canvas().no_link();
}

TextLine LampWidget::words() const {
  TextLine line;
  line.text = shown_caption();
  line.font.setPixelSize(std::max(1, static_cast<int>(std::lround(word_size * brushwork().unit))));
  line.font.setBold(!linked());
  line.color = QColor::fromRgb(linked() ? brushwork().theme.heading : brushwork().theme.warning);
  line.alignment = Qt::AlignLeft;
  return line;
}

int LampWidget::room_for_words() const {
  return static_cast<int>(std::ceil(text_width(words()) + gap * brushwork().unit));
}

int LampWidget::room_above() const { return static_cast<int>(std::ceil(spare * brushwork().unit)); }

QColor LampWidget::lamp_color() const {
  const int core = static_cast<const Shape&>(*control()).fill_color;
  if (core == color_green) return QColor::fromRgb(signal_green);
  return core == color_red ? QColor::fromRgb(signal_red) : shown_color(core);
}

void LampWidget::paint(QPainter& painter, const QRect& face) {
  const Brushwork work = brushwork();
  const bool words_beside = !shown_caption().isEmpty();
  const QRect lamp =
      words_beside ? face.adjusted(room_for_words(), room_above(), 0, -room_above()) : face;
  const double radius = std::min(lamp.width(), lamp.height()) / 2.0 - work.unit;
  const QPointF middle = QRectF(lamp).center();
  const bool sound = static_cast<const Shape&>(*control()).fill_color == color_green;
  const QColor color = lamp_color();
  if (words_beside) {
    paint_text(painter, QRect(face.left(), face.top(), room_for_words(), face.height()), words());
  }
  painter.setRenderHint(QPainter::Antialiasing, true);
  if (!linked()) {
    const QColor ring = sound ? QColor::fromRgb(work.theme.warning) : color;
    painter.setPen(QPen(ring, 2 * work.unit));
    painter.setBrush(Qt::NoBrush);
    painter.drawEllipse(middle, radius - work.unit, radius - work.unit);
    if (!sound) paint_stroke(painter, middle, radius, ring);
    return;
  }
  QRadialGradient gradient(middle - QPointF(radius, radius) * 0.35, radius * 1.5);
  gradient.setColorAt(0, color.lighter(165));
  gradient.setColorAt(0.45, color);
  gradient.setColorAt(1, color.darker(135));
  painter.setPen(QPen(QColor::fromRgb(work.theme.icon_outline), work.unit));
  painter.setBrush(gradient);
  painter.drawEllipse(middle, radius, radius);
  if (!sound) paint_stroke(painter, middle, radius, readable_on(color, Qt::white));
}

void LampWidget::paint_stroke(QPainter& painter, const QPointF& middle, double radius,
                              const QColor& color) const {
  painter.setPen(QPen(color, 1.6 * brushwork().unit, Qt::SolidLine, Qt::FlatCap));
  const QPointF reach(radius * 0.55, 0);
  painter.drawLine(middle - reach, middle + reach);
}

}  // namespace lineweir

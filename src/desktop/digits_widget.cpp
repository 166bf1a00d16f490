#include "desktop/digits_widget.h"

#include <QPainter>

#include "desktop/core_text.h"
#include "desktop/countdown_text.h"
#include "desktop/form_canvas.h"
#include "desktop/painter_faces.h"
#include "desktop/text_painter.h"
#include "elements/text_box.h"

namespace lineweir {
namespace {

constexpr double digits_part = 0.86;
constexpr double text_part = 0.5;

}  // namespace

DigitsWidget::DigitsWidget(FormCanvas& canvas, TextBox& box, const ElementLook& look)
    : ElementWidget(canvas, box, look) {}

QString DigitsWidget::shown_caption() const {
  return control() == nullptr
             ? QString()
             : shown_text(*control(), static_cast<const TextBox&>(*control()).text.get());
}

void DigitsWidget::element_changed() {
  ElementWidget::element_changed();
  // The countdown on the clock's face warns with its twin.
  if (control()->name() != "CountDownTime2") return;
  const Control* countdown = canvas().control_named("CountDownTime");
  if (countdown == nullptr) return;
  if (ElementWidget* widget = canvas().widget_of(*countdown)) widget->update();
}

void DigitsWidget::paint(QPainter& painter, const QRect& face) {
  const auto& box = static_cast<const TextBox&>(*control());
  const Brushwork work = brushwork();
  const bool digits = element_look().look == Look::LargeDigits;
  paint_plate(painter, face, work);

  const bool counts = control()->name() == "CountDownTime2";
  TextLine line{counts ? countdown_text(shown_caption()) : shown_caption(), device_font(box.font),
                QColor::fromRgb(box.fore_color == color_red ? work.theme.warning_digits
                                                            : work.theme.clock.text),
                Qt::AlignHCenter};
  line.font.setPixelSize(
      std::max(1, static_cast<int>(face.height() * (digits ? digits_part : text_part))));
  line.font.setBold(true);
  line.even_digits = true;
  const int margin = 4 * work.line();
  paint_text(painter, face.adjusted(margin, 0, -margin, 0), line);
}

}  // namespace lineweir

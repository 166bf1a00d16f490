#include "desktop/label_widget.h"

#include <QPainter>
#include <algorithm>
#include <array>
#include <string_view>

#include "desktop/core_text.h"
#include "desktop/form_canvas.h"
#include "desktop/largest_fitting.h"
#include "desktop/placement.h"
#include "desktop/strip_look.h"
#include "desktop/twips.h"
#include "elements/label.h"

namespace lineweir {
namespace {

constexpr std::array<std::string_view, 4> whole_texts = {"LineNumb", "LineStatus", "Label9",
                                                         "Label10"};
// Of the size that the user has chosen.
constexpr double smallest_part = 0.5;

Qt::Alignment qt_alignment(int alignment) {
  switch (alignment) {
    case align_right:
      return Qt::AlignRight;
    case align_center:
      return Qt::AlignHCenter;
    default:
      return Qt::AlignLeft;
  }
}

}  // namespace

LabelWidget::LabelWidget(FormCanvas& canvas, Label& label, const ElementLook& look)
    : ElementWidget(canvas, label, look) {}

const Label* LabelWidget::label() const { return static_cast<const Label*>(control()); }

bool LabelWidget::in_column() const {
  const Look look = element_look().look;
  return look == Look::RowText || look == Look::RowTime ||
         (look == Look::Heading && label()->index() != no_index);
}

bool LabelWidget::stays_whole() const {
  const std::string& name = label()->name();
  return element_look().look == Look::RowTime ||
         std::ranges::find(whole_texts, name) != whole_texts.end();
}

QRect LabelWidget::device_place() const {
  if (label() == nullptr || !in_column()) return ElementWidget::device_place();
  const QRectF own = place_on_form(*label());
  const QRectF shown = element_look().look == Look::Heading
                           ? clipped_to_strips(canvas(), own)
                           : clipped_to_strip(canvas(), label()->index(), own);
  return pixel_rect(shown, canvas().device_scale());
}

QString LabelWidget::shown_caption() const {
  // To the letter: what people and servers write has no access keys.
  return label() == nullptr ? QString() : shown_text(*label(), label()->caption.get());
}

bool LabelWidget::caption_fits() const {
  const QRect face(QPoint(0, 0), device_place().size());
  return label() == nullptr || text_fits(line(), text_box(face).width());
}

TextLine LabelWidget::line() const {
  const Look look = element_look().look;
  TextLine result{shown_caption(), device_font(label()->font), text_color(),
                  qt_alignment(label()->alignment)};
  result.even_digits =
      look == Look::RowTime || look == Look::ClockDigits || look == Look::ClockSmallDigits;
  if (look == Look::ClockDigits || look == Look::ClockSmallDigits) {
    // A clock's digits fill their line, whatever size the rest of the screen's text has.
    const double part = look == Look::ClockDigits ? 0.82 : 0.95;
    result.font.setPixelSize(std::max(1, static_cast<int>(device_place().height() * part)));
    result.font.setBold(true);
    const double natural = text_width(result);
    if (const int room = device_place().width(); natural > room) {
      result.font.setPixelSize(
          std::max(1, static_cast<int>(result.font.pixelSize() * room / natural)));
    }
    return result;
  }
  const QRect place(QPoint(0, 0), device_place().size());
  if (look == Look::PanelBanner) result.font.setBold(true);
  result.font = font_for_height(result.font, place.height());
  if (stays_whole()) {
    const int natural = result.font.pixelSize();
    const int least = std::max(1, static_cast<int>(natural * smallest_part));
    result.font.setPixelSize(largest_fitting(least, natural, [&](int size) {
      result.font.setPixelSize(size);
      return text_fits(result, text_box(place).width());
    }));
  }
  return result;
}

QColor LabelWidget::text_color() const {
  const Theme& theme = canvas().theme();
  switch (element_look().look) {
    case Look::RowText:
    case Look::RowTime:
      return QColor::fromRgb(strip_colors(canvas(), label()->index()).surface.text);
    case Look::Heading:
      return QColor::fromRgb(theme.heading);
    case Look::ClockDigits:
    case Look::ClockSmallDigits:
      return QColor::fromRgb(theme.clock.text);
    case Look::ClockText:
      return QColor::fromRgb(theme.clock_small_text);
    case Look::PanelBanner:
      return readable_on(QColor::fromRgb(theme.warning), Qt::black);
    case Look::PanelWarning:
      return QColor::fromRgb(theme.warning);
    default:
      return QColor::fromRgb(theme.panel.text);
  }
}

QRect LabelWidget::text_box(const QRect& face) const {
  const int gap = brushwork().line();
  if (in_column() && label()->alignment == align_left) {
    // The mark of the column before stands in the label's first two pixels.
    return face.adjusted(5 * gap, 0, -gap, 0);
  }
  // A clock's text keeps off the edge of its plate.
  const int inset = element_look().look == Look::ClockText ? 4 * gap : gap;
  return face.adjusted(inset, 0, -inset, 0);
}

void LabelWidget::paint(QPainter& painter, const QRect& face) {
  if (element_look().look == Look::PanelBanner) {
    const double corner = 3 * brushwork().unit;
    painter.setRenderHint(QPainter::Antialiasing, true);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor::fromRgb(canvas().theme().warning));
    painter.drawRoundedRect(face, corner, corner);
  }
  paint_text(painter, text_box(face), line());
}

}  // namespace lineweir

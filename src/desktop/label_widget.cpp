#include "desktop/label_widget.h"

#include <QPainter>
#include <algorithm>
#include <array>
#include <string_view>

#include "desktop/core_text.h"
#include "desktop/countdown_text.h"
#include "desktop/form_canvas.h"
#include "desktop/largest_fitting.h"
#include "desktop/painter_flags.h"
#include "desktop/painter_signs.h"
#include "desktop/painter_surfaces.h"
#include "desktop/placement.h"
#include "desktop/strip_look.h"
#include "desktop/twips.h"
#include "elements/label.h"
#include "elements/text_box.h"
#include "forms/columns.h"

namespace lineweir {
namespace {

// What stands in the place of an event's name once the show has ended.
constexpr QLatin1String over_time("Show Over");

constexpr std::array<std::string_view, 4> whole_texts = {"LineNumb", "LineStatus", "Label9",
                                                         "Label10"};
// Of the height of their lines.
constexpr double clock_digits_part = 0.82;
constexpr double clock_text_part = 0.86;

// Of the size that the user has chosen.
constexpr double smallest_part = 0.5;

// On strips, which are bright in these states.
constexpr QRgb strip_ringing_sign = 0xff9a5b00;
constexpr QRgb strip_handset_sign = 0xff1d5fae;
constexpr QRgb strip_wait_bar = 0xff8a5a00;
constexpr QRgb strip_wait_over = 0xffb01918;

struct StatusSign {
  RowState state;
  void (*paint)(QPainter& painter, const QRectF& place, const QColor& color, SignFill fill);
  SignFill fill;
};
constexpr std::array status_signs = {
    StatusSign{RowState::Ringing, paint_receiver, SignFill::Full},
    StatusSign{RowState::AtHandset, paint_headset, SignFill::Full},
    StatusSign{RowState::AtOtherHandset, paint_headset, SignFill::Outline},
    StatusSign{RowState::Taken, paint_headset, SignFill::Outline},
};

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
  return look == Look::RowText || look == Look::RowStatus || look == Look::RowTime ||
         (look == Look::Heading && label()->index() != no_index);
}

bool LabelWidget::stays_whole() const {
  const std::string& name = label()->name();
  return element_look().look == Look::RowTime ||
         std::ranges::find(whole_texts, name) != whole_texts.end();
}

QRect LabelWidget::device_place() const {
  if (label() == nullptr || !in_column()) return ElementWidget::device_place();
  QRectF own = place_on_form(*label());
  const bool on_row = element_look().look != Look::Heading;
  // The last column has the room up to the strip's end.
  if (on_row && label()->name() == column_rules[canvas().last_column()].element) {
    own.setRight(own.right() + own.left());
  }
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
      look == Look::RowTime || look == Look::ClockDigits || look == Look::Countdown;
  if (look == Look::ClockDigits || look == Look::Countdown) {
    // A clock's digits fill their line, whatever size the rest of the screen's text has.
    if (look == Look::Countdown) result.text = countdown_text(result.text);
    result.font.setPixelSize(
        std::max(1, static_cast<int>(device_place().height() * clock_digits_part)));
    result.font.setBold(true);
    // As large as the time of day, which has all its digits.
    TextLine widest = result;
    if (look == Look::Countdown) widest.text = QStringLiteral("00:00:00");
    const double natural = std::max(text_width(result), text_width(widest));
    if (const int room = text_box(QRect(QPoint(0, 0), device_place().size())).width();
        natural > room) {
      result.font.setPixelSize(
          std::max(1, static_cast<int>(result.font.pixelSize() * room / natural)));
    }
    return result;
  }
  const QRect place(QPoint(0, 0), device_place().size());
  if (look == Look::PanelBanner) result.font.setBold(true);
  if (look == Look::ClockText) {
    result.font.setPixelSize(std::max(1, static_cast<int>(place.height() * clock_text_part)));
    result.font.setBold(false);
  }
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
    case Look::RowStatus:
    case Look::RowTime:
      return QColor::fromRgb(strip_colors(canvas(), label()->index()).surface.text);
    case Look::Heading:
      return QColor::fromRgb(theme.heading);
    case Look::ClockDigits:
      return QColor::fromRgb(theme.clock.text);
    case Look::Countdown:
      return QColor::fromRgb(warns() ? theme.warning_digits : theme.clock.text);
    case Look::ClockText:
      return QColor::fromRgb(shown_caption() == over_time ? theme.warning_digits
                                                          : theme.clock_small_text);
    case Look::PanelBanner:
      return readable_on(QColor::fromRgb(theme.warning), Qt::black);
    case Look::CallerNote:
      return QColor::fromRgb(theme.note.text);
    case Look::PanelWarning:
      return QColor::fromRgb(theme.warning);
    default:
      return QColor::fromRgb(theme.panel.text);
  }
}

bool LabelWidget::warns() const {
  const auto* twin = static_cast<const TextBox*>(canvas().control_named("CountDownTime2"));
  return twin != nullptr && twin->fore_color == color_red;
}

QRect LabelWidget::text_box(const QRect& face) const {
  const int gap = brushwork().line();
  if (in_column() && label()->alignment == align_left) {
    // The mark of the column before stands in the label's first two pixels.
    const int sign = flag() == CallerFlag::None ? 0 : face.height() + 2 * gap;
    return face.adjusted(5 * gap + sign, 0, -gap, 0);
  }
  if (element_look().look == Look::CallerNote) return face.adjusted(10 * gap, 0, -4 * gap, 0);
  // A clock's text keeps off the edge of its plate.
  const int inset = element_look().look == Look::ClockText ? 4 * gap : gap;
  return face.adjusted(inset, 0, -inset, 0);
}

void LabelWidget::paint(QPainter& painter, const QRect& face) {
  const double corner = 3 * brushwork().unit;
  if (element_look().look == Look::PanelBanner) {
    const QRgb warning = canvas().theme().warning;
    fill_shaded(painter, face, face, {warning, warning}, corner);
  } else if (element_look().look == Look::CallerNote) {
    paint_note_plate(painter, face, corner);
  }
  if (element_look().look == Look::CallerNote) {
    paint_note(painter, face);
  } else {
    paint_text(painter, text_box(face), line());
  }
  if (element_look().look == Look::RowStatus) paint_status_sign(painter, face);
  if (wait() != nullptr) paint_wait(painter, face);
  if (flag() != CallerFlag::None) paint_flag_sign(painter, face);
}

CallerFlag LabelWidget::flag() const {
  if (label() == nullptr || !in_column() || element_look().look == Look::Heading ||
      label()->name() != column_rules[canvas().flag_column()].element) {
    return CallerFlag::None;
  }
  return canvas().row_look(label()->index()).flag;
}

void LabelWidget::paint_flag_sign(QPainter& painter, const QRect& face) const {
  const QRectF place(face.left() + 4 * brushwork().line(), face.top(), face.height(),
                     face.height());
  paint_flag(painter, place, flag(), text_color());
}

void LabelWidget::paint_note_plate(QPainter& painter, const QRect& face, double corner) const {
  const Theme& theme = canvas().theme();
  fill_shaded(painter, face, face, theme.note.shading, corner);
  draw_edge(painter, face, theme.clock_edge, brushwork().line(), corner);
  const RowState state = label()->fore_color == color_red ? RowState::OnAir : RowState::Next;
  const int line = brushwork().line();
  const QRect bar(face.left() + 2 * line, face.top() + 3 * line, 4 * line,
                  face.height() - 6 * line);
  painter.fillRect(bar, QColor::fromRgb(canvas().row_theme().strip(state).surface.shading.upper));
}

void LabelWidget::paint_note(QPainter& painter, const QRect& face) const {
  TextLine rest = line();
  TextLine number = rest;
  const auto blank = rest.text.indexOf(u' ');
  number.text = rest.text.left(blank);
  number.font.setBold(true);
  rest.text = rest.text.mid(blank + 1);
  const QRect box = text_box(face);
  const int column = static_cast<int>(text_width(number)) + 6 * brushwork().line();
  const QRect room = box.adjusted(column, 0, 0, 0);
  if (!note_stands_in_two_lines(rest, room)) {
    paint_text(painter, box, number);
    paint_text(painter, room, rest);
    return;
  }
  const int half = box.height() / 2;
  paint_text(painter, box.adjusted(0, 0, 0, -half), number);
  const qsizetype end = last_word_that_fits(rest, room.width());
  TextLine upper = rest;
  upper.text = rest.text.left(end);
  rest.text = rest.text.mid(end).trimmed();
  paint_text(painter, room.adjusted(0, 0, 0, -half), upper);
  paint_text(painter, room.adjusted(0, half, 0, 0), rest);
}

bool LabelWidget::note_stands_in_two_lines(const TextLine& text, const QRect& room) {
  const QFontMetrics metrics(text.font);
  return !text_fits(text, room.width()) && room.height() >= 2 * metrics.height();
}

void LabelWidget::paint_status_sign(QPainter& painter, const QRect& face) const {
  const RowLook& row = canvas().row_look(label()->index());
  const auto* sign = std::ranges::find(status_signs, row.letter_state, &StatusSign::state);
  if (sign == status_signs.end() || !shown_caption().isEmpty()) return;
  const int gap = brushwork().line();
  const int side = face.height();
  const QRectF place(text_box(face).left() + gap, face.top(), side, side);
  const bool ghost = row.dark && row.letter_state == RowState::Ringing;
  const bool on_strip = row.letter_state == RowState::Ringing;
  const QColor ground =
      QColor::fromRgb(strip_colors(canvas(), label()->index()).surface.shading.upper);
  const QColor color =
      readable_on(ground, QColor::fromRgb(on_strip ? strip_ringing_sign : strip_handset_sign));
  sign->paint(painter, place, color, ghost ? SignFill::Outline : sign->fill);
}

const RowLook::Wait* LabelWidget::wait() const {
  if (label() == nullptr || element_look().look != Look::RowTime) return nullptr;
  const RowLook& row = canvas().row_look(label()->index());
  return row.wait && label()->caption.get().empty() ? &*row.wait : nullptr;
}

void LabelWidget::paint_wait(QPainter& painter, const QRect& face) const {
  const QRect box = text_box(face);
  const int thick = 2 * brushwork().line();
  const int below = thick + brushwork().line();
  TextLine minutes = line();
  minutes.text = QStringLiteral("%1 min").arg(wait()->minutes);
  minutes.font.setBold(false);
  minutes.font = font_for_height(minutes.font, std::max(1, face.height() - below));
  paint_text(painter, box.adjusted(0, 0, 0, -below), minutes);
  const QRect whole(box.left(), face.bottom() + 1 - thick, box.width() - 2 * brushwork().line(),
                    thick);
  QColor ground = minutes.color;
  ground.setAlphaF(0.25F);
  painter.fillRect(whole, ground);
  const int full = whole.width() * wait()->steps / steps_of_wait;
  painter.fillRect(
      QRect(whole.left(), whole.top(), full, thick),
      QColor::fromRgb(wait()->steps < steps_of_wait ? strip_wait_bar : strip_wait_over));
}

QString LabelWidget::tool_tip() const {
  if (wait() != nullptr && canvas().spoken_wait) return canvas().spoken_wait(label()->index());
  const QString own = ElementWidget::tool_tip();
  const Look look = element_look().look;
  const bool on_row = look == Look::RowText || look == Look::RowStatus;
  const bool told = label() != nullptr && on_row && canvas().spoken_memory;
  const QString of_memory = told ? canvas().spoken_memory(label()->index()) : QString();
  return own.isEmpty() || of_memory.isEmpty() ? own + of_memory : own + u'\n' + of_memory;
}

void LabelWidget::row_changed(const RowLook& before, const RowLook& now) {
  const Look look = element_look().look;
  if (look != Look::RowText && look != Look::RowStatus && look != Look::RowTime) return;
  const bool other_ground = before.state != now.state;
  const bool other_sign = look == Look::RowStatus &&
                          (before.letter_state != now.letter_state || before.dark != now.dark);
  const bool other_wait = look == Look::RowTime && before.wait != now.wait;
  const bool other_flag = before.flag != now.flag;
  if (other_ground || other_sign || other_wait || other_flag) update();
}

}  // namespace lineweir

#include "desktop/painter_icons.h"

#include <QPainter>
#include <QPainterPath>
#include <algorithm>
#include <array>

#include "desktop/painter_signs.h"
#include "desktop/picture_painters.h"
#include "desktop/row_look.h"
#include "forms/picture_names.h"

namespace lineweir {
namespace {

// A square of whole pixels, so that an icon has the same form in each row.
QRectF square_in(const QRect& place) {
  const int side = std::min(place.width(), place.height());
  const QRect square(place.left() + (place.width() - side) / 2,
                     place.top() + (place.height() - side) / 2, side, side);
  return square;
}

// The outline lies around the shape and takes nothing of it.
void draw_filled(QPainter& painter, const QPainterPath& path, QRgb color,
                 const Brushwork& brushwork) {
  painter.setRenderHint(QPainter::Antialiasing, true);
  painter.setPen(QPen(QColor::fromRgb(brushwork.theme.icon_outline), 2 * brushwork.unit,
                      Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
  painter.setBrush(Qt::NoBrush);
  painter.drawPath(path);
  painter.fillPath(path, QColor::fromRgb(color));
  painter.setRenderHint(QPainter::Antialiasing, false);
}

QRectF grown(const QRectF& square, double part) {
  const double more = square.width() * part / 2;
  return square.adjusted(-more, -more, more, more);
}

void paint_ringing(QPainter& painter, const QRect& place, bool ghost, const Brushwork& brushwork) {
  paint_receiver(painter, grown(square_in(place), 0.3),
                 QColor::fromRgb(ghost ? brushwork.theme.ghost : brushwork.theme.ringing_sign),
                 ghost ? SignFill::Outline : SignFill::Full);
}

void paint_at_handset(QPainter& painter, const QRect& place, bool, const Brushwork& brushwork) {
  paint_headset(painter, grown(square_in(place), 0.15),
                QColor::fromRgb(brushwork.theme.handset_sign), SignFill::Full);
}

void paint_at_other_handset(QPainter& painter, const QRect& place, bool,
                            const Brushwork& brushwork) {
  paint_headset(painter, grown(square_in(place), 0.15),
                QColor::fromRgb(brushwork.theme.handset_sign), SignFill::Outline);
}

void paint_taken(QPainter& painter, const QRect& place, bool, const Brushwork& brushwork) {
  paint_headset(painter, grown(square_in(place), 0.15),
                QColor::fromRgb(brushwork.theme.disabled_text), SignFill::Outline);
}

void paint_locked_on_air(QPainter& painter, const QRect& place, bool, const Brushwork& brushwork) {
  paint_padlock(painter, grown(square_in(place), 0.2), QColor::fromRgb(brushwork.theme.drop_sign));
}

void paint_locked(QPainter& painter, const QRect& place, bool, const Brushwork& brushwork) {
  paint_padlock(painter, grown(square_in(place), 0.2), QColor::fromRgb(brushwork.theme.hold_sign));
}

struct RowIcon {
  std::string_view icon;
  RowState letter_state;
  void (*paint)(QPainter& painter, const QRect& place, bool ghost, const Brushwork& brushwork);
};
constexpr std::array row_icons = {
    RowIcon{pictures::YellowIcon, RowState::Ringing, paint_ringing},
    RowIcon{pictures::GreenIcon, RowState::AtHandset, paint_at_handset},
    RowIcon{pictures::GreenIcon, RowState::AtOtherHandset, paint_at_other_handset},
    RowIcon{pictures::GreenIcon, RowState::Taken, paint_taken},
    RowIcon{pictures::GreenIcon, RowState::Locked, paint_locked},
    RowIcon{pictures::RedIcon, RowState::LockedOnAir, paint_locked_on_air},
};

// A triangle on its side, that points to the strip.
void paint_arrow(QPainter& painter, const QRect& place, StripSide side,
                 const Brushwork& brushwork) {
  const QRectF square = square_in(place);
  const double spread = square.width() * 0.1;
  const double tip = side == StripSide::Right ? square.right() : square.left();
  const double base = side == StripSide::Right ? square.left() : square.right();
  QPainterPath path;
  path.moveTo(tip, square.center().y());
  path.lineTo(base, square.top() - spread);
  path.lineTo(base, square.bottom() + spread);
  path.closeSubpath();
  draw_filled(painter, path, brushwork.theme.next_light, brushwork);
}

}  // namespace

bool paint_row_icon(QPainter& painter, const QRect& place, std::string_view icon,
                    const RowLook& row, StripSide side, const Brushwork& brushwork) {
  if (row.state == RowState::Next && icon == pictures::YellowIcon &&
      row.letter_state == RowState::Ready) {
    paint_arrow(painter, place, side, brushwork);
    return true;
  }
  for (const RowIcon& rule : row_icons) {
    if (rule.icon != icon || rule.letter_state != row.letter_state) continue;
    rule.paint(painter, place, row.dark, brushwork);
    return true;
  }
  return false;
}

void paint_circle(QPainter& painter, const QRect& place, const Brushwork& brushwork) {
  QPainterPath path;
  path.addEllipse(square_in(place));
  draw_filled(painter, path, signal_red, brushwork);
}

void paint_triangle(QPainter& painter, const QRect& place, const Brushwork& brushwork) {
  const QRectF square = square_in(place);
  // Wider than the square, since its upper half is mostly empty.
  const double spread = square.width() * 0.1;
  QPainterPath path;
  path.moveTo(square.center().x(), square.top());
  path.lineTo(square.right() + spread, square.bottom());
  path.lineTo(square.left() - spread, square.bottom());
  path.closeSubpath();
  draw_filled(painter, path, signal_yellow, brushwork);
}

void paint_bars(QPainter& painter, const QRect& place, const Brushwork& brushwork) {
  const QRectF square = square_in(place);
  const double bar = std::round(square.width() * 0.33);
  QPainterPath path;
  path.addRect(QRectF(square.left(), square.top(), bar, square.height()));
  path.addRect(QRectF(square.right() - bar, square.top(), bar, square.height()));
  draw_filled(painter, path, signal_green, brushwork);
}

void paint_cross(QPainter& painter, const QRect& place, const Brushwork& brushwork) {
  const double arm = square_in(place).width() * 0.26;
  const QRectF box = square_in(place).adjusted(arm / 2, arm / 2, -arm / 2, -arm / 2);
  painter.setRenderHint(QPainter::Antialiasing, true);
  const auto draw = [&](QRgb color, double width) {
    painter.setPen(QPen(QColor::fromRgb(color), width, Qt::SolidLine, Qt::RoundCap));
    painter.drawLine(box.topLeft(), box.bottomRight());
    painter.drawLine(box.topRight(), box.bottomLeft());
  };
  draw(brushwork.theme.icon_outline, arm + 2 * brushwork.unit);
  draw(signal_blue, arm);
  painter.setRenderHint(QPainter::Antialiasing, false);
}

}  // namespace lineweir

#include "desktop/telephone_key.h"

#include <QPainter>
#include <QStyleOptionButton>
#include <array>
#include <cmath>

#include "desktop/console_style.h"
#include "desktop/painter_keys.h"
#include "desktop/picture_painters.h"

namespace lineweir {
namespace {

constexpr double character_part = 0.50;
constexpr double letters_part = 0.22;
// Where the middle of either line stands, as a part of the face's height.
constexpr double character_middle = 0.40;
constexpr double letters_middle = 0.80;

constexpr std::array<const char*, 10> letters_of_digits = {"",    "",    "ABC",  "DEF", "GHI",
                                                           "JKL", "MNO", "PQRS", "TUV", "WXYZ"};

QString letters_of(QChar character) {
  const int digit = character.digitValue();
  return digit < 0 ? QString()
                   : QString::fromLatin1(letters_of_digits[static_cast<std::size_t>(digit)]);
}

QFont font_of_height(const QFont& model, double height) {
  QFont font = model;
  font.setPixelSize(std::max(1, static_cast<int>(std::lround(height))));
  return font;
}

}  // namespace

TelephoneKey::TelephoneKey(QWidget* parent) : QPushButton(parent) {
  setAttribute(Qt::WA_Hover);
  setAutoDefault(false);
}

QSize TelephoneKey::sizeHint() const {
  const int line = fontMetrics().height();
  return has_character() ? QSize(9 * line / 2, 13 * line / 4)
                         : QPushButton::sizeHint().expandedTo({9 * line / 2, 9 * line / 4});
}

void TelephoneKey::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  const Theme& theme = theme_of(palette());
  const double scale = devicePixelRatioF();
  const Brushwork work{theme, scale};
  const QRect place(0, 0, static_cast<int>(std::lround(width() * scale)),
                    static_cast<int>(std::lround(height() * scale)));
  painter.save();
  painter.scale(1 / scale, 1 / scale);
  if (!isEnabled()) {
    paint_key_disabled(painter, place, work);
  } else if (isDown()) {
    paint_key_down(painter, place, work);
  } else if (underMouse()) {
    paint_key_hover(painter, place, work);
  } else {
    paint_key_up(painter, place, work);
  }
  if (hasFocus()) paint_focus_ring(painter, place, work);
  const KeyColors& colors = !isEnabled() ? theme.key_disabled
                            : isDown()   ? theme.key_down
                                         : theme.key_up;
  const QColor color = QColor::fromRgb(colors.surface.text);
  if (has_character()) {
    const int step = isDown() ? pressed_step(work) : 0;
    paint_character(painter, key_face(place, work).translated(step, step), color);
  }
  painter.restore();
  if (has_character()) return;
  QStyleOptionButton option;
  initStyleOption(&option);
  option.palette.setColor(QPalette::ButtonText, color);
  style()->drawControl(QStyle::CE_PushButtonLabel, &option, &painter, this);
}

void TelephoneKey::paint_character(QPainter& painter, const QRect& face,
                                   const QColor& color) const {
  painter.setPen(color);
  const double height = face.height();
  const auto line = [&](const QString& text, double part, double middle, bool bold) {
    QFont font = font_of_height(this->font(), height * part);
    font.setBold(bold);
    painter.setFont(font);
    const QRectF box(face.left(), face.top() + height * (middle - part), face.width(),
                     2 * height * part);
    painter.drawText(box, Qt::AlignCenter, text);
  };
  const QString letters = letters_of(text().front());
  // A sign alone stands in the middle, as the digits that have no letters do.
  line(text(), character_part, letters.isEmpty() ? 0.5 : character_middle, true);
  line(letters, letters_part, letters_middle, false);
}

}  // namespace lineweir

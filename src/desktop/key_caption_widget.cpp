#include "desktop/key_caption_widget.h"

#include <QFontMetricsF>
#include <QPainter>
#include <algorithm>
#include <cmath>

#include "desktop/core_text.h"
#include "desktop/form_canvas.h"
#include "desktop/key_look.h"
#include "desktop/not_allowed.h"
#include "desktop/painter_keys.h"
#include "desktop/painter_signs.h"
#include "desktop/text_painter.h"
#include "elements/label.h"
#include "elements/menu_item.h"
#include "elements/picture.h"

namespace lineweir {
namespace {

// Parts of the height of a key with a sign below which its word stands, and of one beside it.
constexpr double sign_above_part = 0.36;
constexpr double word_below_part = 0.34;
constexpr double sign_beside_part = 0.42;
constexpr double word_beside_part = 0.42;
// The word stands beside the sign on a key that is so many times as wide as high.
constexpr double beside_from = 1.75;
// A word is drawn down to this part of its natural width.
constexpr double thinnest = 0.75;
// A sign is wider than high.
constexpr double sign_width = 1.35;
// The sign's part of the row that it shares with the letter of the hybrid, and how large that
// letter's font is beside it.
constexpr double sign_of_row = 0.54;
constexpr double letter_of_sign = 1.15;
constexpr int no_access_key = -1;

TextLine centered(const QString& text, const QFont& font, const QColor& color, int access_key) {
  TextLine line{text, font, color, Qt::AlignHCenter};
  line.underlined = access_key >= 0 && access_key < text.size() ? access_key : -1;
  return line;
}

}  // namespace

KeyCaptionWidget::KeyCaptionWidget(FormCanvas& canvas, Label& label, const ElementLook& look)
    : ElementWidget(canvas, label, look) {}

QRect KeyCaptionWidget::device_place() const {
  const Control* label = control();
  if (label == nullptr || label->container() == nullptr) return ElementWidget::device_place();
  const ElementWidget* key = canvas().widget_of(*label->container());
  return key == nullptr ? ElementWidget::device_place() : key->device_place();
}

QString KeyCaptionWidget::shown_caption() const {
  if (control() == nullptr) return {};
  return caption_of(shown_text(*control(), static_cast<const Label&>(*control()).caption.get()))
      .text;
}

QFont KeyCaptionWidget::lettering(double pixels) const {
  QFont font = device_font(static_cast<const Label&>(*control()).font);
  font.setPixelSize(std::max(1, static_cast<int>(pixels)));
  font.setBold(true);
  return font;
}

void KeyCaptionWidget::paint(QPainter& painter, const QRect& face) {
  const auto& label = static_cast<const Label&>(*control());
  const auto* button = static_cast<const Picture*>(label.container());
  const Brushwork work = brushwork();
  const KeyState state = button == nullptr ? KeyState::Up : key_state(button->picture);
  const QColor color = QColor::fromRgb(key_colors(work.theme, state).surface.text);
  if (button != nullptr && button->withheld) painter.setOpacity(withheld_opacity);
  QRect key = key_face(face, work);
  if (state == KeyState::Down) key.translate(pressed_step(work), pressed_step(work));

  const Caption caption = caption_of(shown_text(label, label.caption.get()));
  if (element_look().look == Look::KeyCaption) {
    paint_lines(painter, key, caption, color);
  } else {
    paint_sign(painter, key, caption, color, state != KeyState::Disabled);
  }
}

void KeyCaptionWidget::paint_lines(QPainter& painter, const QRect& key, const Caption& caption,
                                   const QColor& color) const {
  const int margin = 5 * brushwork().line();
  const QRect room = key.adjusted(margin, 0, -margin, 0);
  const auto& label = static_cast<const Label&>(*control());
  // The lettering belongs to the key's face and grows with it, whether or not texts do.
  const double grown = canvas().zoom() / canvas().text_zoom();
  const QFont font = lettering(device_font(label.font).pixelSize() * std::max(1.0, grown));
  const TextLine whole = centered(caption.text, font, color, caption.access_key);
  const int blank = static_cast<int>(caption.text.lastIndexOf(u' '));
  if (text_width(whole) <= room.width() || blank < 0) {
    paint_squeezed_text(painter, room, whole);
    return;
  }
  // Above the line of light that the key may show.
  const int line = brushwork().line();
  const int pitch = font.pixelSize() + 2 * line;
  const int height = key.height() - 4 * line;
  const QRect upper(room.left(), key.top() + (height - 2 * pitch) / 2, room.width(), pitch);
  paint_squeezed_text(painter, upper,
                      centered(caption.text.left(blank), font, color, caption.access_key));
  paint_squeezed_text(
      painter, upper.translated(0, pitch),
      centered(caption.text.mid(blank + 1), font, color, caption.access_key - blank - 1));
}

void KeyCaptionWidget::paint_sign(QPainter& painter, const QRect& key, const Caption& caption,
                                  const QColor& color, bool enabled) const {
  const Brushwork work = brushwork();
  if (key.width() > key.height() * beside_from) {
    return paint_sign_beside(painter, key, caption, color, enabled);
  }
  const int line = work.line();
  const int height = key.height();
  const int room = key.width() - 4 * line;
  TextLine word =
      centered(caption.text, lettering(height * word_below_part), color, caption.access_key);
  // On a narrow key the word becomes smaller before its letters become thin.
  const double squeeze = room / text_width(word);
  if (squeeze < thinnest) {
    word.font = lettering(height * word_below_part * squeeze / thinnest);
  }
  const int letters = static_cast<int>(std::lround(QFontMetricsF(word.font).capHeight()));
  // Sign and letter share the row above the word, and never reach beyond the key.
  const TextLine hybrid = centered(hybrid_letter(), {}, color, no_access_key);
  const double widest_sign = room * (hybrid.text.isEmpty() ? 1.0 : sign_of_row);
  const int side =
      static_cast<int>(std::lround(std::min(height * sign_above_part, widest_sign / sign_width)));
  const int wide = static_cast<int>(std::lround(side * sign_width));
  const int gap = 3 * line;
  const int top = key.top() + (height - side - gap - letters) / 2;
  paint_squeezed_text(painter, {key.left() + 2 * line, top + side + gap, room, letters}, word);
  const QRect row(key.left() + 2 * line, top, room, side);
  if (hybrid.text.isEmpty()) {
    return paint_own_sign(painter, {key.left() + (key.width() - wide) / 2, top, wide, side}, color,
                          enabled);
  }
  paint_own_sign(painter, {row.left(), top, wide, side}, color, enabled);
  TextLine letter = hybrid;
  letter.font = lettering(side * letter_of_sign);
  const int right = row.left() + wide + line;
  paint_squeezed_text(painter, {right, top, row.right() + 1 - right, side}, letter);
}

void KeyCaptionWidget::paint_sign_beside(QPainter& painter, const QRect& key,
                                         const Caption& caption, const QColor& color,
                                         bool enabled) const {
  const int line = brushwork().line();
  const int height = key.height();
  // The same parity as the key, so that both stand in its very middle.
  const int rough = static_cast<int>(std::lround(height * sign_beside_part));
  const int side = rough - (height - rough) % 2;
  const int wide = static_cast<int>(std::lround(side * sign_width));
  const QString hybrid = hybrid_letter();
  const TextLine word = centered(hybrid.isEmpty() ? caption.text : caption.text + u' ' + hybrid,
                                 lettering(height * word_beside_part), color, caption.access_key);
  const int gap = 3 * line;
  const int room = key.width() - wide - gap - 6 * line;
  const int width = std::min(static_cast<int>(std::ceil(text_width(word))), room);
  const int left = key.left() + (key.width() - wide - gap - width) / 2;
  paint_own_sign(painter, {left, key.top() + (height - side) / 2, wide, side}, color, enabled);
  paint_squeezed_text(painter, {left + wide + gap, key.top(), width, height}, word);
}

void KeyCaptionWidget::paint_own_sign(QPainter& painter, const QRect& place, const QColor& color,
                                      bool enabled) const {
  const auto sign = element_look().look == Look::DropCaption ? paint_drop_sign : paint_hold_sign;
  sign(painter, place, color, enabled, brushwork());
}

QString KeyCaptionWidget::hybrid_letter() const {
  const Control* key = control()->container();
  const auto* mode = dynamic_cast<const MenuItem*>(control()->form().find("ScreenerMode"));
  if (key == nullptr || (mode != nullptr && mode->checked)) return {};
  return key->name().ends_with('1') ? QStringLiteral("M") : QStringLiteral("C");
}

}  // namespace lineweir

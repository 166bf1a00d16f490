#include "desktop/key_widget.h"

#include <QKeyEvent>
#include <QPainter>
#include <QPointer>

#include "desktop/form_canvas.h"
#include "desktop/key_look.h"
#include "desktop/key_tips.h"
#include "desktop/not_allowed.h"
#include "desktop/painted_once.h"
#include "desktop/painter_keys.h"
#include "elements/picture.h"
#include "forms/main_form.h"

namespace lineweir {
namespace {

// A key that ends or parks a call glows in the colour of its sign while it is pressed.
QRgb Theme::*pressed_light(const std::string& key) {
  if (key.starts_with("Drop")) return &Theme::drop_sign;
  return key.starts_with("Hold") ? &Theme::hold_sign : nullptr;
}

bool presses(const QKeyEvent& event) {
  return event.key() == Qt::Key_Space || event.key() == Qt::Key_Return ||
         event.key() == Qt::Key_Enter;
}

}  // namespace

KeyWidget::KeyWidget(FormCanvas& canvas, Picture& button, const ElementLook& look)
    : ElementWidget(canvas, button, look) {
  setFocusPolicy(button.tab_stop ? Qt::StrongFocus : Qt::ClickFocus);
  setAttribute(Qt::WA_Hover);
}

bool KeyWidget::drawn_from(PropertyId property) const {
  return property == PropertyId::TabStop || property == PropertyId::Withheld ||
         ElementWidget::drawn_from(property);
}

void KeyWidget::element_changed() {
  setFocusPolicy(control()->tab_stop ? Qt::StrongFocus : Qt::ClickFocus);
  ElementWidget::element_changed();
}

QString KeyWidget::tool_tip() const {
  if (control() == nullptr) return {};
  const QString tip = key_tip(*control());
  const QString why = why_nothing_happens();
  return why.isEmpty() ? tip : tip + u'\n' + why;
}

QString KeyWidget::why_nothing_happens() const {
  if (static_cast<const Picture&>(*control()).withheld) return not_allowed_text();
  const QString disabled =
      why_disabled(static_cast<const MainForm&>(control()->form()), *control());
  if (!disabled.isEmpty()) return disabled;
  return commands_equipment(*control()) ? canvas().no_link() : QString();
}

void KeyWidget::click() {
  const QPointer<KeyWidget> self(this);
  press(left_button, Qt::NoModifier);
  if (self) release(left_button, Qt::NoModifier, true);
}

void KeyWidget::paint(QPainter& painter, const QRect& face) {
  const auto& button = static_cast<const Picture&>(*control());
  const Brushwork work = brushwork();
  if (button.withheld) painter.setOpacity(withheld_opacity);
  const bool hovered = underMouse() && isEnabled() && key_state(button.picture) == KeyState::Up;
  const QString drawing = QStringLiteral("key %1 %2 %3 %4")
                              .arg(reinterpret_cast<quintptr>(&work.theme))
                              .arg(QString::fromStdString(button.picture))
                              .arg(hovered ? 1 : 0)
                              .arg(work.unit);
  painter.drawPixmap(face.topLeft(), painted_once(drawing, face.size(), [&](QPainter& once) {
                       if (hovered) {
                         paint_key_hover(once, face, work);
                       } else if (const auto paint = painter_of(button.picture)) {
                         paint(once, face, work);
                       }
                     }));
  const bool lit = element_look().look == Look::NextKey && button.enabled &&
                   canvas().next_caller_waits() && canvas().no_link().isEmpty();
  if (lit) paint_key_light(painter, face, work.theme.next_light, work);
  paint_ringing_edge(painter, face);
  const bool down = key_state(button.picture) == KeyState::Down;
  if (const auto light = pressed_light(button.name()); down && light != nullptr) {
    paint_key_edge(painter, face, work.theme.*light, 1, work);
  }
  if (hasFocus()) paint_focus_ring(painter, face, work);
}

void KeyWidget::paint_ringing_edge(QPainter& painter, const QRect& face) const {
  if (element_look().look != Look::RowKey) return;
  const RowLook& row = canvas().row_look(control()->index());
  if (row.letter_state != RowState::Ringing || !canvas().no_link().isEmpty()) return;
  const Brushwork work = brushwork();
  paint_key_edge(painter, face, row.dark ? work.theme.ghost : work.theme.ringing_sign,
                 row.dark ? 1 : 2, work);
}

void KeyWidget::row_changed(const RowLook& before, const RowLook& now) {
  const auto rings = [](const RowLook& row) { return row.letter_state == RowState::Ringing; };
  const bool blinks = rings(now) && before.dark != now.dark;
  if (element_look().look == Look::RowKey && (rings(before) != rings(now) || blinks)) update();
}

void KeyWidget::keyPressEvent(QKeyEvent* event) {
  if (!presses(*event)) {
    QWidget::keyPressEvent(event);
    return;
  }
  if (event->isAutoRepeat() || held_by_key_) return;
  held_by_key_ = true;
  press(left_button, Qt::NoModifier);
}

void KeyWidget::keyReleaseEvent(QKeyEvent* event) {
  if (!presses(*event) || event->isAutoRepeat() || !held_by_key_) {
    QWidget::keyReleaseEvent(event);
    return;
  }
  held_by_key_ = false;
  release(left_button, Qt::NoModifier, true);
}

void KeyWidget::focusInEvent(QFocusEvent* event) {
  update();
  ElementWidget::focusInEvent(event);
}

void KeyWidget::focusOutEvent(QFocusEvent* event) {
  update();
  const QPointer<KeyWidget> self(this);
  if (held_by_key_) {
    held_by_key_ = false;
    release(left_button, Qt::NoModifier, false);
  }
  if (self) ElementWidget::focusOutEvent(event);
}

}  // namespace lineweir

#include "desktop/element_link.h"

#include <QKeyEvent>
#include <QLayout>
#include <QMouseEvent>
#include <QSplitter>
#include <QWidget>

#include "base/text.h"
#include "desktop/core_text.h"
#include "desktop/dialog_letters.h"
#include "desktop/focus_reason.h"
#include "desktop/key_codes.h"
#include "desktop/twips.h"
#include "elements/form.h"

namespace lineweir {
namespace {

bool stands_in_layout(const QWidget& widget) {
  const QWidget* parent = widget.parentWidget();
  return parent != nullptr &&
         (parent->layout() != nullptr || qobject_cast<const QSplitter*>(parent) != nullptr);
}

}  // namespace

ElementLink::ElementLink(Control& control, QWidget& widget)
    : control_(control), widget_(widget), placed_by_layout_(stands_in_layout(widget)) {
  widget.installEventFilter(this);
}

void ElementLink::show_control() {
  showing_ = true;
  show_content();
  widget_.setEnabled(control_.enabled);
  if (!control_.tab_stop) {
    widget_.setFocusPolicy(Qt::ClickFocus);
  } else if (widget_.focusPolicy() == Qt::ClickFocus) {
    widget_.setFocusPolicy(Qt::StrongFocus);
  }
  place();
  widget_.setVisible(control_.visible);
  showing_ = false;
}

void ElementLink::place() {
  if (placed_by_layout_) return;
  widget_.setGeometry(pixel_rect(
      QRectF(control_.left, control_.top, control_.width, control_.height), letter_scale()));
}

bool ElementLink::eventFilter(QObject*, QEvent* event) {
  switch (event->type()) {
    case QEvent::KeyPress:
      return !types_by_itself() && key_swallowed(*static_cast<QKeyEvent*>(event));
    case QEvent::FocusIn:
      control_.set_focus();
      break;
    case QEvent::FocusOut:
      lost_focus(*static_cast<QFocusEvent*>(event));
      break;
    case QEvent::MouseButtonPress:
      control_.on_mouse_down(left_button, 0);
      break;
    case QEvent::MouseButtonRelease:
      control_.on_mouse_up(left_button, 0);
      // A click on a plain text is the window's where the text has no handler.
      if (!clicks_by_itself() && control_.on_click) {
        control_.on_click();
        return true;
      }
      break;
    case QEvent::MouseButtonDblClick:
      control_.on_dbl_click();
      break;
    default:
      break;
  }
  return false;
}

void ElementLink::lost_focus(const QFocusEvent& event) {
  if (focus_is_borrowed(event.reason())) return;
  if (control_.form().focused() == &control_) control_.form().focus(nullptr);
}

bool ElementLink::key_swallowed(QKeyEvent& event) {
  if (is_alt_command(event)) return true;
  const int code = key_code(event);
  if (control_.on_key_down && code != 0) {
    int left = code;
    control_.on_key_down(left, shift_state(event.modifiers()));
    if (left == 0) return true;
  }
  // Shift and Tab lead out of any control, also of one that keeps Tab for itself.
  if (!control_.on_key_press || event.key() == Qt::Key_Backtab) return false;
  bool swallowed = false;
  for (const char character : core_text(control_, event.text())) {
    int key = code_of(character);
    control_.on_key_press(key);
    swallowed = swallowed || key == 0;
  }
  return swallowed;
}

}  // namespace lineweir

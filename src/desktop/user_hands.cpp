#include "desktop/user_hands.h"

#include <QAbstractItemView>
#include <QAbstractSpinBox>
#include <QApplication>
#include <QComboBox>
#include <QElapsedTimer>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QTextEdit>
#include <QWindow>

namespace lineweir {
namespace {

// A message or a dialog that comes so soon behind a key or a click is its answer.
constexpr qint64 answer_milliseconds = 250;
// Whoever has typed so lately goes on typing.
constexpr qint64 typing_milliseconds = 1500;

bool is_modifier(const QKeyEvent& event) {
  switch (event.key()) {
    case Qt::Key_Shift:
    case Qt::Key_Control:
    case Qt::Key_Alt:
    case Qt::Key_AltGr:
    case Qt::Key_Meta:
    case Qt::Key_CapsLock:
    case Qt::Key_NumLock:
      return true;
    default:
      return false;
  }
}

bool is_command(const QKeyEvent& event) {
  return (event.modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier)) != 0;
}

bool is_character(const QKeyEvent& event) {
  return !is_command(event) && !event.text().isEmpty() && event.text().front().isPrint();
}

bool leads_about(const QKeyEvent& event) {
  switch (event.key()) {
    case Qt::Key_Tab:
    case Qt::Key_Backtab:
    case Qt::Key_Backspace:
    case Qt::Key_Delete:
    case Qt::Key_Left:
    case Qt::Key_Right:
    case Qt::Key_Up:
    case Qt::Key_Down:
    case Qt::Key_PageUp:
    case Qt::Key_PageDown:
    case Qt::Key_Home:
    case Qt::Key_End:
      return true;
    default:
      return false;
  }
}

QWidget* focus_in(const QWindow* window) {
  QWidget* focus = QApplication::focusWidget();
  return focus != nullptr && focus->window()->windowHandle() == window ? focus : nullptr;
}

bool takes_lines(const QWidget* widget) {
  const auto* lines = qobject_cast<const QPlainTextEdit*>(widget);
  const auto* text = qobject_cast<const QTextEdit*>(widget);
  return (lines != nullptr && !lines->isReadOnly()) || (text != nullptr && !text->isReadOnly());
}

bool takes_typing(const QWidget* widget) {
  if (const auto* line = qobject_cast<const QLineEdit*>(widget)) return !line->isReadOnly();
  if (const auto* box = qobject_cast<const QComboBox*>(widget)) return box->isEditable();
  return takes_lines(widget) || qobject_cast<const QAbstractSpinBox*>(widget) != nullptr ||
         qobject_cast<const QAbstractItemView*>(widget) != nullptr;
}

// A key that is held does such a thing once.
bool acts_once(const QKeyEvent& event, const QWidget* focus) {
  if (event.key() == Qt::Key_Escape) return true;
  if (event.key() == Qt::Key_Return || event.key() == Qt::Key_Enter) return !takes_lines(focus);
  return !takes_typing(focus) && !leads_about(event);
}

TypingRun::Place place_of(const QWindow* window) {
  const QWidget* focus = focus_in(window);
  return takes_typing(focus) ? static_cast<TypingRun::Place>(focus) : window;
}

QWindow* window_under(QObject* watched) {
  if (watched->isWindowType()) return static_cast<QWindow*>(watched);
  auto* widget = qobject_cast<QWidget*>(watched);
  return widget == nullptr ? nullptr : widget->window()->windowHandle();
}

}  // namespace

UserHands::UserHands() {
  QElapsedTimer clock;
  clock.start();
  now = [clock] { return clock.elapsed(); };
  QCoreApplication::instance()->installEventFilter(this);
}

UserHands::~UserHands() = default;

bool UserHands::commanded() const {
  return last_command_ > last_typing_ && now() - last_command_ < answer_milliseconds;
}

bool UserHands::typing() const { return now() - last_typing_ < typing_milliseconds; }

bool UserHands::acted_since(qint64 time) const { return last_command_ > time; }

bool UserHands::eventFilter(QObject* watched, QEvent* event) {
  switch (event->type()) {
    case QEvent::MouseButtonPress:
      if (!watched->isWindowType()) return false;
      run_.end();
      last_command_ = now();
      return false;
    case QEvent::ShortcutOverride: {
      // Shortcuts come before the key itself; what is withheld or answers a message is none.
      const auto& key = *static_cast<QKeyEvent*>(event);
      const QWindow* window = window_under(watched);
      if (window == nullptr || is_modifier(key)) return false;
      if (!withheld(key, window) && !answers(key, window)) return false;
      event->accept();
      return true;
    }
    case QEvent::KeyPress: {
      const auto& key = *static_cast<QKeyEvent*>(event);
      if (!watched->isWindowType() || is_modifier(key)) return false;
      const auto* window = static_cast<QWindow*>(watched);
      if (withheld(key, window)) {
        if (is_character(key)) run_.go_on(now());
        return true;
      }
      if (answers(key, window)) {
        last_command_ = now();
        answer_message();
        return true;
      }
      note(key, window);
      return false;
    }
    default:
      return false;
  }
}

bool UserHands::withheld(const QKeyEvent& event, const QWindow* window) const {
  // A menu has the keyboard for itself while it is open.
  if (QApplication::activePopupWidget() != nullptr) return false;
  const QWidget* focus = focus_in(window);
  if (event.isAutoRepeat() && acts_once(event, focus)) return true;
  return !takes_typing(focus) && !run_.belongs_to(window, now());
}

bool UserHands::answers(const QKeyEvent& event, const QWindow* window) const {
  if (!answer_message || QApplication::activePopupWidget() != nullptr) return false;
  if (!message_waits || !message_waits(*window)) return false;
  // In a field Enter is the field's.
  const bool enter = event.key() == Qt::Key_Return || event.key() == Qt::Key_Enter;
  return !is_command(event) &&
         (event.key() == Qt::Key_Escape || (enter && !takes_typing(focus_in(window))));
}

void UserHands::note(const QKeyEvent& event, const QWindow* window) {
  // A letter in a menu chooses, and leads wherever the choice leads.
  if (QApplication::activePopupWidget() != nullptr) {
    run_.end();
    last_command_ = now();
    return;
  }
  const bool character = is_character(event);
  if (character) run_.take(place_of(window), now());
  if (character && takes_typing(focus_in(window))) {
    last_typing_ = now();
  } else {
    last_command_ = now();
  }
}

}  // namespace lineweir

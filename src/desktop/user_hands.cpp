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
#include <algorithm>

#include "desktop/folded_text.h"

namespace lineweir {
namespace {

// A message or a dialog that comes so soon behind a key or a click is its answer; a button that is
// chosen by its letter is seen to go down for a tenth of a second before it clicks.
constexpr qint64 answer_milliseconds = 350;
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

bool is_enter(const QKeyEvent& event) {
  return event.key() == Qt::Key_Return || event.key() == Qt::Key_Enter;
}

// Alt with a letter, which chooses an entry of a menu bar, a button or a field.
bool is_choice(const QKeyEvent& event) {
  return (event.modifiers() & ~Qt::ShiftModifier) == Qt::AltModifier && event.key() < 0x10000 &&
         QChar(event.key()).isLetter();
}

// Ctrl with Enter, which sends what is written and closes its window.
bool is_sending(const QKeyEvent& event) {
  return is_enter(event) && event.modifiers().testFlag(Qt::ControlModifier);
}

// With Ctrl or Alt a digit acts on a line.
bool is_commanding_digit(const QKeyEvent& event) {
  return is_command(event) && event.key() >= Qt::Key_0 && event.key() <= Qt::Key_9;
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

bool enter_breaks_line(const QWidget* widget) {
  return takes_lines(widget) && !widget->property(folded_property).toBool();
}

// A key that is held does such a thing once.
bool acts_once(const QKeyEvent& event, const QWidget* focus) {
  if (event.key() == Qt::Key_Escape) return true;
  if (is_enter(event)) return !enter_breaks_line(focus);
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
  const qint64 command = std::max(last_command_, last_release_);
  if (command <= last_typing_ || command <= last_answer_) return false;
  return now() - command < answer_milliseconds || (at_work && at_work());
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
    case QEvent::MouseButtonRelease:
      if (watched->isWindowType()) last_release_ = now();
      return false;
    case QEvent::Shortcut:
      last_command_ = now();
      return false;
    case QEvent::ShortcutOverride: {
      // Shortcuts come before the key itself; what is withheld or answers a message is none.
      const auto& key = *static_cast<QKeyEvent*>(event);
      const QWindow* window = window_under(watched);
      if (window == nullptr || is_modifier(key)) return false;
      if (withheld(key, window) || answers(key, window)) {
        event->accept();
        return true;
      }
      // What a shortcut takes comes as no key, and its window may be gone by then.
      if (is_choice(key) || is_sending(key)) run_.choose(window, now());
      return false;
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
    case QEvent::KeyRelease: {
      const auto& key = *static_cast<QKeyEvent*>(event);
      if (!watched->isWindowType()) return false;
      released_key_ = key.key();
      released_at_ = key.timestamp();
      if (key.isAutoRepeat() || key.key() != Qt::Key_Space) return false;
      if (!takes_typing(focus_in(static_cast<QWindow*>(watched)))) last_release_ = now();
      return false;
    }
    default:
      return false;
  }
}

// A key that is held is released and pressed on X at one moment, again and again. While the program
// is busy Qt may see the one without the other and take the press for a new one.
bool UserHands::repeats(const QKeyEvent& event) const {
  if (event.isAutoRepeat()) return true;
  const bool at_once = event.key() == released_key_ && event.timestamp() == released_at_;
  return at_once && QGuiApplication::platformName() == QLatin1String("xcb");
}

bool UserHands::withheld(const QKeyEvent& event, const QWindow* window) const {
  // A menu has the keyboard for itself while it is open.
  if (QApplication::activePopupWidget() != nullptr) return false;
  const QWidget* focus = focus_in(window);
  if (repeats(event) && acts_once(event, focus)) return true;
  if (takes_typing(focus) || run_.belongs_to(window, now())) return false;
  if (!run_.is_choice()) return true;
  return (is_character(event) || is_enter(event) || is_commanding_digit(event)) && has_hot_keys &&
         has_hot_keys(*window);
}

bool UserHands::answers(const QKeyEvent& event, const QWindow* window) const {
  if (!answer_message || QApplication::activePopupWidget() != nullptr) return false;
  if (!message_waits || !message_waits(*window)) return false;
  // In a field Enter is the field's.
  return !is_command(event) &&
         (event.key() == Qt::Key_Escape || (is_enter(event) && !takes_typing(focus_in(window))));
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

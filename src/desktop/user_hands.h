#pragma once

#include <QObject>
#include <functional>

#include "desktop/typing_run.h"

class QKeyEvent;
class QWindow;

namespace lineweir {

// Stands between the keyboard and all windows of the program, and lets nothing act in one window
// that was meant for another: the rest of a word whose field has lost the keyboard, the letter of
// an entry of a menu where Alt has closed a dialog and opened no menu, a key that is still held
// when the window that it was pressed in has closed. A field takes whatever arrives.
class UserHands final : public QObject {
 public:
  UserHands();
  ~UserHands() override;

  // Whether what happens now is the answer to a key or a click that was more than typing.
  bool commanded() const;
  // A window that has opened with the keyboard is the answer; what comes behind it is none.
  void command_is_answered() { last_answer_ = now(); }
  // Whether the program is still at work on what the user has asked for, and shows so.
  std::function<bool()> at_work;
  // Whether the user has typed into a field up to a moment ago.
  bool typing() const;
  // Whether the mouse was pressed or a command given behind that time of now().
  bool acted_since(qint64 time) const;

  // Milliseconds since any time; a test puts its own clock there.
  std::function<qint64()> now;

  // The user's own hand has led to another window: what is typed now is meant for that.
  void lead_on() { run_.end(); }

  // Whether letters act in the window without being typed anywhere.
  std::function<bool(const QWindow& window)> has_hot_keys;

  // Whether a message that has no keyboard of its own stands in front of the window, long enough to
  // have been seen; and what Enter and Esc do with it.
  std::function<bool(const QWindow& window)> message_waits;
  std::function<void()> answer_message;

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  bool repeats(const QKeyEvent& event) const;
  bool withheld(const QKeyEvent& event, const QWindow* window) const;
  bool answers(const QKeyEvent& event, const QWindow* window) const;
  void note(const QKeyEvent& event, const QWindow* window);

  TypingRun run_;
  qint64 last_command_ = never;
  // A button clicks when it is released.
  qint64 last_release_ = never;
  qint64 last_typing_ = never;
  qint64 last_answer_ = never;
  // The key that was let go last, and when by the display's clock.
  int released_key_ = 0;
  quint64 released_at_ = 0;

  static constexpr qint64 never = -1'000'000;
};

}  // namespace lineweir

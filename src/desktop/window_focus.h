#pragma once

#include <QObject>
#include <QPointer>
#include <vector>

class QWidget;
class QWindow;

namespace lineweir {

class Form;
class UserHands;

// Knows in which of the console's windows the user works, and sees to it that the keyboard stays
// there: a box belongs to the window in which it was asked for and gives the keyboard back to it, a
// window that comes by itself doesn't take it from somebody who types, and when a window closes it
// goes to the one from which that was opened, whatever the window manager would choose.
class WindowFocus final : public QObject {
 public:
  explicit WindowFocus(UserHands& hands);

  void add(QWidget& window, const Form& form);
  bool knows(const QWindow& window) const { return place_of(&window) != nullptr; }

  // The window that the user works in, or worked in last; null while there is none.
  QWidget* user_window() const;

  // Whether a form that is shown now is what the user waits for: the answer to a command, or what
  // follows a window that has just closed.
  bool awaited() const;
  // Whether the user is typing into a field.
  bool user_types() const;

  // The window is about to be shown, with the keyboard or without.
  void opens(QWidget& window, bool with_keyboard);
  // The window is about to be hidden.
  void closes(QWidget& window);
  // Gives the keyboard to the window.
  void give_to(QWidget& window);

 private:
  struct Place {
    QPointer<QWidget> window;
    const Form* form;
    QPointer<QWidget> opener;
  };

  Place* place_of(const QWidget* window);
  const Place* place_of(const QWidget* window) const;
  const Place* place_of(const QWindow* window) const;
  // `closing` is a window that is about to be hidden, or null.
  static bool can_have_keyboard(const Place& place, const QWidget* closing);
  QWidget* last_window(const QWidget* closing) const;
  QWidget* next_behind(const QWidget& window) const;
  void keep(QWidget* window);
  bool keeping() const;
  void keyboard_moved(QWindow* window);

  UserHands& hands_;
  // The window that had the keyboard last comes last.
  std::vector<Place> places_;
  // The window that is to have the keyboard, whatever the window manager does by itself until then.
  QPointer<QWidget> kept_;
  qint64 kept_since_ = 0;
};

}  // namespace lineweir

#pragma once

#include <QObject>
#include <QString>

#include "desktop/frame_timer.h"
#include "elements/form.h"

class QKeyEvent;
class QWidget;

namespace lineweir {

class WindowFocus;

// Ties a form to its window, both ways: the form's own properties show in the window, and what the
// user does to the window as a whole reaches the form. The window is made when the form is first
// shown, and stays.
class FormFrame : public QObject, private FormWatch {
 public:
  // `focus` is told of the window's comings and goings.
  FormFrame(Form& form, WindowFocus& focus);
  ~FormFrame() override;

  Form& form() const { return watched_form(); }

  // Null until the form is first shown.
  QWidget* window() const { return window_; }

  // Whether the window manager's frame around the window is there and known.
  bool has_frame() const;

  // Shows all changes now.
  void flush() { frame_.flush(); }

  // The form takes its place from where the window stands.
  void window_moved();

 protected:
  // Makes the window, hidden. It is destroyed by the frame.
  virtual QWidget* make_window() = 0;
  // Gives the window the form's size, if the form's size is told in twips.
  virtual void fit_window(QWidget& window) = 0;
  // The window in front of which this one stands when the user has none in hand; null for none.
  virtual QWidget* usual_owner() const { return nullptr; }
  // Where on the screen a window opens, in the middle of it, whose form has no place yet.
  virtual QRect place_to_open() const;
  // Whether the window takes the keyboard when it is shown; `awaited` if the user waits for it.
  virtual bool takes_keyboard(bool awaited) const;
  // Whether a window that is shown again may have been called by the user.
  virtual bool comes_for_user() const { return true; }
  // Whether a change of that element, which isn't the form itself, shows in the window as a whole.
  virtual bool shows_in_window(const Element&) const { return false; }
  // Whether the form has its window, and with that its place, as soon as it is shown; otherwise
  // with the next frame.
  virtual bool opens_at_once() const { return false; }
  // Told before the window, which has its contents and its size, is shown.
  virtual void about_to_show() {}
  // Told with each frame in which the form or such an element changed; the window exists.
  virtual void form_changed() {}

  bool eventFilter(QObject* watched, QEvent* event) override;

  void mark() { frame_.mark(); }
  const WindowFocus& focus() const { return focus_; }

 private:
  void changed(Element& element, PropertyId property) override;
  void shown_again() override;

  void show_changes();
  void show_title();
  void open_window();
  void move_window();
  void show_or_hide();
  // Keeps a form that must stay in the user's hands in front of the window that the user works in.
  void stay_reachable();
  void apply_window_state();
  // The form takes the window's place for its own.
  void take_place();
  void window_state_changed();
  bool key_swallowed(QKeyEvent& event);
  bool character_swallowed(const QKeyEvent& event);

  QWidget* window_ = nullptr;
  // As the form has it; the window may show more.
  QString title_;
  WindowFocus& focus_;
  bool awaited_ = false;
  bool place_changed_ = false;
  bool size_changed_ = false;
  bool raise_wanted_ = false;
  FrameTimer frame_;
};

}  // namespace lineweir

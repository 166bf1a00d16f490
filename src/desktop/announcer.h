#pragma once

#include <QAccessible>
#include <QWidget>
#include <functional>
#include <string>
#include <vector>

#include "desktop/frame_timer.h"
#include "elements/form.h"

namespace lineweir {

struct Console;

// Where announcements stand for screen readers: a widget that nobody sees, whose name is the last
// one.
class Announcements final : public QWidget {
 public:
  explicit Announcements(QWidget& window);
};

// Announces to screen readers what the eye would catch without the focus being there: lines that
// begin to ring, the message box with its text, and what has to be known of a caller's data.
class Announcer {
 public:
  // `window_of` gives the window in which a form is shown, or null while it isn't.
  Announcer(Console& console, std::function<QWidget*(const Form& form)> window_of);

  // Announces now what has happened.
  void flush();

  // Tells screen readers of the event. Where none runs Qt keeps it to itself.
  std::function<void(QAccessibleEvent& event)> tell;

 private:
  // Marks the announcer when its form changes.
  class Watch final : public FormWatch {
   public:
    Watch(Form& form, Announcer& announcer) : FormWatch(form), announcer_(announcer) {}

   private:
    void changed(Element& element, PropertyId property) override;

    Announcer& announcer_;
  };

  void show_changes();
  void announce_ringing();
  void announce_message();
  void announce_notice();
  // Draws attention to a widget that is an alert.
  void alert(QWidget& widget);

  Console& console_;
  std::function<QWidget*(const Form& form)> window_of_;
  // The letters of the lines when they were last looked at.
  std::string letters_;
  std::string message_;
  std::string notice_;
  Announcements* announcements_ = nullptr;
  Watch rows_;
  Watch message_box_;
  Watch caller_data_;
  FrameTimer frame_;
};

}  // namespace lineweir

#pragma once

#include <QAccessible>
#include <QWidget>
#include <functional>
#include <optional>
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
// begin to ring or change their state otherwise, the link that goes or comes, the message box with
// its text, and what has to be known of a caller's data.
class Announcer {
 public:
  // `window_of` gives the window in which a form is shown, or null while it isn't.
  Announcer(Console& console, std::function<QWidget*(const Form& form)> window_of);

  // Announces now what has happened.
  void flush();

  // Announces what isn't to be seen from the elements.
  void announce(const QString& text);

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
  void announce_lines();
  void announce_link();
  void announce_message();
  // What a form says beside its fields, when it says something else than what was told last.
  void announce_notice(const Form& form, const std::string& caption, std::string& told);
  // Tells what has come together as one announcement, of which none covers another.
  void tell_news();
  // Draws attention to a widget that is an alert.
  void alert(QWidget& widget);

  Console& console_;
  std::function<QWidget*(const Form& form)> window_of_;
  // The states of the lines, in words, when they were last looked at; nothing before they were.
  std::optional<std::vector<QString>> states_;
  QStringList news_;
  std::string message_;
  // Why there was no link when it was last looked at; nothing before it was.
  std::optional<std::string> no_link_;
  std::string caller_notice_;
  std::string caller_flag_;
  std::string flag_notice_;
  std::string plan_notice_;
  Announcements* announcements_ = nullptr;
  Watch rows_;
  Watch message_box_;
  Watch caller_data_;
  Watch flag_form_;
  Watch show_plan_;
  FrameTimer frame_;
};

}  // namespace lineweir

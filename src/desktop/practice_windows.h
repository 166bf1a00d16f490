#pragma once

#include <QString>
#include <memory>

#include "desktop/dialog_frame.h"

namespace lineweir {

class Desktop;
class FormBinder;

namespace practice {
class PracticeShow;
}

// The windows of a practice show beside those of its console, whose main window is there already:
// the choice of the level, the page at the end, and the band across the main window.
class PracticeWindows {
 public:
  PracticeWindows(Desktop& desktop, practice::PracticeShow& show);
  ~PracticeWindows();
  PracticeWindows(const PracticeWindows&) = delete;
  PracticeWindows& operator=(const PracticeWindows&) = delete;

  // The window of the form of that name; null while it has none.
  QWidget* window_of(const QString& form_name) const;
  // Shows all changes now.
  void flush();

 private:
  Desktop& desktop_;
  practice::PracticeShow& show_;
  DialogFrame level_;
  DialogFrame score_;
  std::unique_ptr<FormBinder> band_;
};

}  // namespace lineweir

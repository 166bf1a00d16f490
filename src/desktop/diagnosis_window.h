#pragma once

#include <functional>

#include "desktop/diagnosis.h"
#include "desktop/dialog_frame.h"
#include "desktop/server_probe.h"
#include "elements/form.h"

namespace lineweir {

class MainWindow;
struct Console;

class DiagnosisForm : public Form {
 public:
  DiagnosisForm();
};

// What the program sees of its surroundings, as a page that can be copied. It blocks nothing, and
// looks anew each time that it is opened.
class DiagnosisWindow {
 public:
  DiagnosisWindow(Console& console, WindowFocus& focus, std::function<QWidget*()> main_window);

  // Set by the owner.
  std::function<Surroundings()> look_around;

  DiagnosisForm& form() { return form_; }
  const DiagnosisForm& form() const { return form_; }
  // Null until it is first opened.
  QWidget* window() const { return frame_.window(); }

  void open();
  void flush() { frame_.flush(); }

 private:
  void take_window();
  void look();
  void show(const std::string& server_state);

  WindowFocus& focus_;
  DiagnosisForm form_;
  DialogFrame frame_;
  ServerProbes probes_;
  Surroundings seen_;
  bool is_wired_ = false;
};

}  // namespace lineweir

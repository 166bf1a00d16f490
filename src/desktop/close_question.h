#pragma once

#include <functional>

#include "desktop/dialog_frame.h"
#include "desktop/frame_timer.h"
#include "elements/button.h"
#include "elements/form.h"
#include "elements/label.h"

namespace lineweir {

struct Console;
class WindowFocus;

// What is asked before the program is closed while a caller is on air.
class CloseQuestionForm : public Form {
 public:
  CloseQuestionForm();

  Label WhoLabel{*this, "WhoLabel"};
  Label WhatLabel{*this, "WhatLabel"};
  Button CloseButton{*this, "CloseButton", "&Close Lineweir"};
  Button StayButton{*this, "StayButton", "&Keep Lineweir open"};
};

// Asks when the user closes the main window with a caller on air, whichever way. It is asked in a
// window of its own that blocks nothing: the show goes on, the rows and keys work, and what it says
// follows the lines. It doesn't go by itself, since whoever reaches for it would hit what lies
// behind. The end of the session and a stop from outside aren't asked about.
class CloseQuestion final : private FormWatch {
 public:
  CloseQuestion(Console& console, WindowFocus& focus, std::function<QWidget*()> main_window);
  ~CloseQuestion() override;

  CloseQuestionForm& form() { return form_; }
  const CloseQuestionForm& form() const { return form_; }
  // Null until it is first asked.
  QWidget* window() const { return frame_.window(); }

  void flush();

 private:
  void main_form_closes();
  void ask();
  void tell();
  void changed(Element& element, PropertyId property) override;

  Console& console_;
  WindowFocus& focus_;
  CloseQuestionForm form_;
  DialogFrame frame_;
  FrameTimer news_;
};

}  // namespace lineweir

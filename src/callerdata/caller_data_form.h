#pragma once

#include "elements/button.h"
#include "elements/control_array.h"
#include "elements/form.h"
#include "elements/label.h"
#include "elements/text_box.h"
#include "elements/timer.h"

namespace lineweir {

inline constexpr int caller_text_count = 10;

// The top of a field on Form4, by its place among those in use, from 0.
constexpr int caller_row_top(int place) { return 120 + 375 * place; }

// Form4, in which the screener types who is calling. The fields are elements 1 to 10 of both
// arrays; element 0 is their model and never shown.
class CallerDataForm : public Form {
 public:
  CallerDataForm();

  ControlArray<TextBox> TheText{*this, "TheText"};
  ControlArray<lineweir::Label> Label{*this, "Label"};
  Button Command3D1{*this, "Command3D1", "&Save"};
  Timer UnloadTimer{*this, "UnloadTimer", false, 100};

  // What the log knows of the caller, and the offer to fill it in.
  lineweir::Label MemoryLabel{*this, "MemoryLabel"};
  Button MemoryFill{*this, "MemoryFill", "&Fill in"};

  // What the user has to know while typing: below the fields, where nothing else moves for it.
  lineweir::Label NoticeLabel{*this, "NoticeLabel"};

  // Closes up below so many fields.
  void fit_height(int fields);

  // The empty text shows nothing.
  void show_notice(const std::string& text);

 private:
  void fit_height();

  int fields_ = caller_text_count;
};

}  // namespace lineweir

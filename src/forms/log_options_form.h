#pragma once

#include <deque>

#include "elements/button.h"
#include "elements/form.h"
#include "lines/caller_fields.h"

namespace lineweir {

// LogDataForm: which of the fields that people enter are in use.
class LogOptionsForm : public Form {
 public:
  LogOptionsForm();

  // CallerNameCheck and the others, in the order of the fields.
  std::deque<CheckBox> boxes;
  Button ExitLayout{*this, "ExitLayout", "E&xit"};
  Button CancelLayout{*this, "CancelLayout", "&Cancel"};

  CheckBox& box(CallerField field) { return boxes.at(static_cast<std::size_t>(field)); }
};

}  // namespace lineweir

#include "forms/log_options_form.h"

namespace lineweir {
namespace {

std::deque<CheckBox> boxes_of_fields(Form& form) {
  std::deque<CheckBox> boxes;
  for (const CallerFieldRule& field : entry_fields) {
    CheckBox& box = boxes.emplace_back(form, field.box);
    box.caption = field.title;
  }
  return boxes;
}

}  // namespace

LogOptionsForm::LogOptionsForm() : Form("LogDataForm"), boxes(boxes_of_fields(*this)) {
  caption = "Log Data Options";
  width = 4200;
  height = 4600;
}

}  // namespace lineweir

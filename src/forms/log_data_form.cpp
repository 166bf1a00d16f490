#include "forms/log_data_form.h"

namespace lineweir {
namespace {

constexpr int row_pitch = 375;

std::deque<CheckBox> boxes_of_fields(Form& form) {
  std::deque<CheckBox> boxes;
  for (const CallerFieldRule& field : entry_fields) {
    const int place = static_cast<int>(boxes.size());
    CheckBox& box = boxes.emplace_back(form, field.box);
    box.caption = field.title;
    box.move(240, 150 + row_pitch * place, 3700, 315);
  }
  return boxes;
}

}  // namespace

LogDataWindow::LogDataWindow() : Form("LogDataForm"), boxes(boxes_of_fields(*this)) {
  caption = "Log Data Options";
  width = 4200;
  height = 4600;
  ExitLayout.move(1480, 4050, 1215, 375);
  CancelLayout.move(2805, 4050, 1215, 375);
}

}  // namespace lineweir

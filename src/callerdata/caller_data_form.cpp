#include "callerdata/caller_data_form.h"

#include <array>
#include <string_view>

namespace lineweir {
namespace {

constexpr int form_width = 9600;
constexpr int memory_left = 6000;
constexpr int memory_width = form_width - memory_left - 180;
constexpr int button_height = 375;
// The room that the caller's history takes, however few fields there are.
constexpr int memory_height = 1500;
constexpr std::array<std::string_view, caller_text_count> headings = {
    "Caller Name", "Street Address", "City",   "State",    "ZipCode",
    "PhoneNumber", "Station",        "Gender", "Comments", "User"};

}  // namespace

CallerDataForm::CallerDataForm() : Form("Form4") {
  width = form_width;
  TheText(0).visible = false;
  Label(0).visible = false;
  for (int field = 1; field <= caller_text_count; ++field) {
    const int row_top = caller_row_top(field - 1);
    lineweir::Label& heading = Label.load(field);
    heading.caption = headings[static_cast<std::size_t>(field - 1)];
    heading.move(120, row_top, 1500, 300);
    heading.visible = true;
    TextBox& text = TheText.load(field);
    text.move(1700, row_top, 4100, 315);
    text.visible = true;
  }
  Command3D1.move(4585, 0, 1215, button_height);
  MemoryLabel.move(memory_left, caller_row_top(0), memory_width, memory_height);
  MemoryLabel.visible = false;
  MemoryFill.move(memory_left, caller_row_top(0) + memory_height, 1215, button_height);
  MemoryFill.visible = false;
  fit_height(caller_text_count);
}

void CallerDataForm::fit_height(int fields) {
  Command3D1.top = caller_row_top(fields);
  const int below_fields = caller_row_top(fields) + button_height;
  const int below_memory = caller_row_top(0) + memory_height + button_height;
  height = (below_fields > below_memory ? below_fields : below_memory) + 120;
}

}  // namespace lineweir

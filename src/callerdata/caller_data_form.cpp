#include "callerdata/caller_data_form.h"

#include <array>
#include <string_view>

namespace lineweir {
namespace {

constexpr int first_row_top = 120;
constexpr int row_pitch = 375;
constexpr std::array<std::string_view, caller_text_count> headings = {
    "Caller Name", "Street Address", "City",   "State",    "ZipCode",
    "PhoneNumber", "Station",        "Gender", "Comments", "User"};

}  // namespace

CallerDataForm::CallerDataForm() : Form("Form4") {
  width = 6000;
  height = 4700;
  TheText(0).visible = false;
  Label(0).visible = false;
  for (int field = 1; field <= caller_text_count; ++field) {
    const int row_top = first_row_top + row_pitch * (field - 1);
    lineweir::Label& heading = Label.load(field);
    heading.caption = headings[static_cast<std::size_t>(field - 1)];
    heading.move(120, row_top, 1500, 300);
    heading.visible = true;
    TextBox& text = TheText.load(field);
    text.move(1700, row_top, 4100, 315);
    text.visible = true;
  }
  Command3D1.move(4585, first_row_top + row_pitch * caller_text_count, 1215, 375);
}

}  // namespace lineweir

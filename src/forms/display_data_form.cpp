#include "forms/display_data_form.h"

namespace lineweir {

DisplayDataForm::DisplayDataForm() : Form("DisplayOptionForm") {
  caption = "Display Data Options";
  width = 9000;
  height = 6600;
  for (int column = 0; column < column_count; ++column) {
    CheckBox& box = column == 0 ? CheckItem(0) : CheckItem.load(column);
    TextBox& box_width = column == 0 ? WidthText(0) : WidthText.load(column);
    box.caption = column_rules[static_cast<std::size_t>(column)].heading;
    const bool optional = column >= first_optional_column;
    box.visible = true;
    box.enabled = optional;
    box.value = optional ? 0 : 1;
    box_width.visible = true;
    box_width.enabled = !optional;
  }
  LineCheck(0).set_container(&DisplayPhoneLineFrame);
  LineCheck(0).caption = "Line 1";
  LineCheck(0).value = 1;
  HybridCheck(0).caption = "&Main Hybrid";
  HybridCheck.load(1).caption = "&Conference Hybrid";
  for (int hybrid = 0; hybrid < 2; ++hybrid) {
    HybridCheck(hybrid).value = 1;
    HybridCheck(hybrid).visible = true;
  }
}

}  // namespace lineweir

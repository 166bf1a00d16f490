#include "forms/display_option_form.h"

namespace lineweir {
namespace {

constexpr int row_pitch = 330;
constexpr int list_height = row_pitch * column_count;

}  // namespace

DisplayOptionWindow::DisplayOptionWindow() : Form("DisplayOptionForm") {
  caption = "Display Data Options";
  width = 9000;
  height = 6600;
  for (int column = 0; column < column_count; ++column) {
    CheckBox& box = column == 0 ? CheckItem(0) : CheckItem.load(column);
    TextBox& box_width = column == 0 ? WidthText(0) : WidthText.load(column);
    const int row_top = 150 + row_pitch * column;
    box.caption = column_rules[static_cast<std::size_t>(column)].heading;
    box.move(150, row_top, 2000, 300);
    box_width.move(2250, row_top, 900, 300);
    const bool optional = column >= first_optional_column;
    box.visible = true;
    box.enabled = optional;
    box.value = optional ? 0 : 1;
    box_width.visible = true;
    box_width.enabled = !optional;
  }
  List1.move(3400, 150, 2400, list_height);
  UserRename.move(150, 150 + list_height, 2000, 375);
  RoomLabel.move(2250, 150 + list_height, 3550, 600);
  DisplayPhoneLineFrame.move(6000, 0, 2900, 3600);
  LineCheck(0).set_container(&DisplayPhoneLineFrame);
  LineCheck(0).caption = "Line 1";
  LineCheck(0).value = 1;
  HybridCheck(0).caption = "&Main Hybrid";
  HybridCheck.load(1).caption = "&Conference Hybrid";
  for (int hybrid = 0; hybrid < 2; ++hybrid) {
    HybridCheck(hybrid).value = 1;
    HybridCheck(hybrid).visible = true;
    HybridCheck(hybrid).move(6100, 3700 + row_pitch * hybrid, 2200, 300);
  }
  MessageGroupSelector.move(6100, 4500, 2700, 315);
  ExitCommand.move(7585, 5900, 1215, 375);
}

}  // namespace lineweir

#pragma once

#include "elements/button.h"
#include "elements/control_array.h"
#include "elements/form.h"
#include "elements/frame.h"
#include "elements/label.h"
#include "elements/list_box.h"
#include "elements/text_box.h"
#include "forms/columns.h"

namespace lineweir {

// DisplayOptionForm: which columns, lines and hybrids are shown, the order of the columns, and the
// studio group.
class DisplayDataForm : public Form {
 public:
  DisplayDataForm();

  // By column. The boxes of columns 0 and 1 are always checked.
  ControlArray<CheckBox> CheckItem{*this, "CheckItem"};
  ControlArray<TextBox> WidthText{*this, "WidthText"};
  // The headings of the columns shown beyond the first two, in their order.
  ListBox List1{*this, "List1"};
  Button UserRename{*this, "UserRename", "Re&name"};
  // Names the columns that the rows have no room for; empty where all fit.
  Label RoomLabel{*this, "RoomLabel"};
  Frame DisplayPhoneLineFrame{*this, "DisplayPhoneLineFrame", "&Lines"};
  // By line, in the frame; laid out by VisibleRows.
  ControlArray<CheckBox> LineCheck{*this, "LineCheck"};
  // 0 the main hybrid, 1 the conference hybrid.
  ControlArray<CheckBox> HybridCheck{*this, "HybridCheck"};
  ComboBox MessageGroupSelector{*this, "MessageGroupSelector"};
  Button ExitCommand{*this, "ExitCommand", "E&xit"};
};

}  // namespace lineweir

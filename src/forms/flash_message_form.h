#pragma once

#include "elements/button.h"
#include "elements/data_source.h"
#include "elements/form.h"
#include "elements/label.h"
#include "elements/list_box.h"
#include "elements/text_box.h"

namespace lineweir {

// FlashMessA: sends a message to the other seats, with a list of stock messages.
class FlashMessageForm : public Form {
 public:
  FlashMessageForm();

  TextBox Text1{*this, "Text1"};
  TextBox Text2{*this, "Text2"};
  Button FlashSend{*this, "FlashSend", "&Send"};
  Button SendUrgent{*this, "SendUrgent", "Send &Urgent"};
  Button FlashMessACancel{*this, "FlashMessACancel", "&Cancel"};
  Button FlashMessClear{*this, "FlashMessClear", "C&lear"};
  ListBox DBList1{*this, "DBList1"};
  Button AddCurrent{*this, "AddCurrent", "&Add"};
  Button UpdateButton{*this, "UpdateButton", "Us&e"};
  Button RemoveCurrent{*this, "RemoveCurrent", "&Remove"};
  Button BrowseButton{*this, "BrowseButton", "&Browse"};
  Label Label1{*this, "Label1"};
  DataSource Data1{*this, "Data1"};
};

}  // namespace lineweir

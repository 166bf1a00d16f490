#pragma once

#include <array>

#include "elements/button.h"
#include "elements/data_source.h"
#include "elements/form.h"
#include "elements/label.h"
#include "elements/list_box.h"
#include "elements/text_box.h"
#include "elements/timer.h"

namespace lineweir {

// FlashMessA: sends a message to the other seats, with a hot list of stock messages, and shows
// those of the show so far.
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
  // Tells what becomes of a message where nobody carries it.
  Label CarrierLabel{*this, "CarrierLabel"};
  // The messages of the show with their times.
  TextBox Today{*this, "Today"};
  // Looks whether another program has changed the hot list, while the form is shown.
  Timer FollowTimer{*this, "FollowTimer", false, 1000};

  // What leaves the tab order while the message is being written, so that Tab stays in it.
  std::array<Control*, 10> controls_beside_text();
};

}  // namespace lineweir

#pragma once

#include "elements/data_source.h"
#include "elements/form.h"
#include "forms/menu_elements.h"
#include "forms/panel_elements.h"
#include "forms/row_elements.h"
#include "forms/timer_elements.h"

namespace lineweir {

// The main form as it is designed: ten rows, talent mode, nothing connected. The sections stand in
// the order in which their elements lie on one another.
class MainForm : public Form,
                 public MenuElements,
                 public BackgroundElements,
                 public RowElements,
                 public PanelElements,
                 public ClockElements,
                 public TimerElements {
 public:
  MainForm();

  DataSource Data1{*this, "Data1"};

  // Why there is no link to the telephone system, in a sentence for the user; empty while there is
  // one.
  Property<std::string> no_link{*this, PropertyId::NoLink};
  // Which of several servers the link goes to, and since when; empty where there is one alone.
  Property<std::string> linked_to{*this, PropertyId::LinkedTo};
};

}  // namespace lineweir

#pragma once

#include "elements/control_array.h"
#include "elements/menu_item.h"

namespace lineweir {

// The menus of the main form, in the order in which they stand on the screen.
struct MenuElements {
  explicit MenuElements(Form& form);

  MenuItem Options;
  MenuItem AboutLineweir, ManualMenuItem, DiagnosisMenuItem, SaveSettingsMenu, DatabasePathMenuItem,
      ShowDatabaseMenuItem, ShowData, ServerShowData, GreyScreenOption, FontMenuItem,
      TextGrowToggle, UrgentSound, ResetLineweirSize, ExitMenu;

  MenuItem Port;
  MenuItem Com1, Com2, Com3, Com4, NetworkConnectionOption, WinsockMenu, PortSeparator, PortOn, Off;

  MenuItem RemotePort;
  MenuItem RemoteCom1, RemoteCom2, RemoteCom3, RemoteCom4, RemotePortSeparator, RemoteOn, RemoteOff;

  MenuItem TimeClockMenu2;
  MenuItem Clock, SyncTimeMenu, TimeOffsetMenu, TimeClockSeparator, EventClockMenu,
      TimeClockMenuItem, DigiClock, WarningTime1Menu, WarningTime2Menu;

  MenuItem ConfigurationMenuItem;
  MenuItem LogDataOptionsMenu, DisplayDataOptionsMenu, AutoDataEntry, Line20Mode;
  MenuItem ModeMenuItem, StudioMode, ScreenerMode, PassiveMode;
  MenuItem MitelOption, MitelPhone1, MitelPhone2;
  MenuItem NextGenPhoneMenu;
  ControlArray<MenuItem> NextGenPhone;
  MenuItem RemoteNext, NextBarDisable, DimLineNumMenu, StudioLinNumMenu, PracticeMenu,
      ConfigurationSeparator;
  ControlArray<MenuItem> StudioGr;

  // Com1 to Com4 by the port's number.
  MenuItem& Com(int number);
  MenuItem& RemoteCom(int number);

  void uncheck_coms();
  // The serial port that is the way to the equipment, 1 to 4; 0 if another way is chosen or none.
  int chosen_com() const;
};

}  // namespace lineweir

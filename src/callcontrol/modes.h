#pragma once

#include <string_view>

namespace lineweir {

class ButtonPanel;
class NextKey;
class SwitchConsolePort;
class RowDisplay;
class ScreenLayout;
class Links;
class RowChoice;
struct ConsoleState;

// The jobs of a seat: the screener's, producer mode, and the host's, talent mode; passive mode lays
// a lock over the latter.
class Modes {
 public:
  Modes(ConsoleState& state, const Links& links, NextKey& next_key, RowDisplay& rows,
        ButtonPanel& panel, ScreenLayout& layout, RowChoice& row_choice,
        SwitchConsolePort& switch_console_port);

  // Where the check of PassiveMode was set without a click: makes the lock true.
  void CheckPassiveState();

  // What the user may do has changed: the keys and the lock of passive mode follow.
  void settle_rights();

  // Enables, disables and pictures all buttons as the mode, the hybrids and the handset demand;
  // nothing with equipment of kind 4.
  void SetEnabledDisabled();

  // A server has told ThePhoneFlag: the menus of that kind of equipment appear.
  void follow_equipment();

 private:
  void ScreenerMode_Click();
  void StudioMode_Click();
  // Toggles. Both ways end in talent mode.
  void PassiveMode_Click();

  void show_captions(bool talent);
  // The row buttons change hands: the switch console must not press them meanwhile.
  void rearrange_buttons(std::string_view handler);
  void show_row_icons();

  ConsoleState& state_;
  const Links& links_;
  NextKey& next_key_;
  RowDisplay& rows_;
  ButtonPanel& panel_;
  ScreenLayout& layout_;
  RowChoice& row_choice_;
  SwitchConsolePort& switch_console_port_;
};

}  // namespace lineweir

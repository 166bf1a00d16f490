#pragma once

#include "state/settings_record.h"

namespace lineweir {

class CallLogFile;
class CallerDataEntry;
class DisplayOptions;
class Fonts;
class ScreenLayout;
class SerialPortControl;
class ShowPlanStore;
class WindowSize;
struct ConsoleState;

// What the start takes from the settings file, in the pieces that stand at their own places in the
// order of the start: the elements are clicked as a user would, with all that follows.
class RestoredSettings {
 public:
  RestoredSettings(ConsoleState& state, ShowPlanStore& show_plan, ScreenLayout& layout,
                   DisplayOptions& display, WindowSize& window, Fonts& fonts,
                   CallLogFile& call_log_file, CallerDataEntry& caller_data,
                   SerialPortControl& port);

  // Values, menus, group, ports and columns.
  void apply(const SettingsRecord& record);
  void restore_database(const SettingsRecord& record);
  // The default plan without a record, or where the stored one is gone.
  void restore_show_plan(const SettingsRecord* record);
  void restore_phone(const SettingsRecord& record);
  void restore_user_heading(const SettingsRecord& record);
  void restore_mode(const SettingsRecord& record);
  void restore_clocks(const SettingsRecord& record);

 private:
  void restore_values(const SettingsRecord& record);
  void restore_menus(const SettingsRecord& record);
  void restore_group(const SettingsRecord& record);
  void restore_port(const SettingsRecord& record);
  void restore_switch_console_port(const SettingsRecord& record);
  void restore_columns(const SettingsRecord& record);

  ConsoleState& state_;
  ShowPlanStore& show_plan_;
  ScreenLayout& layout_;
  DisplayOptions& display_;
  WindowSize& window_;
  Fonts& fonts_;
  CallLogFile& call_log_file_;
  CallerDataEntry& caller_data_;
  SerialPortControl& port_;
};

}  // namespace lineweir

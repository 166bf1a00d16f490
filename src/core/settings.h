#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "state/settings_record.h"

namespace lineweir {

class CallLogFile;
class CallerDataEntry;
class DisplayOptions;
class Fonts;
class SwitchConsolePort;
class SerialPortControl;
class ShowPlanStore;
class UserProfile;
class WindowSize;
class Links;
struct ConsoleState;

// The settings file: one record in the directory in which the program started, with a further file
// for what the record has no room for.
class Settings {
 public:
  Settings(ConsoleState& state, const Links& links, ShowPlanStore& show_plan,
           DisplayOptions& display, WindowSize& window, Fonts& fonts, CallLogFile& call_log_file,
           CallerDataEntry& caller_data, SerialPortControl& port,
           SwitchConsolePort& switch_console_port, UserProfile& user_profile);

  // The stored record; nothing where there is no file or one without a record.
  std::optional<SettingsRecord> read() const;

  // The same for the start. The user is told of a file that can't be read; it is the only one of
  // its kind, so it is left as it is until the program ends, whatever is to be saved.
  std::optional<SettingsRecord> read_at_start();

  // Whether that start found a file which it couldn't read.
  bool unreadable() const { return unreadable_.has_value(); }

  // The present state as a record.
  SettingsRecord collect();

  // Writes the present state as the program ends. Where that fails the old file stands, and the
  // program waits until the user has seen why.
  void save_at_end();

  // Falls back on the file when a server tells the console to: the window's size and the font.
  void SetFileSettings();

 private:
  void SaveSettingsMenu_Click();
  // Writes the present state; says why where it isn't written.
  std::optional<std::string> save();
  void save_further_settings();

  ConsoleState& state_;
  const Links& links_;
  ShowPlanStore& show_plan_;
  DisplayOptions& display_;
  WindowSize& window_;
  Fonts& fonts_;
  CallLogFile& call_log_file_;
  CallerDataEntry& caller_data_;
  SerialPortControl& port_;
  SwitchConsolePort& switch_console_port_;
  UserProfile& user_profile_;
  // Why the file couldn't be read at the start.
  std::optional<std::string> unreadable_;
};

}  // namespace lineweir

#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "core/settings_record.h"

namespace lineweir {

struct Console;

inline constexpr std::string_view settings_file_name = "Writ.inf";

// The settings file: one record in the directory in which the program started.
class Settings {
 public:
  explicit Settings(Console& console);

  // The stored record; nothing where there is no file or one without a record.
  std::optional<SettingsRecord> read() const;

  // The present state as a record.
  SettingsRecord collect();

  // Writes the present state. Where that fails the old file stands and the user is told.
  void save();

  void SaveSettingsMenu_Click();

  // Falls back on the file when a server tells the console to: the window's size and the font.
  void SetFileSettings();

 private:
  // Empty, with a report, for a password that can't be scrambled at this second.

  Console& console_;
};

}  // namespace lineweir

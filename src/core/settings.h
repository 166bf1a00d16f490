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

  // The same for the start. The user is told of a file that can't be read; it is the only one of
  // its kind, so it is left as it is until the program ends, whatever is to be saved.
  std::optional<SettingsRecord> read_at_start();

  // The present state as a record.
  SettingsRecord collect();

  // Writes the present state as the program ends. Where that fails the old file stands, and the
  // program waits until the user has seen why.
  void save_at_end();

  void SaveSettingsMenu_Click();

  // Falls back on the file when a server tells the console to: the window's size and the font.
  void SetFileSettings();

 private:
  // Writes the present state; says why where it isn't written.
  std::optional<std::string> save();

  Console& console_;
  // Why the file couldn't be read at the start.
  std::optional<std::string> unreadable_;
};

}  // namespace lineweir

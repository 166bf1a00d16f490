#pragma once

#include <string>

#include "core/settings_record.h"

namespace lineweir {

struct Console;

// The entry of a caller's details.
class CallerDataEntry {
 public:
  explicit CallerDataEntry(Console& console);

  // Shows Form4 for a line, whose data it then edits.
  void show_for_line(int line);

  // The name that stamps caller data.
  std::string OperatorName;
  // Which of the ten fields are in use.
  LogFieldFlags LogFieldOn = all_fields_on();

 private:
  static LogFieldFlags all_fields_on();

  Console& console_;
};

}  // namespace lineweir

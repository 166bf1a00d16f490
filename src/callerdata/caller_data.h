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

  // Tells the other consoles through the server that the line has no caller's data any more;
  // nothing on the serial link. Fails as the road to the server does.
  void tell_data_cleared(int line);

  // The name that stamps caller data.
  std::string OperatorName;
  // Which of the ten fields are in use.
  LogFieldFlags LogFieldOn = all_fields_on();

 private:
  static LogFieldFlags all_fields_on();

  Console& console_;
};

}  // namespace lineweir

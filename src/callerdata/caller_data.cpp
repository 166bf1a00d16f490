#include "callerdata/caller_data.h"

#include "core/console.h"

namespace lineweir {

CallerDataEntry::CallerDataEntry(Console& console) : console_(console) {}

LogFieldFlags CallerDataEntry::all_fields_on() {
  LogFieldFlags flags;
  flags.fill(true);
  return flags;
}

void CallerDataEntry::show_for_line(int line) {
  console_.lines.CurrentDataLine = line;
  console_.Form4.caption = "Caller Data - Line " + std::to_string(line + 1);
  console_.Form4.show();
}

}  // namespace lineweir

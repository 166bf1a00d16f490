#include "lines/line_table.h"

namespace lineweir {

void LineTable::resize(int line_count) {
  LineCount = line_count;
  StatusLetter.resize(line_count);
  SetBusy.resize(line_count);
  CallerData.resize(line_count);
  HoldStamp.resize(line_count);
  ClockBase.resize(line_count);
  ClockRunning.resize(line_count);
  if (TheNextCall >= line_count) {
    TheNextCall = no_line;
    NextCallSet = false;
  }
}

}  // namespace lineweir

#pragma once

#include "lines/line_table.h"

namespace lineweir {

// The line on which this console dials.
struct DialState {
  int DialLine = no_line;
  // The line seized and not yet confirmed by a status report.
  int DialSeizeLine = no_line;
};

}  // namespace lineweir

#include "serverlink/line_count_change.h"

#include "callerdata/caller_data.h"
#include "screen/screen_layout.h"
#include "state/console_state.h"

namespace lineweir {

bool LineCountChange::follow_menu() {
  MainForm& form = state_.Lineweir;
  const int wanted = form.Line20Mode.checked ? lines_of_large_layout : lines_of_small_layout;
  if (wanted == state_.lines.LineCount) return false;
  caller_data_.leave_lines(wanted);
  for (int* line : {&state_.dial.DialLine, &state_.dial.DialSeizeLine}) {
    if (*line >= wanted) *line = no_line;
  }
  layout_.set_line_count(wanted);
  layout_.RedefineScreen();
  // The states that the server has told hold for the lines that come, too.
  if (state_.login.ServerAlive) form.Timer4.enabled = true;
  return true;
}

}  // namespace lineweir

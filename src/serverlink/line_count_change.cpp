#include "serverlink/line_count_change.h"

#include "callerdata/caller_data.h"
#include "screen/screen_layout.h"
#include "serverlink/session_start.h"
#include "state/console_state.h"

namespace lineweir {

bool LineCountChange::follow_menu() {
  MainForm& form = state_.Lineweir;
  const int wanted = form.Line20Mode.checked ? lines_of_large_layout : lines_of_small_layout;
  if (wanted == state_.lines.LineCount) return false;
  const bool lines_come = wanted > state_.lines.LineCount;
  caller_data_.leave_lines(wanted);
  for (int* line : {&state_.dial.DialLine, &state_.dial.DialSeizeLine}) {
    if (*line >= wanted) *line = no_line;
  }
  layout_.set_line_count(wanted);
  layout_.RedefineScreen();
  if (!state_.login.ServerAlive) return true;
  // The states that the server has told hold for the lines that come, too. Whether they exist,
  // their names, clocks and callers, and the next call among them, it has told in vain.
  form.Timer4.enabled = true;
  if (lines_come && state_.login.SessionBegun) {
    TextWrit_SockConnecter(state_, server_, SessionReason::Login);
  }
  return true;
}

}  // namespace lineweir

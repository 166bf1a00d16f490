#include "serverlink/group_leave.h"

#include <string>

#include "serverlink/line_events.h"
#include "state/console_state.h"

namespace lineweir {

void clear_conversation(ConsoleState& state) {
  TextBox& messages = state.Lineweir.Text1;
  messages.text = "";
  messages.tool_tip = "";
  messages.back_color = color_white;
  messages.fore_color = color_black;
}

void clear_studio_group(ConsoleState& state, LineEvents& line_events) {
  line_events.leave_group();
  for (int line = 0; line < state.lines.LineCount; ++line) {
    state.Lineweir.LineNumb(line).caption = std::to_string(line + 1);
  }
  // A choice that was none, too, stays with its group.
  state.lines.NextCallSet = false;
  clear_conversation(state);
  ClockState& clocks = state.clock_state;
  clocks.ServerLastEventTime.clear();
  clocks.ServerEventTime.clear();
  clocks.ServerEventText.clear();
  if (!state.Lineweir.ServerShowData.checked) return;
  MainForm& form = state.Lineweir;
  form.CountDownTime.caption = "";
  form.CountDownTime2.text = "";
  form.StatusText.caption = "";
  form.StatusText2.text = "";
}

}  // namespace lineweir

#include "screen/profile_window.h"

#include "state/console_state.h"
#include "state/wire.h"

namespace lineweir {

ProfileWindow::ProfileWindow(ConsoleState& state) : state_(state) {
  wire(state.Lineweir.SetStateTimer.on_timer, state_.trace, "Lineweir_SetStateTimer_Timer",
       [this] { SetStateTimer_Timer(); });
}

void ProfileWindow::SetStateTimer_Timer() {
  MainForm& form = state_.Lineweir;
  if (!form.visible) return;
  form.SetStateTimer.enabled = false;
  form.window_state = SetStateTo;
  if (state_.program.GroupNumber == SetStateMessGroup && form.window_state == window_normal) {
    form.height = SetStateToHeight;
    form.width = SetStateToWidth;
  }
}

}  // namespace lineweir

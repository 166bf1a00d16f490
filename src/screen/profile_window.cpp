#include "screen/profile_window.h"

#include "core/console.h"
#include "core/guard.h"

namespace lineweir {

ProfileWindow::ProfileWindow(Console& console) : console_(console) {
  console.Lineweir.SetStateTimer.on_timer = [this] { SetStateTimer_Timer(); };
}

void ProfileWindow::SetStateTimer_Timer() {
  guard(console_, "Lineweir_SetStateTimer_Timer", [&] {
    MainForm& form = console_.Lineweir;
    if (!form.visible) return;
    form.SetStateTimer.enabled = false;
    form.window_state = SetStateTo;
    if (console_.program.GroupNumber == SetStateMessGroup && form.window_state == window_normal) {
      form.height = SetStateToHeight;
      form.width = SetStateToWidth;
    }
  });
}

}  // namespace lineweir

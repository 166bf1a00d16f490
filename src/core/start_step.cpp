#include "core/start_step.h"

#include "state/console_state.h"
#include "state/window_caption.h"

namespace lineweir {

void react_to_start_failure(ConsoleState& state, const Failure& failure) {
  switch (failure.number()) {
    case failure_number::port_not_open:
      report_failure(state.trace, "Lineweir_Form_Load", failure);
      return state.messages.ShowMessage("This Com Port is not available at this time!");
    case failure_number::socket_wrong_state:
      return state.messages.ShowMessage("Lineweir is not currently connected to a server.");
    default:
      return report_failure(state.trace, "Lineweir_Form_Load", failure);
  }
}

void renew_start_caption(ConsoleState& state) {
  MainForm& form = state.Lineweir;
  form.caption = window_caption(state, form.StudioMode.checked);
}

}  // namespace lineweir

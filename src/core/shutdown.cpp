#include "core/shutdown.h"

#include "boxlink/serial_port_control.h"
#include "callerdata/caller_data.h"
#include "clocks/show_plan_store.h"
#include "core/settings.h"
#include "link/links.h"
#include "serverlink/user_profile.h"
#include "state/console_state.h"
#include "state/guard.h"
#include "state/wire.h"

namespace lineweir {
namespace {

constexpr auto unload_handler = "Lineweir_Form_Unload";

}  // namespace

Shutdown::Shutdown(ConsoleState& state, const Links& links, ShowPlanStore& show_plan,
                   CallerDataEntry& caller_data, SerialPortControl& port, UserProfile& user_profile,
                   Settings& settings)
    : state_(state),
      links_(links),
      show_plan_(show_plan),
      caller_data_(caller_data),
      port_(port),
      user_profile_(user_profile),
      settings_(settings) {
  wire(state.Lineweir.on_unload, state_.trace, unload_handler, [this] { Form_Unload(); });
  wire(state.Lineweir.ExitMenu.on_click, state_.trace, "Lineweir_ExitMenu_Click",
       [this] { ExitMenu_Click(); });
}

void Shutdown::ExitMenu_Click() { state_.Lineweir.close(); }

void Shutdown::Form_Unload() {
  guard(state_.trace, unload_handler, [&] {
    MainForm& form = state_.Lineweir;
    if (form.window_state == window_minimised) form.window_state = window_normal;
    show_plan_.close();
    caller_data_.keep_draft();
    // A console that has lost its server must not overwrite what it knows.
    if (form.Shape1.fill_color == color_green) leave();
  });
  close_everything();
}

void Shutdown::leave() {
  settings_.save_at_end();
  links_.in_use().leave();
  user_profile_.SendUserProfile("");
  state_.services.loop.run_pending();
}

void Shutdown::close_everything() {
  guard(state_.trace, unload_handler, [&] {
    port_.close();
    state_.services.comm2.close();
    state_.services.winsock1.close();
  });
  if (state_.services.end_program) state_.services.end_program();
}

}  // namespace lineweir

#include "core/shutdown.h"

#include "core/console.h"
#include "core/guard.h"
#include "serverlink/user_profile.h"

namespace lineweir {

Shutdown::Shutdown(Console& console) : console_(console) {
  console.Lineweir.on_unload = [this] { Form_Unload(); };
  console.Lineweir.ExitMenu.on_click = [this] { ExitMenu_Click(); };
}

void Shutdown::ExitMenu_Click() {
  guard(console_, "Lineweir_ExitMenu_Click", [&] { console_.Lineweir.unload(); });
}

void Shutdown::Form_Unload() {
  guard(console_, "Lineweir_Form_Unload", [&] {
    MainForm& form = console_.Lineweir;
    if (form.window_state == window_minimised) form.window_state = window_normal;
    console_.show_plan.close();
    console_.caller_data.keep_draft();
    // A console that has lost its server must not overwrite what it knows.
    if (form.Shape1.fill_color == color_green) leave();
  });
  close_everything();
}

void Shutdown::leave() {
  console_.settings.save_at_end();
  if (console_.Lineweir.NetworkConnectionOption.checked) {
    console_.remote_session.NetworkDisconnect();
  }
  if (!console_.Lineweir.WinsockMenu.checked) return;
  console_.server.send(console_.server.packet(ClientCommand::CmdLeaveGroup));
  send_user_profile(console_, "");
  console_.services.loop.run_pending();
}

void Shutdown::close_everything() {
  guard(console_, "Lineweir_Form_Unload", [&] {
    console_.port.close();
    console_.services.comm2.close();
    console_.services.winsock1.close();
  });
  if (console_.services.end_program) console_.services.end_program();
}

}  // namespace lineweir

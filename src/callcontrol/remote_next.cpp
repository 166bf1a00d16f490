#include "callcontrol/remote_next.h"

#include "callcontrol/command_frame.h"
#include "core/console.h"
#include "core/guard.h"

namespace lineweir {
namespace {

constexpr std::string_view on_word = "X";
constexpr std::string_view off_word = "R";

}  // namespace

RemoteNextControl::RemoteNextControl(Console& console) : console_(console) {
  console.Lineweir.RemoteNext.on_click = [this] { RemoteNext_Click(); };
  console.Lineweir.RemoteNextTimer.on_timer = [this] { RemoteNextTimer_Timer(); };
}

void RemoteNextControl::RemoteNext_Click() {
  guard(console_, "Lineweir_RemoteNext_Click", [&] {
    MainForm& form = console_.Lineweir;
    const bool on = !form.RemoteNext.checked;
    form.RemoteNext.checked = on;
    console_.phone.PhoneCommand(on ? on_word : off_word, bank_none);
    form.RemoteNextTimer.enabled = on;
  });
}

void RemoteNextControl::RemoteNextTimer_Timer() {
  guard(console_, "Lineweir_RemoteNextTimer_Timer",
        [&] { console_.phone.PhoneCommand(on_word, bank_none); });
}

}  // namespace lineweir

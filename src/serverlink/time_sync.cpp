#include "serverlink/time_sync.h"

#include "state/console_state.h"
#include "state/guard.h"

namespace lineweir {

TimeSync::TimeSync(ConsoleState& state) : state_(state) {
  state.Lineweir.SyncTimeMenu.on_click = [this] { SyncTimeMenu_Click(); };
}

void TimeSync::SyncTimeMenu_Click() {
  guard(state_.trace, "Lineweir_SyncTimeMenu_Click", [&] {
    MenuItem& item = state_.Lineweir.SyncTimeMenu;
    item.checked = !item.checked;
  });
}

}  // namespace lineweir

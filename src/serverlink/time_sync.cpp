#include "serverlink/time_sync.h"

#include "state/console_state.h"
#include "state/wire.h"

namespace lineweir {

TimeSync::TimeSync(ConsoleState& state) : state_(state) {
  wire(state.Lineweir.SyncTimeMenu.on_click, state_.trace, "Lineweir_SyncTimeMenu_Click",
       [this] { SyncTimeMenu_Click(); });
}

void TimeSync::SyncTimeMenu_Click() {
  MenuItem& item = state_.Lineweir.SyncTimeMenu;
  item.checked = !item.checked;
}

}  // namespace lineweir

#include "serverlink/time_sync.h"

#include "core/console.h"
#include "core/guard.h"

namespace lineweir {

TimeSync::TimeSync(Console& console) : console_(console) {
  console.Lineweir.SyncTimeMenu.on_click = [this] { SyncTimeMenu_Click(); };
}

void TimeSync::SyncTimeMenu_Click() {
  guard(console_, "Lineweir_SyncTimeMenu_Click", [&] {
    MenuItem& item = console_.Lineweir.SyncTimeMenu;
    item.checked = !item.checked;
  });
}

}  // namespace lineweir

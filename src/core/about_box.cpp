#include "core/about_box.h"

#include "state/console_state.h"
#include "state/wire.h"

namespace lineweir {

void wire_about_box(ConsoleState& state) {
  AboutForm& box = state.AboutBox;
  for (Event<void()>* leave : {&box.on_click, &box.on_lost_focus, &box.Label1.on_click,
                               &box.Label2.on_click, &box.Label3.on_click}) {
    wire(*leave, state.trace, "AboutBox_Click", [&box] { box.unload(); });
  }
  wire(state.Lineweir.AboutLineweir.on_click, state.trace, "Lineweir_AboutLineweir_Click",
       [&state] { state.AboutBox.show(); });
}

}  // namespace lineweir

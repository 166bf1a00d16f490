#include "core/about_box.h"

#include "state/console_state.h"
#include "state/guard.h"

namespace lineweir {

void wire_about_box(ConsoleState& state) {
  AboutForm& box = state.AboutBox;
  const auto close = [&state] {
    guard(state.trace, "AboutBox_Click", [&] { state.AboutBox.unload(); });
  };
  box.on_click = close;
  box.on_lost_focus = close;
  for (Label* label : {&box.Label1, &box.Label2, &box.Label3}) label->on_click = close;

  state.Lineweir.AboutLineweir.on_click = [&state] {
    guard(state.trace, "Lineweir_AboutLineweir_Click", [&] { state.AboutBox.show(); });
  };
}

}  // namespace lineweir

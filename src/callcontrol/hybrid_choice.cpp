#include "callcontrol/hybrid_choice.h"

#include "callcontrol/modes.h"
#include "screen/button_panel.h"
#include "state/console_state.h"
#include "state/wire.h"

namespace lineweir {

HybridChoice::HybridChoice(ConsoleState& state, Modes& modes, ButtonPanel& panel)
    : state_(state), modes_(modes), panel_(panel) {
  state.DisplayOptionForm.HybridCheck.wire_each([this](CheckBox& box) {
    wire(box.on_click, state_.trace, "DisplayOptionForm_HybridCheck_Click",
         [this, index = box.index()] { HybridCheck_Click(index); });
  });
}

void HybridChoice::HybridCheck_Click(int Index) {
  const bool on = state_.DisplayOptionForm.HybridCheck(Index).value == 1;
  const bool main = Index == 0;
  (main ? state_.program.MainHybridOn : state_.program.ConfHybridOn) = on;
  if (state_.Lineweir.StudioMode.checked) {
    panel_.follow_hybrid(main ? Hybrid::Main : Hybrid::Conference, on);
  }
  modes_.CheckPassiveState();
}

}  // namespace lineweir

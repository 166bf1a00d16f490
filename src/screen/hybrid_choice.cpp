#include "screen/hybrid_choice.h"

#include "core/console.h"
#include "core/guard.h"

namespace lineweir {

HybridChoice::HybridChoice(Console& console) : console_(console) {
  console.DisplayOptionForm.HybridCheck.wire([this](CheckBox& box) {
    box.on_click = [this, index = box.index()] { HybridCheck_Click(index); };
  });
}

void HybridChoice::HybridCheck_Click(int Index) {
  guard(console_, "DisplayOptionForm_HybridCheck_Click", [&] {
    const bool on = console_.DisplayOptionForm.HybridCheck(Index).value == 1;
    const bool main = Index == 0;
    (main ? console_.program.MainHybridOn : console_.program.ConfHybridOn) = on;
    if (console_.Lineweir.StudioMode.checked) {
      console_.panel.follow_hybrid(main ? Hybrid::Main : Hybrid::Conference, on);
    }
    console_.modes.CheckPassiveState();
  });
}

}  // namespace lineweir

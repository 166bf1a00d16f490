#include "screen/band.h"

#include "screen/panel_layout.h"
#include "state/console_state.h"

namespace lineweir {

Band::Band(ConsoleState& state) : FormWatch(state.Lineweir), state_(state) {}

void Band::changed(Element& element, PropertyId property) {
  if (property != PropertyId::Visible && property != PropertyId::Caption) return;
  MainForm& form = state_.Lineweir;
  const bool in_band = &element == &form.ServerSilence || &element == &form.LogWaiting ||
                       element.name() == form.CallerNote.name();
  if (in_band) lay_out_band(form, state_.program.VisibleLines, state_.scale);
}

}  // namespace lineweir

#include "screen/blink.h"

#include "forms/picture_names.h"
#include "screen/blinking.h"
#include "screen/row_display.h"
#include "state/console_state.h"
#include "state/guard.h"
#include "state/wire.h"

namespace lineweir {
namespace {

constexpr auto timer_handler = "Lineweir_Timer5_Timer";
constexpr int light_interval = 400;
constexpr int dark_interval = 100;

}  // namespace

Blink::Blink(ConsoleState& state, RowDisplay& rows) : state_(state), rows_(rows) {
  wire(state.Lineweir.Timer5.on_timer, state_.trace, timer_handler, [this] { Timer5_Timer(); });
}

void Blink::Timer5_Timer() {
  Timer& timer = state_.Lineweir.Timer5;
  timer.enabled = false;
  guard(state_.trace, timer_handler, [&] {
    if (timer.interval == light_interval) {
      timer.interval = dark_interval;
      dark_phase();
    } else {
      timer.interval = light_interval;
      light_phase();
    }
  });
  timer.enabled = true;
}

void Blink::dark_phase() {
  for (int line = 0; line < state_.lines.LineCount; ++line) {
    const char letter = state_.lines.StatusLetter(line);
    if (blinking_of(letter) == Blinking::Waiting) rows_.HybridPictureSet(line, 0, 0);
    restore_air_text(line);
  }
}

void Blink::light_phase() {
  for (int line = 0; line < state_.lines.LineCount; ++line) {
    const char letter = state_.lines.StatusLetter(line);
    if (blinking_of(letter) == Blinking::Ringing) {
      const Picture& icon = state_.Lineweir.CIcon1(line);
      const int color = icon.visible && icon.picture == pictures::YellowIcon ? 0 : 3;
      rows_.HybridPictureSet(line, color, color);
    } else if (blinking_of(letter) == Blinking::Waiting) {
      const LetterLook& look = *look_of(letter);
      rows_.HybridPictureSet(line, look.icon1, look.icon2);
    }
    restore_air_text(line);
  }
}

void Blink::restore_air_text(int line) {
  if (state_.Lineweir.DataRow(line).picture != pictures::DataRowRed) return;
  // The words were taken away, and the pass that is due says who is on air still.
  if (state_.lines.FreshConnect && state_.Lineweir.Timer4.enabled) return;
  const char letter = state_.lines.StatusLetter(line);
  state_.Lineweir.LineStatus(line).caption = is_locked_on_air(letter) ? locked_text : on_air_text;
}

}  // namespace lineweir

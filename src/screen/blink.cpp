#include "screen/blink.h"

#include "core/console.h"
#include "core/guard.h"
#include "screen/pictures.h"

namespace lineweir {
namespace {

constexpr int light_interval = 400;
constexpr int dark_interval = 100;

}  // namespace

Blink::Blink(Console& console) : console_(console) {
  console.Lineweir.Timer5.on_timer = [this] { Timer5_Timer(); };
}

void Blink::Timer5_Timer() {
  Timer& timer = console_.Lineweir.Timer5;
  timer.enabled = false;
  guard(console_, "Lineweir_Timer5_Timer", [&] {
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
  for (int line = 0; line < console_.lines.LineCount; ++line) {
    const char letter = console_.lines.StatusLetter(line);
    if (letter == 'H' || letter == 'S') console_.rows.HybridPictureSet(line, 0, 0);
    restore_air_text(line);
  }
}

void Blink::light_phase() {
  for (int line = 0; line < console_.lines.LineCount; ++line) {
    const char letter = console_.lines.StatusLetter(line);
    if (letter == 'R') {
      const Picture& icon = console_.Lineweir.CIcon1(line);
      const int color = icon.visible && icon.picture == pictures::YellowIcon ? 0 : 3;
      console_.rows.HybridPictureSet(line, color, color);
    } else if (letter == 'H' || letter == 'S') {
      const LetterLook& look = *look_of(letter);
      console_.rows.HybridPictureSet(line, look.icon1, look.icon2);
    }
    restore_air_text(line);
  }
}

void Blink::restore_air_text(int line) {
  if (console_.Lineweir.DataRow(line).picture != pictures::DataRowRed) return;
  const char letter = console_.lines.StatusLetter(line);
  console_.Lineweir.LineStatus(line).caption = letter == 'L' || letter == 'K' ? "Locked" : "On Air";
}

}  // namespace lineweir

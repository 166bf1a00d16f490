#include "seat/simulated_host.h"

#include "core/console.h"
#include "lines/status_letters.h"
#include "seat/fingers.h"

namespace lineweir::seat {
namespace {

using namespace std::chrono_literals;
using Milliseconds = SimulatedPerson::Milliseconds;

constexpr std::string_view letters_of_hybrid_1 = "NL";
constexpr std::string_view letters_of_hybrid_2 = "CK";
constexpr Milliseconds hand = 900ms;
constexpr Milliseconds first_patience = 500ms;
// A person at another console has this long to take the next caller.
constexpr Milliseconds patience = 12s;
constexpr Milliseconds time_on_air = 75s;

}  // namespace

SimulatedHost::SimulatedHost(Console& console, std::uint64_t seed)
    : console_(console), dice_(seed), hybrids_{{{letters_of_hybrid_1}, {letters_of_hybrid_2}}} {}

void SimulatedHost::sit_down() { console_.Lineweir.StudioMode.on_click(); }

void SimulatedHost::look(Milliseconds now) {
  for (Hybrid& hybrid : hybrids_) look_at(hybrid, now);
}

void SimulatedHost::look_at(Hybrid& hybrid, Milliseconds now) {
  const bool is_first = &hybrid == &hybrids_.front();
  MainForm& form = console_.Lineweir;
  const int line = line_on(hybrid);
  if (line >= 0) {
    hybrid.free_since = now;
    if (!hybrid.was_used) hybrid.drop_at = now + dice_.around(time_on_air);
    hybrid.was_used = true;
    if (line == hybrid.own_line && now >= hybrid.drop_at && now >= next_act_) {
      click(console_, form, is_first ? form.Drop1 : form.Drop2);
      hybrid.own_line = -1;
      next_act_ = now + hand;
    }
    return;
  }
  if (hybrid.free_since.count() == 0) hybrid.free_since = now;
  const Milliseconds waits = hybrid.was_used ? patience : first_patience;
  if (now < next_act_ || now - hybrid.free_since < waits || !somebody_is_ready()) return;
  const int next = console_.lines.TheNextCall;
  if (!click(console_, form, is_first ? form.NextButton : form.NextToConfButton)) return;
  hybrid.own_line = next;
  hybrid.drop_at = now + dice_.around(time_on_air);
  hybrid.free_since = now;
  next_act_ = now + hand;
}

int SimulatedHost::line_on(const Hybrid& hybrid) const {
  for (int line = 0; line < console_.lines.LineCount; ++line) {
    const char letter = console_.lines.StatusLetter(line);
    if (hybrid.letters.find(letter) != std::string_view::npos) return line;
  }
  return -1;
}

bool SimulatedHost::somebody_is_ready() const {
  for (int line = 0; line < console_.lines.LineCount; ++line) {
    if (console_.lines.StatusLetter(line) == ready_letter) return true;
  }
  return false;
}

}  // namespace lineweir::seat

#include "boxlink/line_events.h"

#include "boxlink/line_rules.h"
#include "boxlink/line_steps.h"
#include "callcontrol/socket_trap.h"
#include "core/console.h"
#include "core/guard.h"
#include "core/text.h"

namespace lineweir {
namespace {

constexpr std::string_view handler = "Lineweir_Timer4_Timer";
constexpr std::size_t item_length = 3;
// Equipment whose ready callers are held ones with data.
constexpr int holding_equipment = 2;
// Behind the line's number, its status and its time.
constexpr std::size_t first_data_column = 3;
constexpr int first_printing_code = 32;

}  // namespace

LineEvents::LineEvents(Console& console) : console_(console) {
  console.Lineweir.Timer4.on_timer = [this] { Timer4_Timer(); };
}

void LineEvents::apply_soon(std::string_view status_text) {
  TheStatusText = status_text;
  console_.Lineweir.Timer4.enabled = true;
}

void LineEvents::Timer4_Timer() {
  guard(console_, handler, [&] {
    console_.Lineweir.Timer4.enabled = false;
    TheStatusText = std::string(trimmed(TheStatusText));
    LineTable& lines = console_.lines;
    // A step that waits for its next try lets events run, and these may change the number of lines.
    for (int line = 0; line < lines.LineCount; ++line) {
      const char letter = reported_letter(line);
      if (letter == '\0') continue;
      const char old_letter = lines.StatusLetter(line);
      if (letter != old_letter) {
        if (ring_held_back(line, letter)) continue;
        process_change(line, letter, old_letter);
        if (line >= lines.LineCount) break;
      }
      if (letter != 'F') lines.StatusLetter(line) = letter;
      lines.RingConfirm.at(static_cast<std::size_t>(line)) = false;
    }
    lines.FreshConnect = false;
    console_.caller_data.lines_changed();
  });
}

char LineEvents::reported_letter(int line) const {
  const std::size_t place = static_cast<std::size_t>(line) * item_length;
  if (place >= TheStatusText.size()) return '\0';
  const char letter = TheStatusText[place];
  return letter == 'H' && counts_as_screened(line) ? 'S' : letter;
}

bool LineEvents::counts_as_screened(int line) const {
  if (console_.lines.ThePhoneFlag != holding_equipment) return false;
  const std::vector<int>& shown = console_.display.ColumnsInUse;
  for (std::size_t place = first_data_column; place < shown.size(); ++place) {
    const std::string& text = console_.Lineweir.column_labels(shown[place])(line).caption;
    if (!trimmed(text).empty() && code_of(text.front()) >= first_printing_code) return true;
  }
  return false;
}

bool LineEvents::ring_held_back(int line, char letter) {
  LineTable& lines = console_.lines;
  const char old_letter = lines.StatusLetter(line);
  const bool after_hold = old_letter == 'H' || old_letter == 'S';
  if (letter != 'R' || !after_hold || lines.ThePhoneFlag != holding_equipment) return false;
  bool& confirmed = lines.RingConfirm.at(static_cast<std::size_t>(line));
  if (confirmed) return false;
  confirmed = true;
  return true;
}

void LineEvents::process_change(int line, char letter, char old_letter) {
  if (letter == 'F' && old_letter == ' ') return;
  const int equipment = console_.lines.ThePhoneFlag;
  const LineRule* rule = line_rule(server_rules, letter, equipment);
  if (rule == nullptr) rule = &other_letter_rule;
  const LineReport report{line, letter, old_letter,
                          reported_look(letter, equipment, console_.Lineweir.MitelPhone1.checked)};
  for (const LineStep step : rule->steps) {
    if (step == LineStep::None) break;
    socket_trap(console_, handler, [&] { console_.line_steps.run(step, report); });
  }
}

}  // namespace lineweir

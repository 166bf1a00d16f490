#include "serverlink/line_events.h"

#include <utility>

#include "base/text.h"
#include "boxlink/line_rules.h"
#include "boxlink/line_steps.h"
#include "callerdata/caller_data.h"
#include "lines/equipment_kinds.h"
#include "screen/display_options.h"
#include "state/console_state.h"
#include "state/socket_trap.h"
#include "state/wire.h"

namespace lineweir {
namespace {

constexpr auto events_handler = "Lineweir_Timer4_Timer";
constexpr int first_printing_code = 32;

}  // namespace

LineEvents::LineEvents(ConsoleState& state, DisplayOptions& display, CallerDataEntry& caller_data,
                       LineSteps& line_steps)
    : state_(state), display_(display), caller_data_(caller_data), line_steps_(line_steps) {
  wire(state.Lineweir.Timer4.on_timer, state_.trace, events_handler, [this] { Timer4_Timer(); });
}

void LineEvents::expect_free_lines() {
  TheStatusText = status_text_of_free_lines;
  told_ = false;
  untold_.set();
  unrestored_.reset();
}

void LineEvents::take(std::string_view status_text) {
  TheStatusText = status_text;
  told_ = true;
  untold_.reset();
}

void LineEvents::apply_soon(std::string_view status_text) {
  take(status_text);
  state_.Lineweir.Timer4.enabled = true;
}

void LineEvents::apply_item_soon(int line, std::string_view item) {
  const std::size_t place = static_cast<std::size_t>(line) * status_item_length;
  if (TheStatusText.size() < place + status_item_length)
    TheStatusText.resize(place + status_item_length, '\0');
  TheStatusText.replace(place, status_item_length, item);
  if (static_cast<std::size_t>(line) < untold_.size())
    untold_.reset(static_cast<std::size_t>(line));
  state_.Lineweir.Timer4.enabled = true;
}

void LineEvents::apply_change_of(int line) {
  const bool exists = line >= 0 && line < state_.lines.LineCount;
  if (!exists || !state_.Lineweir.Timer4.enabled) return;
  const char letter = reported_letter(line);
  if (letter == '\0' || letter == state_.lines.StatusLetter(line) || is_untold(line)) return;
  if (a_step_waits()) return;
  // That is no pass, and a ring that follows hold is to be seen in two.
  if (!is_ring_after_hold(line, letter)) apply_letter(line, letter);
}

void LineEvents::Timer4_Timer() {
  // The pass that it belongs to goes on behind it.
  if (a_step_waits()) return;
  state_.Lineweir.Timer4.enabled = false;
  LineTable& lines = state_.lines;
  if (untold_.all() && TheStatusText == status_text_of_free_lines) return end_restoring();
  TheStatusText = std::string(trimmed(TheStatusText));
  // A step that waits for its next try lets events run, and these may change the number of lines.
  for (int line = 0; line < lines.LineCount; ++line) {
    const char letter = reported_letter(line);
    if (letter != '\0' && !is_untold(line)) apply_letter(line, letter);
  }
  end_restoring();
  if (told_) caller_data_.lines_told(reported_lines());
  caller_data_.lines_changed();
}

bool LineEvents::a_step_waits() const { return state_.retrying.contains(events_handler); }

void LineEvents::end_restoring() {
  LineTable& lines = state_.lines;
  if (!std::exchange(lines.FreshConnect, false)) return;
  for (int line = 0; line < lines.LineCount; ++line) {
    const auto place = static_cast<std::size_t>(line);
    const bool has_call = lines.StatusLetter(line) != idle_letter || !lines.ClockBase(line).empty();
    if (untold_[place] && has_call) unrestored_.set(place);
  }
}

void LineEvents::apply_letter(int line, char letter) {
  const auto place = static_cast<std::size_t>(line);
  const bool restores = place < unrestored_.size() && unrestored_[place];
  if (!restores) return apply_report(line, letter);
  unrestored_.reset(place);
  // The row may have told its former state again since the times came.
  state_.Lineweir.LineStatus(line).caption = "";
  const bool fresh = std::exchange(state_.lines.FreshConnect, true);
  apply_report(line, letter);
  state_.lines.FreshConnect = fresh;
}

void LineEvents::apply_report(int line, char letter) {
  LineTable& lines = state_.lines;
  const char old_letter = lines.StatusLetter(line);
  const bool lacks_words =
      lines.FreshConnect && state_.Lineweir.LineStatus(line).caption.get().empty();
  if (letter != old_letter) {
    if (ring_held_back(line, letter)) {
      if (lacks_words) show_words_again(line, old_letter);
      return;
    }
    process_change(line, letter, old_letter);
    if (line >= lines.LineCount) return;
  } else if (lacks_words) {
    show_words_again(line, letter);
  }
  if (letter != 'F') lines.StatusLetter(line) = letter;
  lines.RingConfirm.at(static_cast<std::size_t>(line)) = false;
}

std::set<int> LineEvents::reported_lines() const {
  std::set<int> lines;
  for (int line = 0; line < state_.lines.LineCount; ++line) {
    if (reported_letter(line) != '\0') lines.insert(line);
  }
  return lines;
}

char LineEvents::reported_letter(int line) const {
  const std::size_t place = static_cast<std::size_t>(line) * status_item_length;
  if (place >= TheStatusText.size()) return '\0';
  const char letter = TheStatusText[place];
  return letter == held_letter && counts_as_screened(line) ? ready_letter : letter;
}

bool LineEvents::counts_as_screened(int line) const {
  if (!ready_is_held_with_data(state_.lines.ThePhoneFlag)) return false;
  const std::vector<int>& shown = display_.ColumnsInUse;
  for (std::size_t place = first_caller_column; place < shown.size(); ++place) {
    const std::string& text = state_.Lineweir.column_labels(shown[place])(line).caption;
    if (!trimmed(text).empty() && code_of(text.front()) >= first_printing_code) return true;
  }
  return false;
}

bool LineEvents::is_untold(int line) const {
  const auto place = static_cast<std::size_t>(line);
  return place < untold_.size() && untold_[place] && reported_letter(line) == 'F';
}

bool LineEvents::is_ring_after_hold(int line, char letter) const {
  const char old_letter = state_.lines.StatusLetter(line);
  const bool after_hold = old_letter == held_letter || old_letter == ready_letter;
  return letter == ringing_letter && after_hold &&
         ready_is_held_with_data(state_.lines.ThePhoneFlag);
}

bool LineEvents::ring_held_back(int line, char letter) {
  if (!is_ring_after_hold(line, letter)) return false;
  bool& confirmed = state_.lines.RingConfirm.at(static_cast<std::size_t>(line));
  if (confirmed) return false;
  confirmed = true;
  return true;
}

void LineEvents::process_change(int line, char letter, char old_letter) {
  if (letter == 'F' && old_letter == ' ') return free_busy_line(line);
  carry_out(rule_of(letter), report_of(line, letter, old_letter));
}

const LineRule& LineEvents::rule_of(char letter) const {
  const LineRule* const rule = line_rule(server_rules, letter, state_.lines.ThePhoneFlag);
  return rule == nullptr ? other_letter_rule : *rule;
}

void LineEvents::carry_out(const LineRule& rule, const LineReport& report) {
  for (const RuleStep& step : rule.steps) {
    if (step.step == LineStep::None) break;
    socket_trap(state_, events_handler, [&] { line_steps_.run(step, report); });
  }
}

void LineEvents::leave_group() {
  expect_free_lines();
  for (int line = 0; line < state_.lines.LineCount; ++line) {
    carry_out(group_left_rule,
              report_of(line, group_left_rule.letter, state_.lines.StatusLetter(line)));
  }
  state_.lines.RingConfirm.fill(false);
}

// The box has made it busy, and is no longer the one that tells of it.
void LineEvents::free_busy_line(int line) {
  if (state_.lines.SetBusy(line) == 0) return;
  const LineReport report = report_of(line, 'F', ' ');
  for (const LineStep step : {LineStep::ForgetLetter, LineStep::BlankRow, LineStep::ShowRow}) {
    line_steps_.run(RuleStep(step), report);
  }
}

// The times of the calls, which come with a session, have blanked them.
void LineEvents::show_words_again(int line, char letter) {
  const LineReport report = report_of(line, letter, letter);
  for (const RuleStep& step : rule_of(letter).steps) {
    const bool shows = step.step == LineStep::ShowText || step.step == LineStep::ShowRowOrNext;
    if (shows) line_steps_.run(step, report);
  }
  const bool has_other_call =
      state_.lines.ClockRunning(line) != 0 && state_.lines.ClockBase(line).empty();
  if (has_other_call) line_steps_.run(RuleStep(LineStep::BaseNow), report);
}

LineReport LineEvents::report_of(int line, char letter, char old_letter) const {
  const int equipment = state_.lines.ThePhoneFlag;
  LetterLook look = reported_look(
      letter, handset_is_on_conference(equipment, state_.Lineweir.MitelPhone1.checked));
  // A blank that is told of a line is no free line, but a letter that nobody knows.
  if (letter == ' ') look = reported_look('\0', false);
  return {events_handler, line, letter, old_letter, look};
}

}  // namespace lineweir

#include "callcontrol/next_caller.h"

#include <cstddef>
#include <string>
#include <vector>

#include "callcontrol/line_commands.h"
#include "callcontrol/phone_command.h"
#include "callcontrol/row_words.h"
#include "callerdata/caller_data.h"
#include "clocks/clock_engine.h"
#include "lines/equipment_kinds.h"
#include "lines/status_letters.h"
#include "link/links.h"
#include "screen/row_display.h"
#include "state/console_state.h"
#include "state/guard.h"
#include "state/wire.h"

namespace lineweir {
namespace {

constexpr auto next_handler = "Lineweir_NextButton_Click";
constexpr auto next_to_conf_handler = "Lineweir_NextToConf_Click";

}  // namespace

NextCaller::NextCaller(ConsoleState& state, const Links& links, PhoneCommands& phone,
                       RowDisplay& rows, CallerDataEntry& caller_data, ClockEngine& clocks)
    : state_(state), links_(links), phone_(phone), rows_(rows), caller_data_(caller_data) {
  wire(state.Lineweir.NextButton.on_click, state_.trace, next_handler,
       [this] { NextButton_Click(); });
  wire(state.Lineweir.NextToConfButton.on_click, state_.trace, next_to_conf_handler,
       [this] { NextToConf_Click(); });
  clocks.after_tick = [this] { FindNext(); };
}

void NextCaller::FindNext() {
  constexpr std::string_view handler = "Lineweir_FindNext";
  guard(state_.trace, handler, [&] {
    const LineTable& lines = state_.lines;
    if (lines.NextCallSet || server_decides(lines.ThePhoneFlag)) return;
    const int found = longest_wait(waits(), ready_letter);
    if (found == lines.TheNextCall) return;
    if (lines.TheNextCall != no_line) restore_former_row(lines.TheNextCall);
    state_.lines.TheNextCall = found;
    links_.in_use().next_call(handler, found);
    if (found == no_line) return;
    rows_.show_next(found);
    rows_.DrawMark(found);
  });
}

void NextCaller::NextButton_Click() {
  if (server_decides(state_.lines.ThePhoneFlag)) {
    ask_server(next_handler, false);
  } else if (state_.Lineweir.StudioMode.checked) {
    put_next_on_air('N', bank_main);
  } else {
    mark_ready();
  }
}

void NextCaller::NextToConf_Click() {
  if (server_decides(state_.lines.ThePhoneFlag)) {
    ask_server(next_to_conf_handler, true);
  } else if (state_.Lineweir.StudioMode.checked) {
    put_next_on_air('C', bank_conference);
  } else {
    answer_next();
  }
}

void NextCaller::pick_by_hand(int line) {
  constexpr std::string_view handler = "Lineweir_OnHybrid2_Click";
  if (phone_.refuse_locked_key()) return;
  StudioLink& link = links_.in_use();
  switch (link.hand_pick()) {
    case HandPick::MovedHere:
      return move_to(line);
    case HandPick::PresentChoiceTold:
      return link.next_call(handler, state_.lines.TheNextCall);
    case HandPick::RowWord:
      if (const auto command = conference_row_word(state_, line)) {
        phone_.PhoneCommand(command->word, command->bank);
      }
      return;
    case HandPick::ServerTold: {
      const char letter = state_.lines.StatusLetter(line);
      if (letter != 'F' && letter != ' ') link.next_call(handler, line);
      return;
    }
  }
}

void NextCaller::pin(int line) {
  if (line == state_.lines.TheNextCall || line < 0 || line >= state_.lines.LineCount) return;
  move_to(line);
}

void NextCaller::ReturnNextCall(int TheNextCall, int TheMessageGroupVal) {
  guard(state_.trace, "CBClientClass_ReturnNextCall", [&] {
    if (TheMessageGroupVal == state_.program.GroupNumber) pin(TheNextCall - 1);
  });
}

const std::vector<LineWait>& NextCaller::waits() const {
  waits_.clear();
  for (int line = 0; line < state_.lines.LineCount; ++line) {
    waits_.push_back(
        {state_.lines.StatusLetter(line), state_.Lineweir.LineTime(line).caption.get()});
  }
  return waits_;
}

void NextCaller::move_to(int line) {
  LineTable& lines = state_.lines;
  if (lines.TheNextCall != no_line) unmark(lines.TheNextCall);
  lines.TheNextCall = line;
  lines.NextCallSet = true;
  rows_.show_next(line);
  rows_.DrawMark(line);
}

void NextCaller::restore_former_row(int line) {
  const char letter = state_.lines.StatusLetter(line);
  rows_.set_row_color(line, is_on_air(letter) ? RowColor::Red : RowColor::White);
  rows_.SetStatusText(line);
  rows_.DrawMark(line);
}

void NextCaller::unmark(int line) {
  rows_.set_row_color(line, RowColor::White);
  rows_.DrawMark(line);
  rows_.SetStatusText(line);
}

void NextCaller::ask_server(std::string_view handler, bool conference) {
  if (phone_.refuse_locked_key()) return;
  links_.deciding_server().next_action(handler, {state_.Lineweir.StudioMode.checked, conference});
}

bool NextCaller::at_handset(int line) const {
  if (line < 0 || line >= state_.lines.LineCount) return false;
  const Seat seat = seat_of(state_);
  const char letter = state_.lines.StatusLetter(line);
  return (letter == 'P' && seat.handset_1) || (letter == 'O' && seat.handset_2);
}

std::vector<int> NextCaller::lines_at_handset() const {
  std::vector<int> lines;
  for (int line = 0; line < state_.lines.LineCount; ++line) {
    if (at_handset(line)) lines.push_back(line);
  }
  return lines;
}

void NextCaller::mark_ready(int line) { phone_.PhoneCommand(numbered_word('S', line), bank_none); }

void NextCaller::mark_ready() {
  for (const int line : lines_at_handset()) mark_ready(line);
}

void NextCaller::answer_next() {
  const int line = longest_wait(waits(), ringing_letter);
  if (line == no_line) return;
  const char letter = state_.Lineweir.MitelPhone1.checked ? 'P' : 'O';
  phone_.PhoneCommand(numbered_word(letter, line), bank_none);
  caller_data_.show_for_line(line);
}

std::optional<int> NextCaller::line_for_air() const {
  const int line = state_.lines.TheNextCall;
  if (line == no_line) return std::nullopt;
  const char letter = state_.lines.StatusLetter(line);
  if (!may_be_commanded(letter, state_.program.EmptyLineOverride)) return std::nullopt;
  return line;
}

void NextCaller::put_next_on_air(char word_letter, int bank) {
  if (const auto line = line_for_air()) {
    phone_.PhoneCommand(numbered_word(word_letter, *line), bank);
  }
}

bool NextCaller::NextButton_finds_work() const {
  if (server_decides(state_.lines.ThePhoneFlag)) return true;
  return state_.Lineweir.StudioMode.checked ? line_for_air().has_value()
                                            : !lines_at_handset().empty();
}

bool NextCaller::NextToConf_finds_work() const {
  if (server_decides(state_.lines.ThePhoneFlag)) return true;
  return state_.Lineweir.StudioMode.checked ? line_for_air().has_value()
                                            : longest_wait(waits(), ringing_letter) != no_line;
}

}  // namespace lineweir

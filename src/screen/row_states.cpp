#include "screen/row_states.h"

#include "base/text.h"
#include "lines/equipment_kinds.h"
#include "screen/strip_pictures.h"
#include "state/console_state.h"
#include "state/seat.h"

namespace lineweir {
namespace {

bool at_handset_of(const Seat& seat, char letter, int console_number) {
  if (seat.talent) return false;
  if (letter == 'P') return seat.handset_1;
  if (letter == 'O') return seat.handset_2;
  return server_decides(seat.equipment_kind) &&
         code_of(letter) == first_position_code + console_number;
}

bool is_position(char letter) {
  return letter == 'P' || letter == 'O' || code_of(letter) >= first_position_code;
}

bool waits(char letter) { return !is_empty(letter) && !is_on_air_or_locked(letter); }

}  // namespace

RowState row_state(char letter, RowColor strip, const Seat& seat, int console_number) {
  using enum RowState;
  if (strip == RowColor::Red) return is_locked_on_air(letter) ? LockedOnAir : OnAir;
  if (strip == RowColor::Green) return Next;
  if (letter == 'C' && handset_is_on_conference(seat.equipment_kind, seat.handset_1)) {
    return seat.talent ? AtOtherHandset : AtHandset;
  }
  if (is_on_air_or_locked(letter)) return is_locked_on_air(letter) ? LockedOnAir : OnAir;
  if (is_position(letter)) {
    return at_handset_of(seat, letter, console_number) ? AtHandset : AtOtherHandset;
  }
  switch (letter) {
    case idle_letter:
    case 'F':
      return Idle;
    case busy_letter:
      return SetBusy;
    case ringing_letter:
      return Ringing;
    case ready_letter:
      return Ready;
    case held_letter:
      return Held;
    case 'Y':
      return Locked;
    default:
      return Taken;
  }
}

RowStates::RowStates(ConsoleState& state) : state_(state), waits_since_(state.lines.LineCount) {
  state.lines.StatusLetter.on_change = [this](int line, char before) {
    letter_changed(line, before);
  };
}

RowStates::~RowStates() { state_.lines.StatusLetter.on_change = nullptr; }

RowState RowStates::of(int line) const {
  const LineTable& lines = state_.lines;
  if (line < 0 || line >= lines.LineCount) return RowState::Idle;
  const ControlArray<Picture>& strips = state_.Lineweir.DataRow;
  const auto strip =
      strips.loaded(line) ? color_of_strip(strips(line).picture.get()) : std::nullopt;
  const RowState state = row_state(lines.shown_letter(line), strip.value_or(RowColor::White),
                                   seat_of(state_), state_.program.ConsoleNumber);
  // A next caller who was taken and is ready again within one turn of the clock has a plain strip.
  const bool chosen = lines.TheNextCall == line && !state_.Lineweir.NextBarDisable.checked;
  return state == RowState::Ready && chosen ? RowState::Next : state;
}

RowState RowStates::of_letter(int line) const {
  const LineTable& lines = state_.lines;
  if (line < 0 || line >= lines.LineCount) return RowState::Idle;
  return row_state(lines.shown_letter(line), RowColor::White, seat_of(state_),
                   state_.program.ConsoleNumber);
}

std::optional<std::chrono::seconds> RowStates::waited(int line) const {
  if (line < 0 || line >= state_.lines.LineCount || !waits(state_.lines.StatusLetter(line)) ||
      line >= waits_since_.size()) {
    return std::nullopt;
  }
  return std::chrono::duration_cast<std::chrono::seconds>(state_.services.loop.now() -
                                                          waits_since_(line));
}

void RowStates::letter_changed(int line, char before) {
  if (line >= waits_since_.size()) waits_since_.resize(state_.lines.StatusLetter.size());
  if (waits(state_.lines.StatusLetter(line)) && !waits(before)) {
    waits_since_(line) = state_.services.loop.now();
  }
  if (on_change) on_change(line);
}

}  // namespace lineweir

#pragma once

#include <optional>

#include "screen/row_states.h"
#include "wire/caller_known.h"

namespace lineweir {

// What a row tells beside its texts.
struct RowLook {
  // By its strip, and by its line's letter alone: the next caller may be ringing, ready or held.
  RowState state = RowState::Idle;
  RowState letter_state = RowState::Idle;
  // Of a line that rings: dark for the moment between two blinks.
  bool dark = false;
  // Of a caller on hold: how long the caller has been waiting in all, in steps of the bar and in
  // whole minutes.
  struct Wait {
    int steps = 0;
    int minutes = 0;

    friend bool operator==(const Wait&, const Wait&) = default;
  };
  std::optional<Wait> wait;
  CallerFlag flag = CallerFlag::None;

  friend bool operator==(const RowLook&, const RowLook&) = default;
};

// The bar is full when the caller has waited as long as a host lets one wait.
inline constexpr int steps_of_wait = 45;

RowLook::Wait wait_of(std::chrono::seconds waited);

}  // namespace lineweir

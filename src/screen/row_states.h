#pragma once

#include <chrono>
#include <functional>
#include <optional>

#include "lines/line_table.h"
#include "lines/status_letters.h"
#include "platform/event_loop.h"

namespace lineweir {

struct ConsoleState;
struct Seat;

// What a row tells at a glance, from what can wait to what can't.
enum class RowState {
  Idle,
  SetBusy,
  // By other equipment.
  Taken,
  AtOtherHandset,
  AtHandset,
  Held,
  // Kept by a lock, and not on air.
  Locked,
  Ready,
  Ringing,
  Next,
  OnAir,
  LockedOnAir,
};
inline constexpr int row_state_count = 12;

// A row is red or green where its strip is: nothing else on it may say something different.
RowState row_state(char letter, RowColor strip, const Seat& seat, int console_number);

// How long a host lets a caller wait.
inline constexpr std::chrono::minutes patience{15};

// The states of the rows as they are seen, and since when their callers wait.
class RowStates {
 public:
  explicit RowStates(ConsoleState& state);
  ~RowStates();
  RowStates(const RowStates&) = delete;
  RowStates& operator=(const RowStates&) = delete;

  RowState of(int line) const;
  // The same by the line's letter alone: the next caller may be ringing, ready or held.
  RowState of_letter(int line) const;

  // How long the caller has been waiting in all: since the call came, or since it was last on air.
  // Nothing for a line that nobody waits on.
  std::optional<std::chrono::seconds> waited(int line) const;

  // Told of each line that has another letter.
  std::function<void(int line)> on_change;

 private:
  void letter_changed(int line, char before);

  ConsoleState& state_;
  LineArray<platform::Milliseconds> waits_since_;
};

}  // namespace lineweir

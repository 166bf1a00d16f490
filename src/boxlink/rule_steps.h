#pragma once

#include "lines/status_letters.h"

namespace lineweir {

// What a status report does to its line, step by step.
enum class LineStep {
  None,
  // The line isn't the next call any more: of both facts, or only the pin.
  ReleaseNextCall,
  UnpinNextCall,
  // The times of the call: it has been on hold, and on air, until now.
  CloseHold,
  CloseAir,
  // The call goes on air now.
  BeginAir,
  Log,
  // What record and row still say of the caller is nobody's from now on.
  ForgetCaller,
  // Where no call is logged: another one has come to the line.
  BeginCall,
  // The call goes on, but not on this console.
  LeaveCall,
  ClearRecord,
  ClearData,
  ClearTimes,
  StampHold,
  ClearHoldStamp,
  TellDataCleared,
  // The row's clock, and what it counts from.
  RunClock,
  StopClock,
  BlankTime,
  BaseNow,
  ForgetBase,
  // The row's texts: all behind the line's number, or those of the caller alone.
  BlankRow,
  BlankCaller,
  // The stored letter becomes the blank.
  ForgetLetter,
  // With automatic data entry: the caller data of a line that rang, or for the producer was held.
  OpenDataForm,
  Blink,
  ShowText,
  // Strip, marks and icons of the letter; the strip and text of the next call where it is that.
  ShowRow,
  ShowRowOrNext,
};

// When a step is done; where several are joined by |, when all of them hold.
enum class When : unsigned {
  Always = 0,
  // Not in the first pass over the lines after a connection was made, which restores the table
  // instead of reporting changes.
  NotFresh = 1,
  // By the letter that the line had.
  WasEmpty = 2,
  WasReady = 4,
  WasOnAir = 8,
  WasOnAirOrLocked = 16,
  // A call that comes back from a lock has been on air all the time.
  NotBackFromLock = 32,
  // Not where the clock has counted since the ring.
  NotCountingSinceRing = 64,
};

constexpr When operator|(When a, When b) {
  return static_cast<When>(static_cast<unsigned>(a) | static_cast<unsigned>(b));
}

// What a line was like before the report.
struct LineBefore {
  char letter;
  bool fresh;
  bool clock_has_base;
};

constexpr bool applies(When when, const LineBefore& before) {
  const auto fails = [when](When condition, bool holds) {
    return (static_cast<unsigned>(when) & static_cast<unsigned>(condition)) != 0 && !holds;
  };
  return !fails(When::NotFresh, !before.fresh) && !fails(When::WasEmpty, is_empty(before.letter)) &&
         !fails(When::WasReady, before.letter == ready_letter) &&
         !fails(When::WasOnAir, is_on_air(before.letter)) &&
         !fails(When::WasOnAirOrLocked, is_on_air_or_locked(before.letter)) &&
         !fails(When::NotBackFromLock, !is_locked_on_air(before.letter)) &&
         !fails(When::NotCountingSinceRing,
                before.letter != ringing_letter || !before.clock_has_base);
}

struct RuleStep {
  constexpr RuleStep() = default;
  // A step by itself is always done.
  constexpr RuleStep(LineStep always) : step(always) {}
  constexpr RuleStep(LineStep conditional, When condition) : step(conditional), when(condition) {}

  LineStep step = LineStep::None;
  When when = When::Always;
};

}  // namespace lineweir

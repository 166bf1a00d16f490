#pragma once

#include <array>

#include "lines/equipment_kinds.h"
#include "lines/status_letters.h"

namespace lineweir {

// What a status report does to its line, step by step. "Fresh" is the first pass over the lines
// after a connection was made: it restores the table instead of reporting changes.
enum class LineStep {
  None,
  // The line isn't the next call any more: of both facts, or only the pin.
  ReleaseNextCall,
  UnpinNextCall,
  // The times of the call, by the letter that the line had: on hold from S, on air from N and C,
  // from L and K too, from any letter.
  CloseHold,
  CloseAir,
  CloseAirOrLocked,
  CloseAirOfAny,
  // The call goes on air now; one that comes back from a lock has been there all the time.
  BeginAir,
  Log,
  // Where no call is logged: another one has come to a line that was idle.
  BeginCall,
  ClearRecord,
  ClearDataUnlessFresh,
  ClearTimes,
  StampHold,
  ClearHoldStamp,
  TellDataCleared,
  // The row's clock.
  RunClock,
  StopClock,
  BlankTime,
  // What the clock counts from: now; but not in a fresh pass; nor behind a lock; nor where it has
  // counted since the ring.
  BaseNow,
  BaseNowUnlessFresh,
  BaseOnAirUnlessFresh,
  BaseUnlessRungOrFresh,
  ForgetBase,
  // The row's texts: all behind the line's number, or those of the caller alone.
  BlankRow,
  BlankRowUnlessFresh,
  BlankCaller,
  BlankCallerUnlessFresh,
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

struct LineRule {
  char letter;
  unsigned kinds;
  std::array<LineStep, 13> steps;
};

// The two doors side by side. The box's reports come one by one; the letter is
// stored before the steps run, so that only F sees the letter that the line had: R and B close no
// times there, and P and O never open the data form, which goes by that letter. A letter that has
// no rule is stored and nothing else.
inline constexpr auto box_rules = [] {
  using enum LineStep;
  return std::to_array<LineRule>({
      {'F',
       any_kind,
       {UnpinNextCall, CloseHold, CloseAir, Log, ClearRecord, ClearHoldStamp, StopClock, BlankRow,
        ForgetLetter, ShowRow}},
      {'N', any_kind, {UnpinNextCall, BeginAir, RunClock, BaseNow, ShowText, ShowRow}},
      {'C', any_kind, {UnpinNextCall, BeginAir, RunClock, BaseNow, ShowText, ShowRow}},
      {'S', any_kind, {StampHold, CloseAirOfAny, RunClock, BaseNow, ShowText, ShowRow}},
      {'R',
       any_kind,
       {UnpinNextCall, Log, ClearRecord, ClearHoldStamp, RunClock, BaseNow, ShowText, BlankCaller,
        Blink, ShowRow}},
      {'E', any_kind, {Log, ClearRecord, ShowText, StopClock, BlankTime, ShowRow}},
      {'P', any_kind, {ShowText, StopClock, BlankTime, ShowRow}},
      {'O', any_kind, {ShowText, StopClock, BlankTime, ShowRow}},
      {'H', any_kind, {ShowText, StopClock, BlankTime, ShowRow}},
      // Not stored, so that the next report of B is a change again.
      {'B',
       any_kind,
       {ReleaseNextCall, Log, ClearDataUnlessFresh, ClearTimes, ClearHoldStamp, ForgetLetter,
        ShowText, StopClock, BlankTime, ForgetBase, ShowRow}},
  });
}();

// The server's reports come for all lines at once; the letter is stored behind the steps, unless it
// is F. A line that is idle stays as it is on F.
inline constexpr auto server_rules = [] {
  using enum LineStep;
  return std::to_array<LineRule>({
      {'F',
       any_kind,
       {ReleaseNextCall, CloseHold, CloseAirOrLocked, Log, ClearDataUnlessFresh, ClearTimes,
        ClearHoldStamp, StopClock, BlankRowUnlessFresh, ForgetLetter, ShowRow, ForgetBase}},
      {'N',
       any_kind,
       {ReleaseNextCall, BeginAir, RunClock, BaseOnAirUnlessFresh, ShowText, ShowRow}},
      {'C',
       any_kind,
       {ReleaseNextCall, BeginAir, RunClock, BaseOnAirUnlessFresh, ShowText, ShowRow}},
      {'L', any_kind, {RunClock, ShowText, ShowRow}},
      {'K', any_kind, {RunClock, ShowText, ShowRow}},
      {'S',
       any_kind,
       {StampHold, CloseAirOfAny, RunClock, BaseUnlessRungOrFresh, ShowText, ShowRowOrNext}},
      // Equipment of kind 2 tells a ring for a caller who comes back: the record stays.
      {'R',
       kind(2),
       {ReleaseNextCall, CloseHold, CloseAir, BeginCall, RunClock, BaseNowUnlessFresh, ShowText,
        Blink, ShowRow}},
      {'R',
       all_but_kind(2),
       {ReleaseNextCall, CloseHold, CloseAir, Log, ClearRecord, ClearHoldStamp, TellDataCleared,
        RunClock, BaseNowUnlessFresh, ShowText, BlankCallerUnlessFresh, Blink, ShowRow}},
      {'E', kind(2), {ShowText, OpenDataForm, RunClock, BlankTime, ShowRowOrNext}},
      {'E',
       all_but_kind(2),
       {ReleaseNextCall, Log, ClearDataUnlessFresh, ClearTimes, ShowText, StopClock, BlankTime,
        ForgetBase, ShowRow}},
      {'H',
       any_kind,
       {ShowText, StampHold, CloseAirOfAny, BaseUnlessRungOrFresh, RunClock, BlankTime,
        ShowRowOrNext}},
      {'P', any_kind, {ShowText, OpenDataForm, RunClock, BlankTime, ShowRowOrNext}},
      {'O', any_kind, {ShowText, OpenDataForm, RunClock, BlankTime, ShowRowOrNext}},
      {'Y', any_kind, {RunClock, BlankTime, ShowRowOrNext, ShowText}},
      {'B',
       any_kind,
       {ReleaseNextCall, CloseHold, CloseAir, Log, ClearDataUnlessFresh, ClearTimes, ClearHoldStamp,
        ShowText, StopClock, BlankTime, ForgetBase, ShowRow}},
  });
}();

// What the server's door does with every other letter.
inline constexpr LineRule other_letter_rule = {
    '\0',
    any_kind,
    {LineStep::ShowText, LineStep::OpenDataForm, LineStep::RunClock, LineStep::BlankTime,
     LineStep::ForgetBase, LineStep::ShowRowOrNext}};

// A rule for a letter that no table knows would show nothing.
template <class Rules>
constexpr bool all_letters_have_a_look(const Rules& rules) {
  for (const LineRule& rule : rules) {
    if (look_of(rule.letter) == nullptr) return false;
  }
  return true;
}
static_assert(all_letters_have_a_look(box_rules) && all_letters_have_a_look(server_rules));

// The rule of a letter with this kind of equipment; null where there is none.
template <class Rules>
constexpr const LineRule* line_rule(const Rules& rules, char letter, int equipment_kind) {
  for (const LineRule& rule : rules) {
    if (rule.letter == letter && (rule.kinds & kind(equipment_kind)) != 0) return &rule;
  }
  return nullptr;
}

}  // namespace lineweir

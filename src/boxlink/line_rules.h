#pragma once

#include <array>
#include <cstddef>

#include "boxlink/rule_steps.h"
#include "lines/equipment_kinds.h"
#include "lines/status_letters.h"

namespace lineweir {

inline constexpr std::size_t most_steps = 14;

struct LineRule {
  char letter;
  unsigned kinds;
  std::array<RuleStep, most_steps> steps;
};

// The two doors side by side. The box's reports come one by one; the letter is
// stored before the steps run, so that only F sees the letter that the line had: R and B close no
// times there, and P and O never open the data form, which goes by that letter. A letter that has
// no rule is stored and nothing else.
inline constexpr auto box_rules = [] {
  using enum LineStep;
  using enum When;
  return std::to_array<LineRule>({
      {'F',
       any_kind,
       {UnpinNextCall,
        {CloseHold, WasReady},
        {CloseAir, WasOnAir},
        Log,
        {ForgetCaller, NotFresh},
        ClearRecord,
        ClearHoldStamp,
        StopClock,
        BlankRow,
        ForgetLetter,
        ShowRow}},
      {'N', any_kind, {UnpinNextCall, BeginAir, RunClock, BaseNow, ShowText, ShowRow}},
      {'C', any_kind, {UnpinNextCall, BeginAir, RunClock, BaseNow, ShowText, ShowRow}},
      {'S', any_kind, {StampHold, CloseAir, RunClock, BaseNow, ShowText, ShowRow}},
      {'R',
       any_kind,
       {UnpinNextCall, Log, ForgetCaller, ClearRecord, ClearHoldStamp, RunClock, BaseNow, ShowText,
        BlankCaller, Blink, ShowRow}},
      {'E',
       any_kind,
       {Log, {ForgetCaller, NotFresh}, ClearRecord, ShowText, StopClock, BlankTime, ShowRow}},
      {'P', any_kind, {ShowText, StopClock, BlankTime, ShowRow}},
      {'O', any_kind, {ShowText, StopClock, BlankTime, ShowRow}},
      {'H', any_kind, {ShowText, StopClock, BlankTime, ShowRow}},
      // Not stored, so that the next report of B is a change again.
      {'B',
       any_kind,
       {ReleaseNextCall,
        Log,
        {ForgetCaller, NotFresh},
        {ClearData, NotFresh},
        ClearTimes,
        ClearHoldStamp,
        ForgetLetter,
        ShowText,
        StopClock,
        BlankTime,
        ForgetBase,
        ShowRow}},
  });
}();

// The server's reports come for all lines at once; the letter is stored behind the steps, unless it
// is F. A line that is idle stays as it is on F.
inline constexpr auto server_rules = [] {
  using enum LineStep;
  using enum When;
  return std::to_array<LineRule>({
      {'F',
       any_kind,
       {ReleaseNextCall,
        {CloseHold, WasReady},
        {CloseAir, WasOnAirOrLocked},
        Log,
        {ForgetCaller, NotFresh},
        {ClearData, NotFresh},
        ClearTimes,
        ClearHoldStamp,
        StopClock,
        {BlankRow, NotFresh},
        ForgetLetter,
        ShowRow,
        ForgetBase}},
      {'N',
       any_kind,
       {ReleaseNextCall,
        {BeginAir, NotBackFromLock},
        RunClock,
        {BaseNow, NotFresh | NotBackFromLock},
        ShowText,
        ShowRow}},
      {'C',
       any_kind,
       {ReleaseNextCall,
        {BeginAir, NotBackFromLock},
        RunClock,
        {BaseNow, NotFresh | NotBackFromLock},
        ShowText,
        ShowRow}},
      {'L', any_kind, {RunClock, ShowText, ShowRow}},
      {'K', any_kind, {RunClock, ShowText, ShowRow}},
      {'S',
       any_kind,
       {StampHold,
        CloseAir,
        RunClock,
        {BaseNow, NotFresh | NotCountingSinceRing},
        ShowText,
        ShowRowOrNext}},
      // Equipment of kind 2 tells a ring for a caller who comes back: the record stays.
      {'R',
       kinds_ringing_again,
       {ReleaseNextCall,
        {CloseHold, WasReady},
        {CloseAir, WasOnAir},
        {BeginCall, WasEmpty},
        RunClock,
        {BaseNow, NotFresh},
        ShowText,
        Blink,
        ShowRow}},
      {'R',
       all_but(kinds_ringing_again),
       {ReleaseNextCall,
        {CloseHold, WasReady},
        {CloseAir, WasOnAir},
        Log,
        ForgetCaller,
        ClearRecord,
        ClearHoldStamp,
        TellDataCleared,
        RunClock,
        {BaseNow, NotFresh},
        ShowText,
        {BlankCaller, NotFresh},
        Blink,
        ShowRow}},
      {'E', kinds_ringing_again, {ShowText, OpenDataForm, RunClock, BlankTime, ShowRowOrNext}},
      {'E',
       all_but(kinds_ringing_again),
       {ReleaseNextCall,
        Log,
        {ForgetCaller, NotFresh},
        {ClearData, NotFresh},
        ClearTimes,
        ShowText,
        StopClock,
        BlankTime,
        ForgetBase,
        ShowRow}},
      {'H',
       any_kind,
       {ShowText,
        StampHold,
        CloseAir,
        {BaseNow, NotFresh | NotCountingSinceRing},
        RunClock,
        BlankTime,
        ShowRowOrNext}},
      {'P', any_kind, {ShowText, OpenDataForm, RunClock, BlankTime, ShowRowOrNext}},
      {'O', any_kind, {ShowText, OpenDataForm, RunClock, BlankTime, ShowRowOrNext}},
      {'Y', any_kind, {RunClock, BlankTime, ShowRowOrNext, ShowText}},
      {'B',
       any_kind,
       {ReleaseNextCall,
        {CloseHold, WasReady},
        {CloseAir, WasOnAir},
        Log,
        {ForgetCaller, NotFresh},
        {ClearData, NotFresh},
        ClearTimes,
        ClearHoldStamp,
        ShowText,
        StopClock,
        BlankTime,
        ForgetBase,
        ShowRow}},
  });
}();

// What the server's door does with every other letter.
inline constexpr LineRule other_letter_rule = {
    '\0',
    any_kind,
    {LineStep::ShowText, LineStep::OpenDataForm, LineStep::RunClock, LineStep::BlankTime,
     LineStep::ForgetBase, LineStep::ShowRowOrNext}};

// What becomes of every line when the console goes over to another studio group.
inline constexpr LineRule group_left_rule = {'F',
                                             any_kind,
                                             {LineStep::ReleaseNextCall,
                                              {LineStep::CloseHold, When::WasReady},
                                              {LineStep::CloseAir, When::WasOnAirOrLocked},
                                              LineStep::LeaveCall,
                                              LineStep::ForgetCaller,
                                              LineStep::ClearRecord,
                                              LineStep::ClearHoldStamp,
                                              LineStep::StopClock,
                                              LineStep::BlankRow,
                                              LineStep::BlankTime,
                                              LineStep::ForgetBase,
                                              LineStep::ForgetLetter,
                                              LineStep::ShowRow}};

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
    if (rule.letter == letter && is_of(equipment_kind, rule.kinds)) return &rule;
  }
  return nullptr;
}

// A letter of the table that is forgotten here would be shown as one that nobody knows. The blank
// is never reported, and the box knows no locks.
constexpr bool server_knows_all_letters() {
  for (const StatusLetter& row : status_letters) {
    for (int equipment = 0; equipment <= 4; ++equipment) {
      const char letter = row.look.letter;
      if (letter != idle_letter && line_rule(server_rules, letter, equipment) == nullptr)
        return false;
    }
  }
  return true;
}
static_assert(server_knows_all_letters());

}  // namespace lineweir

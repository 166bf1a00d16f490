#include "server/call_history.h"

#include "lines/equipment_kinds.h"
#include "lines/status_letters.h"
#include "server/line_clock.h"

namespace lineweir::server {
namespace {

using platform::Moment;

struct StepName {
  char letter;
  std::string_view name;
};

// Of several letters with one name the first stands for all.
constexpr StepName step_names[] = {
    {'R', "ring"}, {'P', "answer"}, {'O', "answer"}, {'S', "ready"},      {'H', "hold"},
    {'N', "air"},  {'L', "lock"},   {'K', "lock"},   {'C', "conference"}, {'Y', "lock"},
};
constexpr std::string_view answer = "answer";

// Nothing for a step that is none of the line's.
std::optional<char> letter_of(const std::string& action, int kind) {
  if (action == answer && server_decides(kind)) return static_cast<char>(first_position_code);
  for (const StepName& step : step_names) {
    if (step.name == action) return step.letter;
  }
  if (action == "other") return other_equipment_letter;
  return std::nullopt;
}

Moment changed(Moment clock, ClockChange change, Moment at) {
  switch (change) {
    case ClockChange::Begins:
      return at;
    case ClockChange::Ends:
      return Moment{0};
    case ClockChange::Runs:
      break;
  }
  return clock;
}

}  // namespace

std::string_view step_name(char letter) {
  for (const StepName& step : step_names) {
    if (step.letter == letter) return step.name;
  }
  return static_cast<unsigned char>(letter) >= first_position_code ? answer : "other";
}

std::optional<char> last_letter(const platform::CallRecord& call, int kind) {
  return letter_of(history_of(call, kind).action, kind);
}

CallHistory history_of(const platform::CallRecord& call, int kind) {
  CallHistory history;
  char before = free_letter;
  for (const platform::CallStep& step : call.steps) {
    const auto letter = letter_of(step.action, kind);
    if (!letter) continue;
    history.clock = changed(history.clock, clock_change(*letter, before, kind), step.at);
    history.action = step.action;
    history.since = step.at;
    history.last_by = step.user;
    if (!step.user.empty()) history.worked_by = step.user;
    before = *letter;
  }
  return history;
}

Moment clock_after(const CallHistory& history, char letter, int kind, Moment now) {
  if (history.action == step_name(letter)) return history.clock;
  const char before = letter_of(history.action, kind).value_or(free_letter);
  return changed(history.clock, clock_change(letter, before, kind), now);
}

}  // namespace lineweir::server

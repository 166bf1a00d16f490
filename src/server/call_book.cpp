#include "server/call_book.h"

#include <algorithm>
#include <string_view>

#include "lines/equipment_kinds.h"

namespace lineweir::server {
namespace {

using platform::CallRecord;

// A call that is passed to and fro must not grow without end.
constexpr std::size_t most_steps = 1000;

struct StepName {
  char letter;
  std::string_view name;
};

constexpr StepName step_names[] = {
    {'R', "ring"}, {'P', "answer"}, {'O', "answer"}, {'S', "ready"},      {'H', "hold"},
    {'N', "air"},  {'L', "lock"},   {'K', "lock"},   {'C', "conference"}, {'Y', "lock"},
};

std::string_view step_name(char letter) {
  for (const StepName& step : step_names) {
    if (step.letter == letter) return step.name;
  }
  return static_cast<unsigned char>(letter) >= first_position_code ? "answer" : "other";
}

bool is_on_air(char letter) { return letter == 'N' || letter == 'C'; }

}  // namespace

void CallBook::remember(std::vector<CallRecord> open_calls) {
  for (CallRecord& call : open_calls) {
    last_id_ = std::max(last_id_, call.id);
    const Place place{call.group, call.line};
    remembered_[place] = std::move(call);
  }
}

const CallRecord* CallBook::resume(int group, int line, char letter) {
  auto call = remembered_.extract({group, line});
  if (call.empty()) return nullptr;
  if (letter == 'R' && call.mapped().answered.count() != 0) {
    close(std::move(call.mapped()));
    return nullptr;
  }
  return &(calls_[{group, line}] = std::move(call.mapped()));
}

void CallBook::close_forgotten(int group) {
  for (auto call = remembered_.begin(); call != remembered_.end();) {
    if (call->second.group != group) {
      ++call;
      continue;
    }
    close(std::move(call->second));
    call = remembered_.erase(call);
  }
}

void CallBook::close(CallRecord call) {
  call.ended = clock_.now();
  note(call, {}, "ended while the server was away");
}

void CallBook::begin(int group, int line, const std::string& number) {
  end(group, line, {});
  CallRecord call;
  call.id = new_id(group);
  call.group = group;
  call.line = line;
  call.number = number;
  call.began = clock_.now();
  calls_[{group, line}] = std::move(call);
}

void CallBook::step(int group, int line, char letter, const std::string& user) {
  const auto place = calls_.find({group, line});
  if (place == calls_.end()) return;
  CallRecord& call = place->second;
  const platform::Moment now = clock_.now();
  if (letter != 'R' && call.answered.count() == 0) call.answered = now;
  if (is_on_air(letter) && call.aired.count() == 0) call.aired = now;
  note(call, user, std::string(step_name(letter)));
}

void CallBook::tell_data(int group, int line, const std::string& told_by, const Fields& fields,
                         const std::string& user) {
  const auto place = calls_.find({group, line});
  if (place == calls_.end()) return;
  place->second.told_by = told_by;
  place->second.told = fields;
  note(place->second, user, "data");
}

void CallBook::end(int group, int line, const std::string& user) {
  const auto place = calls_.find({group, line});
  if (place == calls_.end()) return;
  place->second.ended = clock_.now();
  note(place->second, user, user.empty() ? "hang up" : "drop");
  calls_.erase(place);
}

const CallRecord* CallBook::find(int group, int line) const {
  const auto place = calls_.find({group, line});
  return place == calls_.end() ? nullptr : &place->second;
}

// Grows with time, and keeps growing where the clock is set back. No two groups have one number,
// whichever servers they are at.
std::int64_t CallBook::new_id(int group) {
  constexpr std::int64_t most_groups = 1000;
  const std::int64_t next_span = last_id_ / most_groups + 1;
  last_id_ = std::max<std::int64_t>(next_span, clock_.now().count()) * most_groups + group;
  return last_id_;
}

void CallBook::note(CallRecord& call, const std::string& user, std::string action) {
  if (call.steps.size() < most_steps || call.ended.count() != 0) {
    call.steps.push_back({clock_.now(), user, std::move(action)});
  }
  outbox_.put(call);
}

}  // namespace lineweir::server

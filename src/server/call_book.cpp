#include "server/call_book.h"

#include <algorithm>
#include <limits>

#include "server/call_history.h"

namespace lineweir::server {
namespace {

using platform::CallRecord;

// A call that is passed to and fro must not grow without end.
constexpr std::size_t most_steps = 1000;

// A number beyond was never made of a clock's time, and there may be none behind it.
constexpr std::int64_t latest_id = std::numeric_limits<std::int64_t>::max() / 2;

bool is_on_air(char letter) { return letter == 'N' || letter == 'C'; }

}  // namespace

void CallBook::remember(std::vector<CallRecord> open_calls) {
  for (CallRecord& call : open_calls) {
    if (call.id <= latest_id) last_id_ = std::max(last_id_, call.id);
    const auto [known, is_first] = remembered_.try_emplace({call.group, call.line}, call);
    if (is_first) continue;
    if (known->second.id < call.id) std::swap(known->second, call);
    close_at_last_step(std::move(call));
  }
}

void CallBook::close_restored(const std::vector<CallRecord>& open_calls) {
  for (const CallRecord& call : open_calls) {
    const CallRecord* const standing = find(call.group, call.line);
    if (standing == nullptr || standing->id != call.id) close_at_last_step(call);
  }
}

const CallRecord* CallBook::remembered(int group, int line) const {
  const auto call = remembered_.find({group, line});
  return call == remembered_.end() ? nullptr : &call->second;
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

void CallBook::close_forgotten_but(const std::set<int>& groups) {
  std::set<int> others;
  for (const auto& [place, call] : remembered_) {
    if (!groups.contains(call.group)) others.insert(call.group);
  }
  for (const int group : others) close_forgotten(group);
}

void CallBook::close(CallRecord call) {
  call.ended = now_of(call);
  note(call, {}, ended_unheard);
}

// Nobody has heard of it since.
void CallBook::close_at_last_step(CallRecord call) {
  call.ended = call.steps.empty() ? call.began : call.steps.back().at;
  call.steps.push_back({call.ended, {}, ended_unheard});
  outbox_.put(std::move(call));
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
  const platform::Moment now = now_of(call);
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
  place->second.ended = now_of(place->second);
  note(place->second, user, user.empty() ? "hang up" : "drop");
  const CallRecord ended = std::move(place->second);
  calls_.erase(place);
  if (on_ended) on_ended(ended);
}

const CallRecord* CallBook::find(int group, int line) const {
  const auto place = calls_.find({group, line});
  return place == calls_.end() ? nullptr : &place->second;
}

platform::Moment CallBook::now_of(const CallRecord& call) const {
  const platform::Moment last = call.steps.empty() ? call.began : call.steps.back().at;
  return std::max(clock_.now(), last);
}

// Grows with time, and keeps growing where the clock is set back. No two groups have one number,
// whichever servers they are at, and servers whose clocks differ make different ones, as they lead
// in different epochs.
std::int64_t CallBook::new_id(int group) {
  constexpr std::int64_t calls_of_a_millisecond = 1000;
  constexpr std::int64_t epochs_apart = 4;
  const std::int64_t place = (group - 1) * epochs_apart + epoch_ % epochs_apart;
  const std::int64_t next = last_id_ / calls_of_a_millisecond + 1;
  last_id_ = std::max<std::int64_t>(next, clock_.now().count()) * calls_of_a_millisecond +
             place % calls_of_a_millisecond;
  return last_id_;
}

void CallBook::note(CallRecord& call, const std::string& user, std::string action) {
  if (call.steps.size() < most_steps || call.ended.count() != 0) {
    const platform::Moment now = now_of(call);
    call.steps.push_back({now, user, std::move(action)});
  }
  outbox_.put(call);
}

}  // namespace lineweir::server

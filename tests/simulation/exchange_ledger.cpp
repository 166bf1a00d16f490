#include "simulation/exchange_ledger.h"

#include <algorithm>

#include "server/line_clock.h"

namespace lineweir::simulation {
namespace {

using namespace std::chrono_literals;

constexpr int kind_of_run = 1;

// Servers hear of what happens this much later.
constexpr Milliseconds heard_after = 300ms;

bool has_caller(char letter) { return letter != 'F' && letter != 'B' && letter != 'E'; }

}  // namespace

void ExchangeLedger::look(Milliseconds now, bool all_well) {
  if (all_well && !well_) stretches_.push_back({now + heard_after, now});
  if (all_well) stretches_.back().to = now;
  well_ = all_well;
}

void ExchangeLedger::note(Milliseconds now, exchange::LineChange change, char before) {
  changes_[change.line].push_back({now, before, change.letter});
  const bool has_call = has_caller(change.letter);
  const auto standing = standing_.find(change.line);
  const bool had_call = standing != standing_.end();
  const bool is_another = has_call && had_call && change.letter == 'R' && before != 'R';
  if (had_call && (!has_call || is_another)) {
    calls_[standing->second].ended = now;
    standing_.erase(standing);
  }
  if (has_call && (!had_call || is_another)) {
    standing_[change.line] = calls_.size();
    calls_.push_back({change.line, now, std::nullopt});
  }
}

bool ExchangeLedger::was_kept(Milliseconds moment) const {
  return std::ranges::any_of(stretches_, [&](const Stretch& stretch) {
    return stretch.from <= moment && moment + kept_after <= stretch.to;
  });
}

std::optional<std::size_t> ExchangeLedger::call_on(int line) const {
  const auto standing = standing_.find(line);
  if (standing == standing_.end()) return std::nullopt;
  return standing->second;
}

std::size_t ExchangeLedger::changes_of(int line) const {
  const auto changes = changes_.find(line);
  return changes == changes_.end() ? 0 : changes->second.size();
}

std::optional<Milliseconds> ExchangeLedger::clock_of(int line) const {
  const auto changes = changes_.find(line);
  if (changes == changes_.end()) return Milliseconds{0};
  Milliseconds clock{0};
  bool is_known = true;
  for (const Change& change : changes->second) {
    const bool was_told = was_kept(change.at);
    const bool begins_anew = !has_caller(change.letter) || change.letter == 'R';
    is_known = was_told && (is_known || begins_anew);
    switch (server::clock_change(change.letter, change.before, kind_of_run)) {
      case server::ClockChange::Begins:
        clock = change.at;
        break;
      case server::ClockChange::Ends:
        clock = Milliseconds{0};
        break;
      case server::ClockChange::Runs:
        break;
    }
  }
  if (!is_known) return std::nullopt;
  return clock;
}

bool ExchangeLedger::must_be_kept(const Call& call) const {
  return std::ranges::any_of(stretches_, [&](const Stretch& stretch) {
    const Milliseconds from = std::max(stretch.from, call.began);
    const Milliseconds to = std::min(stretch.to, call.ended.value_or(stretch.to));
    return from + kept_after <= to;
  });
}

std::vector<std::string> ExchangeLedger::wrong_in(std::vector<platform::CallRecord> records,
                                                  platform::Moment began,
                                                  Milliseconds tolerance) const {
  std::vector<std::string> found;
  std::ranges::sort(records, {}, &platform::CallRecord::began);
  const auto name = [&](const platform::CallRecord& record) {
    return "the call on line " + std::to_string(record.line + 1) + " from " +
           std::to_string((record.began - began).count()) + " to " +
           std::to_string((record.ended - began).count()) + " in the store";
  };
  // How long both stood at once; negative where they did not.
  const auto overlap = [&](const platform::CallRecord& record, const Call& call) {
    return std::min(record.ended - began, call.ended.value_or(Milliseconds::max())) -
           std::max(record.began - began, call.began);
  };
  std::map<int, const platform::CallRecord*> last_of_line;
  for (const platform::CallRecord& record : records) {
    const bool is_real = std::ranges::any_of(calls_, [&](const Call& call) {
      return call.line == record.line && overlap(record, call) >= -tolerance;
    });
    if (!is_real) found.push_back(name(record) + " has never been");
    const platform::CallRecord*& last = last_of_line[record.line];
    // What one server could not write in time another one had to guess.
    const bool is_beside = last != nullptr && record.began < last->ended - tolerance;
    if (is_beside && was_kept(record.began - began)) {
      found.push_back(name(record) + " is there beside " + name(*last));
    }
    if (last == nullptr || last->ended < record.ended) last = &record;
  }
  std::map<int, const platform::CallRecord*> record_before;
  for (const Call& call : calls_) {
    if (!must_be_kept(call)) continue;
    const platform::CallRecord* best = nullptr;
    for (const platform::CallRecord& record : records) {
      if (record.line != call.line || overlap(record, call) < -tolerance) continue;
      if (best == nullptr || overlap(record, call) > overlap(*best, call)) best = &record;
    }
    if (best == nullptr) {
      found.push_back("the call on line " + std::to_string(call.line + 1) + " from " +
                      std::to_string(call.began.count()) + " isn't in the store");
    } else if (record_before[call.line] == best && was_kept(call.began)) {
      found.push_back(name(*best) + " holds two calls, one of them from " +
                      std::to_string(call.began.count()));
    }
    record_before[call.line] = best;
  }
  return found;
}

}  // namespace lineweir::simulation

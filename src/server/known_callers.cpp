#include "server/known_callers.h"

#include <algorithm>
#include <utility>

#include "base/iso_date.h"
#include "base/telephone_number.h"
#include "server/caller_memory.h"
#include "server/caller_text.h"

namespace lineweir::server {
namespace {

// The consoles take no more of a field.
constexpr std::size_t longest_field = 100;

bool is_anything(const CallerKnown& known) {
  return known.flag != CallerFlag::None || known.calls != 0;
}

int counted(std::int64_t count) {
  return static_cast<int>(std::min<std::int64_t>(count, std::numeric_limits<int>::max()));
}

}  // namespace

KnownCallers::KnownCallers(const Context& context, const GroupOptions& options, Relay& relay,
                           const GroupLines& lines)
    : context_(context),
      options_(options),
      relay_(relay),
      lines_(lines),
      line_(static_cast<std::size_t>(options.lines)) {}

void KnownCallers::look_up(int line, const std::string& told_number) {
  const platform::CallRecord* const call = context_.calls.find(options_.number, line);
  const std::string of_exchange =
      call == nullptr ? std::string() : context_.letters.from_utf8(call->number);
  const std::string told_key = telephone_key(told_number);
  const std::string exchange_key = telephone_key(of_exchange);
  Line& caller = at(line);
  const std::string key = told_key.empty() ? exchange_key : told_key;
  if (key == caller.key && exchange_key == caller.exchange_key) return;
  caller.key = key;
  caller.exchange_key = exchange_key;
  caller.number = told_key.empty() ? of_exchange : told_number;
  caller.history = {};
  caller.waits_for_store = false;
  ++caller.generation;
  tell_changes(line);
  if (!key.empty()) ask(line);
}

void KnownCallers::ask(int line) {
  at(line).waits_for_store = false;
  context_.memory.ask(at(line).key,
                      [this, line, alive = std::weak_ptr(alive_), generation = at(line).generation](
                          const std::optional<platform::CallerHistory>& history) {
                        if (!alive.lock() || at(line).generation != generation) return;
                        at(line).waits_for_store = !history;
                        if (!history) return;
                        at(line).history = *history;
                        tell_changes(line);
                      });
}

void KnownCallers::store_is_back() {
  for (int line = 0; line < lines_.count(); ++line) {
    if (at(line).waits_for_store) ask(line);
  }
  for (auto& [seat, question] : questions_) {
    if (std::exchange(question.waits_for_store, false)) ask(seat);
  }
}

void KnownCallers::flag_changed(const std::string& key) {
  for (int line = 0; line < lines_.count(); ++line) {
    if (at(line).key == key || at(line).exchange_key == key) tell_changes(line);
  }
}

void KnownCallers::history_changed(const std::string& key) {
  for (int line = 0; line < lines_.count(); ++line) {
    if (at(line).key == key) ask(line);
  }
}

void KnownCallers::tell_all_lines(Seat& seat) const {
  for (int line = 0; line < lines_.count(); ++line) {
    if (lines_.exists(line) && is_anything(at(line).told)) {
      seat.tell(Telling(packet(line, at(line).told)));
    }
  }
}

void KnownCallers::answer(Seat& seat, const std::string& number) {
  if (telephone_key(number).empty()) return tell(seat, number, {});
  Question& question = questions_[seat.number];
  const bool is_asked = !question.number.empty() && !question.waits_for_store;
  question = {.number = number};
  if (!is_asked) ask(seat.number);
}

void KnownCallers::ask(std::uint64_t seat) {
  const std::string number = questions_.at(seat).number;
  context_.memory.ask(telephone_key(number),
                      [this, alive = std::weak_ptr(alive_), seat, number](const auto& history) {
                        if (alive.lock()) answered(seat, number, history);
                      });
}

void KnownCallers::answered(std::uint64_t seat, const std::string& number,
                            const std::optional<platform::CallerHistory>& history) {
  const auto question = questions_.find(seat);
  // It may have gone meanwhile.
  const auto asker = std::ranges::find(relay_.seats(), seat, &Seat::number);
  if (asker == relay_.seats().end()) {
    questions_.erase(question);
  } else if (question->second.number != number) {
    ask(seat);
  } else if (!history) {
    question->second.waits_for_store = true;
  } else {
    questions_.erase(question);
    tell(**asker, number, *history);
  }
}

void KnownCallers::tell(Seat& seat, const std::string& number,
                        const platform::CallerHistory& history) const {
  seat.tell(Telling(
      packet(no_value, known(number, history, context_.memory.find(telephone_key(number))))));
}

void KnownCallers::tell_changes(int line) {
  Line& caller = at(line);
  CallerKnown now = known(caller.number, caller.history, flag(caller));
  if (!is_anything(now)) now = {};
  if (now == caller.told) return;
  caller.told = now;
  relay_.tell(packet(line, now));
}

const platform::FlaggedCaller* KnownCallers::flag(const Line& line) const {
  const auto* const told = context_.memory.find(line.key);
  const auto* const of_exchange = context_.memory.find(line.exchange_key);
  if (told == nullptr || of_exchange == nullptr) return told == nullptr ? of_exchange : told;
  return of_exchange->flag > told->flag ? of_exchange : told;
}

CallerKnown KnownCallers::known(const std::string& number, const platform::CallerHistory& history,
                                const platform::FlaggedCaller* flag) const {
  const auto field = [this](const std::string& utf8) {
    return clean_name(context_.letters.from_utf8(utf8), longest_field);
  };
  CallerKnown known;
  known.number = clean_name(number, longest_field);
  known.calls = counted(history.calls);
  known.on_air = counted(history.on_air);
  if (history.last_on_air != platform::Moment{0}) {
    const std::string minute = iso_minute_text(context_.clock.local(history.last_on_air));
    // A moment that somebody has written into the store may lie in no year of four digits.
    if (iso_minute_of(minute)) known.last_on_air = minute;
  }
  known.name = field(history.name);
  known.city = field(history.city);
  if (flag == nullptr) return known;
  known.flag = flag->flag;
  known.reason = field(flag->reason);
  known.until = flag->until;
  known.flagged_by = field(flag->by);
  return known;
}

ServerPacket KnownCallers::packet(int line, const CallerKnown& known) const {
  const bool is_cleared = line != no_value && known == CallerKnown{};
  ServerPacket told = server_packet(ServerCommand::SrvCallerKnown, options_.number,
                                    is_cleared ? std::string() : encode_caller_known(known));
  told.LineNo = field_byte(line);
  told.AltInfo = static_cast<std::uint8_t>(known.flag);
  return told;
}

}  // namespace lineweir::server

#include "server/group_lines.h"

#include <algorithm>

#include "base/text.h"
#include "lines/equipment_kinds.h"
#include "lines/status_letters.h"
#include "server/caller_memory.h"
#include "server/caller_text.h"
#include "server/line_clock.h"

namespace lineweir::server {
namespace {

// A line in one of these has no caller.
constexpr std::string_view letters_without_caller = "FB";
constexpr std::string_view on_hybrid_1 = "N";
constexpr std::string_view on_hybrid_2 = "C";

// The consoles' own rule: other equipment that takes a line ends the call, or goes on with it.
bool has_caller(char letter, bool had_caller, int kind) {
  if (letter == other_equipment_letter) return had_caller && is_of(kind, kinds_ringing_again);
  return letters_without_caller.find(letter) == std::string_view::npos;
}

bool is_numbered_position(char letter) { return code_of(letter) >= first_position_code; }
bool is_handset(char letter) {
  return letter == 'P' || letter == 'O' || is_numbered_position(letter);
}

// A lock is taken and given back by the same word; a word otherwise brings its own letter.
constexpr std::string_view letters_of_lock = "LKNC";
constexpr std::size_t most_asked = 8;

std::string letters_of(const LineOrder& order, const Seat& seat) {
  if (order.kind == LineOrder::Kind::ToOwnPosition) {
    return {static_cast<char>(first_position_code + seat.console)};
  }
  if (order.word.front() == 'L') return std::string(letters_of_lock);
  return order.word.substr(0, 1);
}

// The words that release a handset, whose caller goes.
constexpr std::string_view release_words[] = {"P15", "O15"};

bool is_release(std::string_view word) {
  return std::find(std::begin(release_words), std::end(release_words), word) !=
         std::end(release_words);
}

bool is_on_hybrid(char letter) { return letter == 'N' || letter == 'C'; }

// What is worth an entry of the audit.
std::string_view audited_as(char letter, const std::string& user) {
  if (letter == 'N') return "on air";
  if (letter == 'C') return "on air on hybrid 2";
  if (letter == free_letter && !user.empty()) return "drop";
  return {};
}

}  // namespace

GroupLines::GroupLines(const Context& context, const GroupOptions& options, Relay& relay,
                       std::unique_ptr<exchange::Exchange> exchange)
    : context_(context),
      options_(options),
      relay_(relay),
      exchange_(std::move(exchange)),
      lines_(static_cast<std::size_t>(options.lines)) {
  exchange_->on_change = [this](exchange::LineChange change, const std::string& number) {
    take_change(change, number);
  };
}

void GroupLines::take_letters() {
  for (int line = 0; line < count(); ++line) take_letter(line);
}

void GroupLines::take_letter(int line) { take_change({line, exchange_->letter(line)}, {}); }

void GroupLines::show_last_known() {
  for (int line = 0; line < count(); ++line) {
    const platform::CallRecord* const call = context_.calls.remembered(options_.number, line);
    const auto letter = call == nullptr ? std::nullopt : last_letter(*call, options_.kind);
    if (letter) take_change({line, *letter}, {});
  }
}

void GroupLines::take_over() {
  take_letters();
  if (exchange_->is_reached()) context_.calls.close_forgotten(options_.number);
}

void GroupLines::leave_out(const std::vector<int>& missing) {
  for (const int number : missing) take_change({number - 1, free_letter}, {});
}

bool GroupLines::exists(int line) const {
  if (line < 0 || line >= count()) return false;
  return std::find(options_.missing_lines.begin(), options_.missing_lines.end(), line + 1) ==
         options_.missing_lines.end();
}

bool GroupLines::has_call(int line) const {
  return line >= 0 && line < count() && this->line(line).has_caller;
}

std::optional<Refusal> GroupLines::obey(Seat& seat, const LineOrder& order) {
  using Kind = LineOrder::Kind;
  if (holds_up_exchange(seat)) {
    if (order.line >= 0) tell_line(seat, order.line);
    return Refusal::TooMany;
  }
  if (order.kind == Kind::DropPlace || order.kind == Kind::HoldPlace) {
    obey_place(seat, order);
    return std::nullopt;
  }
  if (order.line < 0) {
    if (is_release(order.word)) {
      for (const int line : lines_in(order.word.front())) expect(seat, line, {free_letter});
    }
    exchange_->obey(order.word);
    return std::nullopt;
  }
  if (takes_line(order) && was_taken_by_other(seat, order.line)) {
    tell_line(seat, order.line);
    return Refusal::LineTaken;
  }
  if (takes_line(order)) {
    at(order.line).taken_by = seat.number;
    at(order.line).taken_at = context_.loop.now();
  }
  expect(seat, order.line, letters_of(order, seat));
  if (order.kind == Kind::ToOwnPosition) {
    exchange_->take_to_position(order.line, seat.console);
  } else {
    exchange_->obey(order.word);
  }
  return std::nullopt;
}

std::vector<int> GroupLines::lines_in(char letter) const {
  std::vector<int> found;
  for (int line = 0; line < count(); ++line) {
    if (this->line(line).letter == letter) found.push_back(line);
  }
  return found;
}

void GroupLines::hold_handset(std::uint64_t seat) {
  for (int line = 0; line < count(); ++line) {
    if (this->line(line).handset_of == seat && is_handset(this->line(line).letter)) {
      exchange_->obey(std::string("H") + zero_filled(line, 2));
    }
  }
}

void GroupLines::claim_handset(const Seat& seat) {
  for (GroupLine& line : lines_) {
    const bool fits_position = !is_numbered_position(line.letter) ||
                               code_of(line.letter) - first_position_code == seat.console;
    if (!line.waits_until || line.worked_by != seat.user || !fits_position) continue;
    line.waits_until.reset();
    line.handset_of = seat.number;
  }
}

void GroupLines::hold_unclaimed() {
  for (int line = 0; line < count(); ++line) {
    std::optional<platform::Milliseconds>& until = at(line).waits_until;
    if (!until || context_.loop.now() < *until) continue;
    until.reset();
    exchange_->obey(std::string("H") + zero_filled(line, 2));
  }
}

void GroupLines::pass_handset(std::uint64_t from, std::uint64_t to) {
  for (GroupLine& line : lines_) {
    if (line.handset_of == from) line.handset_of = to;
    for (GroupLine::Asked& asked : line.asked) {
      if (asked.seat == from) asked.seat = to;
    }
  }
}

std::string GroupLines::status_text() const {
  std::string text;
  for (int line = 0; line < count(); ++line) {
    text += this->line(line).letter;
    text += zero_filled(line, 2);
  }
  return text;
}

void GroupLines::tell_status(Seat& seat) const {
  seat.tell(Telling(status_packet()));
  seat.told_status = true;
}

void GroupLines::tell_line(Seat& seat, int line) const { seat.tell(Telling(line_packet(line))); }

void GroupLines::take_change(exchange::LineChange change, const std::string& number) {
  if (!exists(change.line)) return;
  GroupLine& line = at(change.line);
  const char old_letter = line.letter;
  if (old_letter == change.letter) return;
  const auto asked = take_asked(line, change.letter);
  const std::string user = asked ? asked->user : std::string();

  line.letter = change.letter;
  line.waits_until.reset();
  line.since = context_.clock.now();
  line.changed_at = context_.loop.now();
  switch (clock_change(change.letter, old_letter, options_.kind)) {
    case ClockChange::Begins:
      line.clock = line.since;
      line.clock_began_at = line.changed_at;
      break;
    case ClockChange::Ends:
      line.clock = platform::Moment{0};
      break;
    case ClockChange::Runs:
      break;
  }
  line.handset_of = asked && is_handset(change.letter) ? asked->seat : 0;
  if (!user.empty()) line.worked_by = user;
  // One who is ready, held or gone is anybody's.
  if (!is_on_hybrid(change.letter) && !is_handset(change.letter)) line.taken_by = 0;
  ++context_.figures.line_changes;
  tell_all(change.line);

  const bool had_call = line.has_caller;
  const bool has_call = has_caller(change.letter, had_call, options_.kind);
  line.has_caller = has_call;
  // Equipment that tells a caller who comes back as a ring means the same call.
  const bool rings_again =
      change.letter == ringing_letter && !is_of(options_.kind, kinds_ringing_again);
  const int group = options_.number;
  if (had_call && (!has_call || rings_again)) {
    context_.calls.end(group, change.line, user);
    line.worked_by.clear();
    on_call_ended(change.line);
  }
  line.goes_on = false;
  if (has_call && (!had_call || rings_again)) {
    const std::string caller = clean_name(number, longest_caller_number);
    if (const auto* call = context_.calls.resume(group, change.line, change.letter)) {
      take_up(change.line, history_of(*call, options_.kind));
    } else {
      context_.calls.begin(group, change.line, context_.letters.to_utf8(caller));
    }
    on_call_begun(change.line, caller);
  }
  if (has_call && !line.goes_on) {
    context_.calls.step(group, change.line, change.letter, user);
  }
  if (const auto action = audited_as(change.letter, user); !action.empty()) {
    context_.audit.note(user, std::string(action),
                        options_.name + ", line " + std::to_string(change.line + 1));
  }
  on_letter(change.line, change.letter);
}

void GroupLines::take_up(int number, const CallHistory& history) {
  GroupLine& line = at(number);
  const platform::Moment now = line.since;
  line.goes_on = history.action == step_name(line.letter);
  // The clock of the machine that served before may be ahead.
  line.clock = std::min(clock_after(history, line.letter, options_.kind, now), now);
  line.clock_began_at = line.changed_at - (now - line.clock);
  if (line.worked_by.empty()) line.worked_by = history.worked_by;
  if (!line.goes_on) return;
  line.since = std::min(history.since, now);
  line.changed_at -= now - line.since;
  if (is_handset(line.letter) && !history.last_by.empty()) {
    line.waits_until = context_.loop.now() + waited_for;
  }
}

void GroupLines::tell_all(int line) const {
  const Telling change(line_packet(line));
  for (Seat* seat : relay_.seats()) {
    if (seat->told_status) {
      seat->tell(change);
    } else {
      tell_status(*seat);
    }
  }
}

// Position 1 goes out as P with no number, position 2 as O; a numbered one as P with its number.
ServerPacket GroupLines::line_packet(int line) const {
  const char letter = this->line(line).letter;
  const bool numbered = is_numbered_position(letter);
  ServerPacket packet = server_packet(ServerCommand::SrvLineStatus, options_.number,
                                      std::string(1, numbered ? 'P' : letter));
  packet.LineNo = field_byte(line);
  if (numbered) packet.AltInfo = packet.Console = field_byte(code_of(letter) - first_position_code);
  return packet;
}

ServerPacket GroupLines::status_packet() const {
  return server_packet(ServerCommand::SrvFullStatus, options_.number, status_text());
}

void GroupLines::obey_place(Seat& seat, const LineOrder& order) {
  std::string letters(order.bank == 0 ? on_hybrid_1 : on_hybrid_2);
  if (seat.screener) letters = static_cast<char>(first_position_code + seat.console);
  const char word = order.kind == LineOrder::Kind::DropPlace ? 'F' : 'H';
  for (const char letter : letters) {
    for (const int line : lines_in(letter)) {
      expect(seat, line, {word});
      exchange_->obey(word + zero_filled(line, 2));
    }
  }
}

bool GroupLines::holds_up_exchange(Seat& seat) const {
  return exchange_->backlog() > held_up_from && !seat.words.take(1, context_.loop.now());
}

void GroupLines::expect(const Seat& seat, int line, std::string letters) {
  std::vector<GroupLine::Asked>& asked = at(line).asked;
  if (asked.size() >= most_asked) asked.erase(asked.begin());
  asked.push_back({seat.number, seat.user, std::move(letters), context_.loop.now()});
}

std::optional<GroupLine::Asked> GroupLines::take_asked(GroupLine& line, char letter) const {
  std::erase_if(line.asked, [this](const GroupLine::Asked& asked) {
    return context_.loop.now() - asked.at > order_holds;
  });
  const auto found = std::find_if(
      line.asked.begin(), line.asked.end(),
      [letter](const auto& asked) { return asked.letters.find(letter) != std::string::npos; });
  if (found == line.asked.end()) return std::nullopt;
  const GroupLine::Asked asked = *found;
  line.asked.erase(line.asked.begin(), found + 1);
  return asked;
}

bool GroupLines::was_taken_by_other(const Seat& seat, int line) const {
  const GroupLine& taken = this->line(line);
  return taken.taken_by != 0 && taken.taken_by != seat.number &&
         context_.loop.now() - taken.taken_at < same_moment;
}

}  // namespace lineweir::server

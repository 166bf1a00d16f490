#include "server/next_call.h"

#include <utility>

#include "base/text.h"
#include "lines/equipment_kinds.h"
#include "lines/status_letters.h"

namespace lineweir::server {
namespace {

constexpr int no_line = -1;

// The consoles give their choice up by themselves when they see its line with one of these letters.
constexpr std::string_view letters_that_end_choice = "FNCRB";

// Who is on air can't be next. A line that is free or rings is chosen by a seat that hasn't heard
// yet what became of its caller, unless it has been so for a while.
struct LateChoice {
  char letter;
  platform::Milliseconds within;
};

constexpr platform::Milliseconds for_ever = platform::Milliseconds::max();
constexpr LateChoice late_choices[] = {
    {'N', for_ever},
    {'C', for_ever},
    {'B', for_ever},
    {'E', for_ever},
    {'F', std::chrono::seconds(10)},
    {'R', std::chrono::seconds(2)},
};

bool ends_choice(char letter, int kind) {
  if (letter == other_equipment_letter) return !is_of(kind, kinds_ringing_again);
  return letters_that_end_choice.find(letter) != std::string_view::npos;
}

}  // namespace

NextCall::NextCall(const Context& context, const GroupOptions& options, Relay& relay,
                   GroupLines& lines)
    : context_(context), options_(options), relay_(relay), lines_(lines) {}

void NextCall::remember(int line, bool had_caller) {
  // The configuration may have lost the line meanwhile.
  if (server_chooses() || !lines_.exists(line)) return;
  const bool is_known = lines_.exchange().is_reached();
  hangs_on_caller_ = had_caller && !is_known;
  const bool is_over =
      lines_.has_call(line) ? is_ended_by(line, lines_.line(line).letter) : had_caller && is_known;
  if (!is_over) line_ = line;
}

void NextCall::letters_known() {
  const bool is_over = line_ != no_line && hangs_on_caller_ && !lines_.has_call(line_);
  hangs_on_caller_ = false;
  if (is_over) set(no_line);
}

std::optional<Refusal> NextCall::choose(int line) {
  if (server_chooses()) return Refusal::ServerDecides;
  if (line != no_line && comes_too_late(line)) return Refusal::LateChoice;
  set(line);
  return std::nullopt;
}

bool NextCall::act(Seat& seat, char letter, int bank) {
  if (!server_chooses()) return false;
  const auto word = [](char first, int line) {
    return LineOrder{LineOrder::Kind::Word, first + zero_filled(line, 2), line};
  };
  if (letter == 'N') {
    return line_ != no_line && !lines_.obey(seat, word(bank == 1 ? 'C' : 'N', line_));
  }
  if (letter == 'S') {
    const auto own = lines_.lines_in(static_cast<char>(first_position_code + seat.console));
    for (const int line : own) lines_.obey(seat, word('S', line));
    return !own.empty();
  }
  if (letter == 'A') {
    const int ringing = longest_in(ringing_letter);
    return ringing != no_line &&
           !lines_.obey(seat, LineOrder{LineOrder::Kind::ToOwnPosition, {}, ringing});
  }
  return false;
}

void NextCall::letter_changed(int line, char letter) {
  if (server_chooses()) {
    const int longest = longest_in(ready_letter);
    if (longest != line_) set(longest);
  } else if (line == line_ && is_ended_by(line, letter)) {
    // The consoles know it from the letter, but for one that was behind and sees only a later one.
    set(no_line);
  } else if (line == line_ && std::exchange(hangs_on_caller_, false)) {
    // They took the line for free so far, and the choice for over.
    relay_.tell(packet());
  }
}

void NextCall::tell(Seat& seat) const { seat.tell(Telling(packet())); }

bool NextCall::comes_too_late(int line) const {
  const GroupLine& chosen = lines_.line(line);
  for (const LateChoice& late : late_choices) {
    if (late.letter == chosen.letter) {
      return context_.loop.now() - chosen.changed_at < late.within;
    }
  }
  return false;
}

// One who rang already when he was chosen still does.
bool NextCall::is_ended_by(int line, char letter) const {
  if (letter == ringing_letter && lines_.line(line).goes_on) return false;
  return ends_choice(letter, options_.kind);
}

bool NextCall::server_chooses() const { return server_decides(options_.kind); }

void NextCall::set(int line) {
  line_ = line;
  hangs_on_caller_ = false;
  relay_.tell(packet());
}

// Where two have waited as long, the lower line.
int NextCall::longest_in(char letter) const {
  int longest = no_line;
  for (const int line : lines_.lines_in(letter)) {
    const bool is_longer = longest == no_line ||
                           lines_.line(line).clock_began_at < lines_.line(longest).clock_began_at;
    if (is_longer) longest = line;
  }
  return longest;
}

ServerPacket NextCall::packet() const {
  ServerPacket next = server_packet(ServerCommand::SrvNextCall, options_.number);
  if (line_ != no_line) next.LineNo = field_byte(line_);
  return next;
}

}  // namespace lineweir::server

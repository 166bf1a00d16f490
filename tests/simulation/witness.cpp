#include "simulation/witness.h"

#include <algorithm>
#include <array>

#include "base/time_text.h"
#include "forms/picture_names.h"
#include "lines/status_letters.h"

namespace lineweir::simulation {
namespace {

using namespace std::chrono_literals;

// A report or a frame, and what the console does behind it, is through by then.
constexpr Milliseconds settled = 500ms;
// So is the first look at all lines after the link was made.
constexpr Milliseconds link_settled = 5s;

constexpr Milliseconds clock_has_ticked = 200ms;

constexpr int half_day = 12 * 3600;

// A user who cancels a dialog, and a connection that is cut while something is sent, are told as
// failures.
constexpr std::array<std::string_view, 2> expected_failures = {"Cancel was selected.",
                                                               "The socket is not connected"};

bool is_expected(const std::string& failure) {
  return std::ranges::any_of(expected_failures,
                             [&](std::string_view end) { return failure.ends_with(end); });
}

// "9:59:59" or "59:59" in seconds.
int seconds_of(const std::string& text) {
  int total = 0;
  int part = 0;
  for (const char c : text) {
    if (c == ':') {
      total = (total + part) * 60;
      part = 0;
    } else if (c >= '0' && c <= '9') {
      part = part * 10 + (c - '0');
    }
  }
  return total + part;
}

// A locked line keeps the strip that it had: red, or white where the console has only come since.
bool strip_fits(Console& console, int line) {
  const std::string& strip = console.Lineweir.DataRow(line).picture;
  const char letter = console.lines.StatusLetter(line);
  if (is_locked_on_air(letter)) return strip != pictures::DataRowGreen;
  if (is_on_air(letter)) return strip == pictures::DataRowRed;
  const bool next = console.lines.TheNextCall == line && letter == ready_letter;
  return strip == (next ? pictures::DataRowGreen : pictures::DataRowWhite);
}

}  // namespace

Witness::Witness(const EquipmentRoom& room, const ServerStandIn& server,
                 const platform::EventLoop& loop, Transcript& transcript)
    : room_(room), server_(server), loop_(loop), transcript_(transcript) {}

void Witness::look(Seat& seat) {
  Memory& memory = memories_[seat.number()];
  look_at_failures(seat, memory);
  if (!seat.running()) {
    memory.linked = false;
    memory.rows.clear();
    memory.next_call = no_line;
    memory.time_of_day.clear();
    return;
  }
  look_at_states(seat, memory);
  const bool linked = seat.linked();
  if (linked && !memory.linked) memory.linked_since = loop_.now();
  memory.linked = linked;
  if (!linked) return;
  const Milliseconds span = loop_.now() - memory.linked_since;
  if (span < link_settled) return;
  if (seat.link() == SeatLink::SerialBox) {
    if (room_.silence(seat.number()) >= settled) look_at_rows(seat, memory);
  } else if (seat.socket().silence() >= settled) {
    look_at_texts(seat);
  }
}

void Witness::look_at_hands(Seat& seat) {
  if (seat.running()) look_at_states(seat, memories_[seat.number()]);
}

void Witness::look_at_failures(Seat& seat, Memory& memory) {
  for (; memory.failures < seat.failures().size(); ++memory.failures) {
    const std::string& failure = seat.failures()[memory.failures];
    if (!is_expected(failure)) fault(seat, "a handler failed: " + failure);
  }
}

void Witness::look_at_states(Seat& seat, Memory& memory) {
  Console& console = seat.console();
  const std::string& time_of_day = console.Lineweir.RealTime.caption;
  if (!memory.time_of_day.empty()) {
    const int passed =
        (seconds_of(time_of_day) - seconds_of(memory.time_of_day) + half_day) % half_day;
    const auto most = std::chrono::ceil<std::chrono::seconds>(loop_.now() - memory.looked_at) + 2s;
    if (passed > most.count()) {
      fault(seat, "the time of day went from " + memory.time_of_day + " to " + time_of_day);
    }
  }
  memory.time_of_day = time_of_day;
  const Milliseconds last_look = memory.looked_at;
  memory.looked_at = loop_.now();
  for (int line = 0; line < console.lines.LineCount; ++line) {
    RowState now{console.lines.StatusLetter(line), console.lines.ClockBase(line),
                 console.Lineweir.LineTime(line).caption, loop_.now()};
    RowState& before = memory.rows[line];
    if (now.letter == before.letter && now.base == before.base) {
      now.since = before.since;
      now.marked_by_hand = before.marked_by_hand;
    }
    // What was seen before the clock had ticked in this state belongs to the one before.
    if (last_look - now.since >= clock_has_ticked && console.lines.ClockRunning(line) != 0 &&
        seconds_of(now.shown) < seconds_of(before.shown)) {
      fault(seat, "the clock of row " + std::to_string(line + 1) + " went from " + before.shown +
                      " to " + now.shown);
    }
    // Taken and told ready again within one turn of the clock: the row is drawn as any ready one,
    // and the choice, which is the same, isn't drawn again.
    const bool told_again = now.letter == before.letter && now.base != before.base &&
                            memory.next_call == line && console.lines.TheNextCall == line;
    if (told_again) now.marked_by_hand = true;
    before = now;
    if (console.Lineweir.NextBarDisable.checked) before.marked_by_hand = true;
  }
  const int next = console.lines.TheNextCall;
  if (console.lines.NextCallSet) {
    // The row that was picked, and the one that was the next call before.
    for (const int line : {next, memory.next_call}) {
      if (line != no_line) memory.rows[line].marked_by_hand = true;
    }
  }
  memory.next_call = next;
}

void Witness::look_at_rows(Seat& seat, const Memory& memory) {
  Console& console = seat.console();
  const int lines = std::min(console.lines.LineCount, room_.exchange().lines().line_count());
  for (int line = 0; line < lines; ++line) {
    ++rows_compared;
    const char letter = console.lines.StatusLetter(line);
    if (letters_seen.find(letter) == std::string::npos) letters_seen += letter;
    const std::string row = "row " + std::to_string(line + 1);
    if (letter != room_.expected_letter(line)) {
      fault(seat, row + " has the letter '" + letter + "' and not the exchange's '" +
                      room_.expected_letter(line) + "'");
    }
    const bool by_hand = memory.rows.at(line).marked_by_hand;
    if (!by_hand && !strip_fits(console, line)) {
      fault(seat, row + " with the letter '" + letter + "' shows the strip " +
                      console.Lineweir.DataRow(line).picture.get());
    }
  }
}

void Witness::look_at_texts(Seat& seat) {
  Console& console = seat.console();
  for (int line = 0; line < ServerStandIn::line_count; ++line) {
    ++texts_compared;
    const auto details = decode_caller_data(server_.caller_data(line));
    const std::string expected = details ? details->fields.front() : std::string();
    const std::string& shown = console.Lineweir.LineName(line).caption;
    if (trimmed(shown) != expected) {
      fault(seat, "row " + std::to_string(line + 1) + " shows \"" + shown +
                      "\" and not the server's \"" + expected + '"');
    }
  }
}

void Witness::look_at_log(Seat& seat) {
  if (seat.link() != SeatLink::SerialBox) return;
  const std::map<std::string, int> logged = seat.logged();
  std::set<std::string> on_lines = memories_[seat.number()].gone_with_console;
  if (seat.running()) {
    LineTable& lines = seat.console().lines;
    for (int line = 0; line < lines.LineCount; ++line) {
      on_lines.emplace(trimmed(lines.CallerData(line)[CallerField::CallerName]));
    }
  }
  memories_[seat.number()].calls_logged = static_cast<int>(logged.size());
  for (const std::string& name : seat.entered) {
    const auto found = logged.find(name);
    const int times = found == logged.end() ? 0 : found->second;
    if (times > 1 || (times == 0 && !on_lines.contains(name))) {
      fault(seat, name + " is in the log " + std::to_string(times) + " times");
    }
  }
}

int Witness::calls_logged() const {
  int calls = 0;
  for (const auto& [number, memory] : memories_) calls += memory.calls_logged;
  return calls;
}

void Witness::forget(Seat& seat) {
  if (!seat.running()) return;
  LineTable& lines = seat.console().lines;
  for (int line = 0; line < lines.LineCount; ++line) {
    memories_[seat.number()].gone_with_console.emplace(
        trimmed(lines.CallerData(line)[CallerField::CallerName]));
  }
}

void Witness::fault(const Seat& seat, const std::string& what) {
  transcript_.add("witness", seat.name() + ": " + what);
  faults_.push_back(exchange::format_seconds(loop_.now()) + ' ' + seat.name() + ": " + what);
}

}  // namespace lineweir::simulation

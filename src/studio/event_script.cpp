#include "studio/event_script.h"

#include <algorithm>
#include <iterator>

#include "exchange/command_word.h"
#include "exchange/switchboard.h"
#include "studio/timed_script.h"

namespace lineweir::studio {
namespace {

using Kind = StudioEvent::Kind;

enum class Arguments { None, Line, LineAndLetter, Word };

struct EventName {
  std::string_view name;
  Kind kind;
  Arguments arguments;
};

constexpr EventName event_names[] = {
    {"call", Kind::Call, Arguments::Line},        {"hangup", Kind::HangUp, Arguments::Line},
    {"busy", Kind::Busy, Arguments::Line},        {"idle", Kind::Idle, Arguments::Line},
    {"set", Kind::Set, Arguments::LineAndLetter}, {"word", Kind::Word, Arguments::Word},
    {"quit", Kind::Quit, Arguments::None},
};

std::size_t count_of(Arguments arguments) {
  switch (arguments) {
    case Arguments::None:
      return 0;
    case Arguments::Line:
    case Arguments::Word:
      return 1;
    case Arguments::LineAndLetter:
      return 2;
  }
  return 0;
}

std::optional<int> parse_line(std::string_view text, int line_count) {
  if (text.empty() || text.size() > 2) return std::nullopt;
  int line = 0;
  for (const char character : text) {
    if (character < '0' || character > '9') return std::nullopt;
    line = line * 10 + (character - '0');
  }
  if (line >= line_count) return std::nullopt;
  return line;
}

std::string quoted(std::string_view text) { return '"' + std::string(text) + '"'; }

std::optional<TimedEvent> parse_event(Moment at, const std::vector<std::string_view>& words,
                                      int line_count, std::string& error) {
  const auto fail = [&error](std::string reason) {
    error = std::move(reason);
    return std::nullopt;
  };
  if (words.empty()) return fail("an event is missing behind the time");

  const auto* const name =
      std::find_if(std::begin(event_names), std::end(event_names),
                   [&](const EventName& candidate) { return candidate.name == words[0]; });
  if (name == std::end(event_names)) return fail("there is no event " + quoted(words[0]));
  if (words.size() - 1 != count_of(name->arguments)) {
    return fail(quoted(words[0]) + " takes " + std::to_string(count_of(name->arguments)) +
                " argument(s), not " + std::to_string(words.size() - 1));
  }

  StudioEvent event{name->kind};
  if (name->arguments == Arguments::Line || name->arguments == Arguments::LineAndLetter) {
    const auto line = parse_line(words[1], line_count);
    if (!line) {
      return fail(quoted(words[1]) + " is not a line from 0 to " + std::to_string(line_count - 1));
    }
    event.line = *line;
  }
  if (name->arguments == Arguments::LineAndLetter) {
    if (words[2].size() != 1 || status_letters.find(words[2]) == std::string_view::npos) {
      return fail(quoted(words[2]) + " is not a status letter of " + std::string(status_letters));
    }
    event.letter = words[2][0];
  }
  if (name->arguments == Arguments::Word) {
    if (!parse_word(words[1])) return fail(quoted(words[1]) + " is not a command word");
    event.word = words[1];
  }
  return TimedEvent{at, std::move(event)};
}

}  // namespace

std::optional<std::vector<TimedEvent>> parse_script(std::string_view text, std::string_view name,
                                                    int line_count, std::string& error) {
  return parse_timed_script<TimedEvent>(
      text, name,
      [line_count](Moment at, const auto& words, std::string& reason) {
        return parse_event(at, words, line_count, reason);
      },
      error);
}

std::optional<std::vector<TimedEvent>> read_script(const std::string& path, int line_count,
                                                   std::string& error) {
  const auto text = script_text(path, error);
  if (!text) return std::nullopt;
  return parse_script(*text, path, line_count, error);
}

}  // namespace lineweir::studio

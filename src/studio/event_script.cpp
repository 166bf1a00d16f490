#include "studio/event_script.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>

#include "studio/command_word.h"
#include "studio/switchboard.h"

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

std::vector<std::string_view> split_words(std::string_view line) {
  constexpr std::string_view blanks = " \t\r";
  std::vector<std::string_view> words;
  for (std::size_t end = 0;;) {
    const std::size_t begin = line.find_first_not_of(blanks, end);
    if (begin == std::string_view::npos) return words;
    end = std::min(line.find_first_of(blanks, begin), line.size());
    words.push_back(line.substr(begin, end - begin));
  }
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

// The event of one line, or nothing with the reason in `error`.
std::optional<TimedEvent> parse_event(const std::vector<std::string_view>& words, int line_count,
                                      std::string& error) {
  const auto fail = [&error](std::string reason) {
    error = std::move(reason);
    return std::nullopt;
  };
  const auto at = parse_seconds(words[0]);
  if (!at) return fail(quoted(words[0]) + " is not a time in seconds");
  if (words.size() < 2) return fail("an event is missing behind the time");

  const auto* const name =
      std::find_if(std::begin(event_names), std::end(event_names),
                   [&](const EventName& candidate) { return candidate.name == words[1]; });
  if (name == std::end(event_names)) return fail("there is no event " + quoted(words[1]));
  if (words.size() - 2 != count_of(name->arguments)) {
    return fail(quoted(words[1]) + " takes " + std::to_string(count_of(name->arguments)) +
                " argument(s), not " + std::to_string(words.size() - 2));
  }

  StudioEvent event{name->kind};
  if (name->arguments == Arguments::Line || name->arguments == Arguments::LineAndLetter) {
    const auto line = parse_line(words[2], line_count);
    if (!line) {
      return fail(quoted(words[2]) + " is not a line from 0 to " + std::to_string(line_count - 1));
    }
    event.line = *line;
  }
  if (name->arguments == Arguments::LineAndLetter) {
    if (words[3].size() != 1 || status_letters.find(words[3]) == std::string_view::npos) {
      return fail(quoted(words[3]) + " is not a status letter of " + std::string(status_letters));
    }
    event.letter = words[3][0];
  }
  if (name->arguments == Arguments::Word) {
    if (!parse_word(words[2])) return fail(quoted(words[2]) + " is not a command word");
    event.word = words[2];
  }
  return TimedEvent{*at, std::move(event)};
}

}  // namespace

std::optional<std::vector<TimedEvent>> parse_script(std::string_view text, std::string_view name,
                                                    int line_count, std::string& error) {
  std::vector<TimedEvent> events;
  int number = 0;
  while (!text.empty()) {
    ++number;
    const std::size_t end = std::min(text.find('\n'), text.size());
    const auto words = split_words(text.substr(0, end));
    text.remove_prefix(std::min(end + 1, text.size()));
    if (words.empty() || words[0].front() == '#') continue;
    auto event = parse_event(words, line_count, error);
    if (!event) {
      error = std::string(name) + ':' + std::to_string(number) + ": " + error;
      return std::nullopt;
    }
    events.push_back(std::move(*event));
  }
  std::stable_sort(events.begin(), events.end(),
                   [](const TimedEvent& a, const TimedEvent& b) { return a.at < b.at; });
  return events;
}

std::optional<std::vector<TimedEvent>> read_script(const std::string& path, int line_count,
                                                   std::string& error) {
  std::ifstream file(path, std::ios::binary);
  if (!file || std::filesystem::is_directory(path)) {
    error = path + ": can't be read";
    return std::nullopt;
  }
  const std::string text{std::istreambuf_iterator<char>(file), {}};
  return parse_script(text, path, line_count, error);
}

}  // namespace lineweir::studio

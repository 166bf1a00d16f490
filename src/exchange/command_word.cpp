#include "exchange/command_word.h"

namespace lineweir::exchange {
namespace {

struct PlainWord {
  std::string_view text;
  Action action;
};

constexpr PlainWord plain_words[] = {
    {"M", Action::MonitorOn},
    {"X", Action::Noted},
    {"R", Action::Noted},
};

struct NumberedWord {
  char letter;
  int lowest;
  int highest;
  Action action;
};

// The first row that fits counts.
constexpr NumberedWord numbered_words[] = {
    {'F', 0, 19, Action::DropLine},
    {'H', 0, 19, Action::HoldLine},
    {'S', 0, 19, Action::ScreenLine},
    {'N', 0, 19, Action::AirOnMain},
    {'C', 0, 19, Action::AirOnConference},
    {'L', 0, 19, Action::ToggleLock},
    {'P', release_number, release_number, Action::ReleasePosition1},
    {'P', 0, 19, Action::ToPosition1},
    {'P', 20, 29, Action::Tone},
    {'P', 31, 32, Action::Tone},
    {'O', release_number, release_number, Action::ReleasePosition2},
    {'O', 0, 19, Action::ToPosition2},
    {'O', 20, 29, Action::Tone},
    {'O', 31, 32, Action::Tone},
    {'T', 0, 12, Action::Tone},
    {'Z', 0, 11, Action::Tone},
    {'V', 0, 99, Action::Noted},
};

// The value of one or two decimal digits.
std::optional<int> digits_value(std::string_view text) {
  if (text.empty() || text.size() > 2) return std::nullopt;
  int value = 0;
  for (const char character : text) {
    if (character < '0' || character > '9') return std::nullopt;
    value = value * 10 + (character - '0');
  }
  return value;
}

// Behind "Q0" stands the plain decimal text of the line, so that "Q05" is line 5, "Q010" line 10.
std::optional<CommandWord> parse_query(std::string_view index) {
  const auto line = digits_value(index);
  if (!line || *line > 19 || (index.size() == 2 && *line < 10)) return std::nullopt;
  return CommandWord{Action::QueryLine, *line};
}

}  // namespace

std::optional<CommandWord> parse_word(std::string_view text) {
  for (const auto& word : plain_words) {
    if (text == word.text) return CommandWord{word.action, 0};
  }
  if (text.substr(0, 2) == "Q0") return parse_query(text.substr(2));
  if (text.size() != 3) return std::nullopt;
  const auto number = digits_value(text.substr(1));
  if (!number) return std::nullopt;
  for (const auto& word : numbered_words) {
    if (text[0] == word.letter && *number >= word.lowest && *number <= word.highest) {
      return CommandWord{word.action, *number};
    }
  }
  return std::nullopt;
}

bool names_line(Action action) {
  switch (action) {
    case Action::QueryLine:
    case Action::DropLine:
    case Action::HoldLine:
    case Action::ScreenLine:
    case Action::AirOnMain:
    case Action::AirOnConference:
    case Action::ToggleLock:
    case Action::ToPosition1:
    case Action::ToPosition2:
      return true;
    case Action::MonitorOn:
    case Action::ReleasePosition1:
    case Action::ReleasePosition2:
    case Action::Tone:
    case Action::Noted:
      return false;
  }
  return false;
}

}  // namespace lineweir::exchange

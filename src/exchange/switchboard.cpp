#include "exchange/switchboard.h"

namespace lineweir::exchange {
namespace {

constexpr char busy_letter = 'B';

// A lock is taken and given back by the same word.
struct LockPair {
  char from;
  char to;
};
constexpr LockPair lock_pairs[] = {{'N', 'L'}, {'L', 'N'}, {'C', 'K'}, {'K', 'C'}};

bool is_position(char letter) {
  return letter == 'P' || letter == 'O' ||
         static_cast<unsigned char>(letter) >= first_position_code;
}

}  // namespace

Switchboard::Switchboard(int line_count)
    : letters_(static_cast<std::size_t>(line_count), idle_letter) {}

char Switchboard::letter(int line) const {
  return has_line(line) ? letters_[static_cast<std::size_t>(line)] : idle_letter;
}

std::optional<int> Switchboard::find(char letter) const {
  const std::size_t place = letters_.find(letter);
  if (place == std::string::npos) return std::nullopt;
  return static_cast<int>(place);
}

LineChanges Switchboard::obey(CommandWord word) {
  const int line = word.number;
  switch (word.action) {
    case Action::DropLine:
      return change(line, idle_letter);
    case Action::HoldLine:
      return is_in_use(line) ? change(line, 'H') : LineChanges{};
    case Action::ScreenLine:
      return is_in_use(line) ? change(line, 'S') : LineChanges{};
    case Action::AirOnMain:
      return can_be_taken(line) ? change(line, 'N') : LineChanges{};
    case Action::AirOnConference:
      return can_be_taken(line) ? change(line, 'C') : LineChanges{};
    case Action::ToPosition1:
      return can_be_taken(line) ? change(line, 'P') : LineChanges{};
    case Action::ToPosition2:
      return can_be_taken(line) ? change(line, 'O') : LineChanges{};
    case Action::ToggleLock:
      for (const auto& pair : lock_pairs) {
        if (letter(line) == pair.from) return change(line, pair.to);
      }
      return {};
    case Action::ReleasePosition1:
      return release('P');
    case Action::ReleasePosition2:
      return release('O');
    case Action::MonitorOn:
    case Action::QueryLine:
    case Action::Tone:
    case Action::Noted:
      return {};
  }
  return {};
}

LineChanges Switchboard::take_to_position(int line, int position) {
  if (position < 0 || position >= most_positions || !can_be_taken(line)) return {};
  return change(line, static_cast<char>(first_position_code + position));
}

LineChanges Switchboard::ring(int line) {
  return letter(line) == idle_letter ? change(line, ringing_letter) : LineChanges{};
}

LineChanges Switchboard::hang_up(int line) {
  return is_in_use(line) ? change(line, idle_letter) : LineChanges{};
}

LineChanges Switchboard::make_busy(int line) {
  return letter(line) == idle_letter ? change(line, busy_letter) : LineChanges{};
}

LineChanges Switchboard::end_busy(int line) {
  return letter(line) == busy_letter ? change(line, idle_letter) : LineChanges{};
}

LineChanges Switchboard::set_letter(int line, char letter) {
  return status_letters.find(letter) != std::string_view::npos ? change(line, letter)
                                                               : LineChanges{};
}

LineChanges Switchboard::change(int line, char letter) {
  if (!has_line(line) || this->letter(line) == letter) return {};
  LineChanges changes;
  if (is_position(letter)) {
    if (const auto displaced = find(letter)) changes = change(*displaced, 'H');
  }
  letters_[static_cast<std::size_t>(line)] = letter;
  changes.push_back({line, letter});
  return changes;
}

LineChanges Switchboard::release(char position) {
  const auto line = find(position);
  return line ? change(*line, idle_letter) : LineChanges{};
}

bool Switchboard::is_in_use(int line) const {
  return letter(line) != idle_letter && letter(line) != busy_letter;
}

bool Switchboard::can_be_taken(int line) const { return letter(line) != busy_letter; }

std::string status_item(int line, char letter) {
  return {letter, static_cast<char>('0' + line / 10 % 10), static_cast<char>('0' + line % 10)};
}

}  // namespace lineweir::exchange

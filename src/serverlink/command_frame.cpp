#include "serverlink/command_frame.h"

#include <array>
#include <string>

#include "base/text.h"
#include "lines/equipment_kinds.h"

namespace lineweir {
namespace {

constexpr std::size_t length_with_line = 3;

enum class AltInfoOf { None, Zero, One, LineState };

struct WordRule {
  char letter;
  AltInfoOf alt_info;
  bool carries_bank;
  // The letter that the server gets: the conference hybrid and handset position 2 are told by
  // AltInfo alone.
  char sent_letter;
  bool handset;
};

constexpr std::array word_rules = {
    WordRule{'F', AltInfoOf::LineState, true, 'F', false},
    WordRule{'H', AltInfoOf::LineState, true, 'H', false},
    WordRule{'S', AltInfoOf::LineState, true, 'S', false},
    WordRule{'V', AltInfoOf::LineState, true, 'V', false},
    WordRule{'N', AltInfoOf::Zero, true, 'N', false},
    WordRule{'C', AltInfoOf::One, true, 'N', false},
    WordRule{'P', AltInfoOf::Zero, true, 'P', true},
    WordRule{'O', AltInfoOf::One, true, 'P', true},
};

constexpr WordRule rule_of(char letter) {
  for (const auto& rule : word_rules) {
    if (rule.letter == letter) return rule;
  }
  return {letter, AltInfoOf::None, false, letter, false};
}

// Where the caller on the line is now, as the server counts it.
struct LineStateValue {
  char letter;
  std::uint8_t value;
};

constexpr std::array line_state_values = {LineStateValue{'N', 65}, LineStateValue{'C', 66},
                                          LineStateValue{'P', 0}, LineStateValue{'O', 1}};

std::uint8_t line_state_value(const LineTable& lines, int line) {
  if (line < 0 || line >= lines.LineCount) return no_value;
  for (const auto& state : line_state_values) {
    if (state.letter == lines.StatusLetter(line)) return state.value;
  }
  return no_value;
}

int number_at_end(std::string_view word) { return leading_number(right_part(word, 2)); }

int line_of(std::string_view word, const WordRule& rule) {
  if (rule.handset) return number_at_end(word);
  return word.size() == length_with_line ? leading_number(word.substr(1)) : no_value;
}

std::uint8_t alt_info_of(const WordRule& rule, const LineTable& lines, int line) {
  switch (rule.alt_info) {
    case AltInfoOf::Zero:
      return 0;
    case AltInfoOf::One:
      return 1;
    case AltInfoOf::LineState:
      return line_state_value(lines, line);
    case AltInfoOf::None:
      break;
  }
  return no_value;
}

ServerPacket packet_with_letter(ClientCommand command, const CommandContext& context,
                                std::string_view letter) {
  ServerPacket packet = client_packet(command, context.GroupNumber, context.ConsoleNumber);
  // One, even where there is no letter to send.
  packet.Size = {0, 1};
  packet.Buffer = letter;
  return packet;
}

std::string_view dial_digit(int number) {
  constexpr std::string_view digits = "0123456789*#";
  if (number < 0 || static_cast<std::size_t>(number) >= digits.size()) return {};
  return digits.substr(static_cast<std::size_t>(number), 1);
}

std::optional<ServerPacket> digit_frame(std::string_view word, int bank,
                                        const CommandContext& context) {
  const DialState& dial = context.dial;
  const int line = dial.DialSeizeLine != no_line ? dial.DialSeizeLine : dial.DialLine;
  if (line == no_line) return std::nullopt;
  ServerPacket packet =
      packet_with_letter(ClientCommand::CmdDialDigit, context, dial_digit(number_at_end(word)));
  packet.LineNo = field_byte(line);
  packet.Bank = field_byte(bank);
  return packet;
}

ServerPacket line_frame(std::string_view word, int bank, const CommandContext& context) {
  const WordRule rule = rule_of(word.empty() ? '\0' : word.front());
  const int line = line_of(word, rule);
  const std::string_view letter(&rule.sent_letter, word.empty() ? 0 : 1);
  ServerPacket packet = packet_with_letter(ClientCommand::CmdLineCommand, context, letter);
  packet.LineNo = field_byte(line);
  packet.AltInfo = alt_info_of(rule, context.lines, line);
  bool carries_bank = rule.carries_bank;
  if (server_decides(context.lines.ThePhoneFlag) && (rule.handset || context.ScreenerMode)) {
    packet.AltInfo = packet.Console;
    carries_bank = !rule.handset;
  }
  if (carries_bank) packet.Bank = field_byte(bank);
  return packet;
}

}  // namespace

std::optional<ServerPacket> command_frame(std::string_view word, int bank,
                                          const CommandContext& context) {
  word = trimmed(word);
  if (word.starts_with('Z')) return digit_frame(word, bank, context);
  return line_frame(word, bank, context);
}

}  // namespace lineweir

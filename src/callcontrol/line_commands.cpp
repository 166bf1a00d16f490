#include "callcontrol/line_commands.h"

namespace lineweir {
namespace {

bool fits(SeatRole role, const Seat& seat) {
  return role == SeatRole::Either || (role == SeatRole::Talent) == seat.talent;
}

bool fits(unsigned kinds, const Seat& seat) { return is_of(seat.equipment_kind, kinds); }

bool fits(HandsetPosition handset, const Seat& seat) {
  switch (handset) {
    case HandsetPosition::First:
      return seat.handset_1;
    case HandsetPosition::Second:
      return seat.handset_2;
    case HandsetPosition::Any:
      break;
  }
  return true;
}

}  // namespace

std::optional<CommandWord> line_command(std::span<const LineCommandRule> rules, const Seat& seat,
                                        char line_letter, int line) {
  for (const LineCommandRule& rule : rules) {
    const bool letter_fits = rule.line_letter == any_letter || rule.line_letter == line_letter;
    if (letter_fits && fits(rule.role, seat) && fits(rule.kinds, seat) &&
        fits(rule.handset, seat)) {
      return CommandWord{numbered_word(rule.word_letter, line), rule.bank};
    }
  }
  return std::nullopt;
}

std::optional<CommandWord> fixed_command(std::span<const FixedCommandRule> rules,
                                         const Seat& seat) {
  for (const FixedCommandRule& rule : rules) {
    if (fits(rule.role, seat) && fits(rule.kinds, seat) && fits(rule.handset, seat)) {
      return CommandWord{std::string(rule.word), rule.bank};
    }
  }
  return std::nullopt;
}

}  // namespace lineweir

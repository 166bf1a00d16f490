#include "callcontrol/row_words.h"

#include <span>

#include "state/console_state.h"

namespace lineweir {
namespace {

std::optional<CommandWord> row_word(std::span<const LineCommandRule> rules,
                                    const ConsoleState& state, int line) {
  const char letter = state.lines.StatusLetter(line);
  if (!may_be_commanded(letter, state.program.EmptyLineOverride)) return std::nullopt;
  return line_command(rules, seat_of(state), letter, line);
}

}  // namespace

std::optional<CommandWord> main_row_word(const ConsoleState& state, int line) {
  return row_word(main_row_rules, state, line);
}

std::optional<CommandWord> conference_row_word(const ConsoleState& state, int line) {
  return row_word(conference_row_rules, state, line);
}

}  // namespace lineweir

#pragma once

#include <array>
#include <optional>
#include <span>
#include <string>

#include "lines/equipment_kinds.h"
#include "link/command_word.h"
#include "state/seat.h"

namespace lineweir {

// A line that other equipment has taken isn't commanded, unless the program was started so.
constexpr bool may_be_commanded(char line_letter, bool empty_line_override) {
  return line_letter != 'E' || empty_line_override;
}

enum class SeatRole { Talent, Producer, Either };
enum class HandsetPosition { Any, First, Second };

constexpr char any_letter = '*';

// A button's word for a line: what must hold of the seat and of the line's letter, and the word's
// letter and bank.
struct LineCommandRule {
  SeatRole role;
  unsigned kinds;
  char line_letter;
  HandsetPosition handset;
  char word_letter;
  int bank;
};

// The rules of a button are read from the top; the first that fits holds. Where none fits there is
// no word.

// The main button of a row. With equipment of kind 3 the producer's handset is on the conference
// hybrid.
inline constexpr std::array main_row_rules = {
    LineCommandRule{SeatRole::Talent, kinds_locking_on_air, 'N', HandsetPosition::Any, 'L',
                    bank_main},
    LineCommandRule{SeatRole::Talent, any_kind, any_letter, HandsetPosition::Any, 'N', bank_main},
    LineCommandRule{SeatRole::Producer, kinds_with_one_handset, any_letter, HandsetPosition::Any,
                    'P', bank_main},
    LineCommandRule{SeatRole::Producer, kinds_with_two_handsets, any_letter,
                    HandsetPosition::Second, 'O', bank_main},
    LineCommandRule{SeatRole::Producer, kinds_with_two_handsets, any_letter, HandsetPosition::First,
                    'P', bank_main},
    LineCommandRule{SeatRole::Producer, kinds_with_conference_handset, any_letter,
                    HandsetPosition::First, 'C', bank_conference},
};

// The conference button of a row; the producer's picks the next call instead, and sends a word with
// equipment of kind 4 only.
inline constexpr std::array conference_row_rules = {
    LineCommandRule{SeatRole::Talent, kinds_locking_on_air, 'C', HandsetPosition::Any, 'L',
                    bank_conference},
    LineCommandRule{SeatRole::Talent, any_kind, any_letter, HandsetPosition::Any, 'C',
                    bank_conference},
    LineCommandRule{SeatRole::Producer, kinds_of_deciding_server, any_letter, HandsetPosition::Any,
                    'P', bank_conference},
};

// The large buttons act on each line whose row button is visible. Drop1 and Hold1 differ in the
// letter of their word only.
constexpr auto main_sweep_rules(char word) {
  return std::array{
      LineCommandRule{SeatRole::Talent, all_but(kinds_of_deciding_server), 'N',
                      HandsetPosition::Any, word, bank_main},
      LineCommandRule{SeatRole::Producer, all_but(kinds_of_deciding_server), 'P',
                      HandsetPosition::First, word, bank_main},
      LineCommandRule{SeatRole::Producer, all_but(kinds_of_deciding_server), 'O',
                      HandsetPosition::Second, word, bank_main},
      LineCommandRule{SeatRole::Producer, kinds_with_conference_handset, 'C',
                      HandsetPosition::First, word, bank_conference},
  };
}
inline constexpr auto drop1_rules = main_sweep_rules('F');
inline constexpr auto hold1_rules = main_sweep_rules('H');

inline constexpr std::array drop2_rules = {
    LineCommandRule{SeatRole::Talent, all_but(kinds_of_deciding_server), 'C', HandsetPosition::Any,
                    'F', bank_conference},
};
inline constexpr std::array hold2_rules = {
    LineCommandRule{SeatRole::Either, all_but(kinds_of_deciding_server), 'C', HandsetPosition::Any,
                    'H', bank_conference},
};

// Words that name no line.
struct FixedCommandRule {
  SeatRole role;
  unsigned kinds;
  HandsetPosition handset;
  std::string_view word;
  int bank;
};

// With equipment of kind 4 the server knows the lines. The producer's Drop2 releases the handset.
inline constexpr std::array drop1_fixed = {FixedCommandRule{
    SeatRole::Either, kinds_of_deciding_server, HandsetPosition::Any, "F00", bank_main}};
inline constexpr std::array hold1_fixed = {FixedCommandRule{
    SeatRole::Either, kinds_of_deciding_server, HandsetPosition::Any, "H00", bank_main}};
inline constexpr std::array drop2_fixed = {
    FixedCommandRule{SeatRole::Either, kinds_of_deciding_server, HandsetPosition::Any, "F00",
                     bank_conference},
    FixedCommandRule{SeatRole::Producer, all_but(kinds_of_deciding_server), HandsetPosition::First,
                     "P15", bank_conference},
    FixedCommandRule{SeatRole::Producer, all_but(kinds_of_deciding_server), HandsetPosition::Any,
                     "O15", bank_conference},
};
inline constexpr std::array hold2_fixed = {FixedCommandRule{
    SeatRole::Either, kinds_of_deciding_server, HandsetPosition::Any, "H00", bank_conference}};

std::optional<CommandWord> line_command(std::span<const LineCommandRule> rules, const Seat& seat,
                                        char line_letter, int line);
std::optional<CommandWord> fixed_command(std::span<const FixedCommandRule> rules, const Seat& seat);

}  // namespace lineweir

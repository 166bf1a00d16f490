#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "exchange/command_word.h"
#include "exchange/exchange.h"
#include "lines/equipment_kinds.h"

namespace lineweir::exchange {

// The letters in which the equipment reports a line, F for one with nothing on it.
inline constexpr std::string_view status_letters = "FRSHPOENCLKYB";
inline constexpr char idle_letter = 'F';
inline constexpr char ringing_letter = 'R';

// Numbered handset positions, from 0.
inline constexpr int most_positions = 256 - first_position_code;

using LineChanges = std::vector<LineChange>;

// The lines of the studio and what can happen to them. Every operation gives the changes that it
// made, in order; one that does not fit the state of its line changes nothing. Lines out of range
// are lines with nothing to change.
//
// A hybrid takes any number of lines. A handset position (P, O, or a numbered one) takes one: the
// line that was there goes on hold.
class Switchboard {
 public:
  explicit Switchboard(int line_count);

  int line_count() const { return static_cast<int>(letters_.size()); }
  bool has_line(int line) const { return line >= 0 && line < line_count(); }
  char letter(int line) const;  // idle_letter for a line out of range

  // The lowest line that shows the letter.
  std::optional<int> find(char letter) const;

  // A command word. N, C, P and O seize an idle line for dialling out; a line made busy takes
  // nothing but a drop.
  LineChanges obey(CommandWord word);
  // A line goes to a numbered handset position, from 0.
  LineChanges take_to_position(int line, int position);

  LineChanges ring(int line);                     // a call comes in on an idle line
  LineChanges hang_up(int line);                  // the caller goes, wherever the line is
  LineChanges make_busy(int line);                // an idle line is taken out of service
  LineChanges end_busy(int line);                 // and put back
  LineChanges set_letter(int line, char letter);  // whatever the line was; only a status letter

 private:
  LineChanges change(int line, char letter);
  LineChanges release(char position);
  bool is_in_use(int line) const;
  bool can_be_taken(int line) const;

  std::string letters_;
};

// A status item: the letter and the line in two digits, as in "N05".
std::string status_item(int line, char letter);

}  // namespace lineweir::exchange

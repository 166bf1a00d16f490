#pragma once

#include <functional>
#include <optional>
#include <span>
#include <string_view>

#include "callcontrol/line_commands.h"
#include "elements/control.h"
#include "elements/control_array.h"
#include "elements/picture.h"

namespace lineweir {

struct Console;

// The controls that act on one line or on a hybrid: the two buttons of each row, the drop and hold
// buttons, the double and right clicks on a row. They only send command words: what a button does
// shows when the equipment reports it.
class LineActions {
 public:
  explicit LineActions(Console& console);

  void OnHybrid1_Click(int Index);
  void OnHybrid2_Click(int Index);
  void Drop1_Click();
  void Drop2_Click();
  void Hold1_Click();
  void Hold2_Click();

  // A double click on any text of a row presses its main button or, where that is disabled, its
  // conference button.
  void row_dbl_click(std::string_view element, int Index);
  // The right button on any text of a row opens the line's caller data.
  void row_mouse_up(std::string_view element, int Index, int Button);

  // What this seat's buttons mean: its role, and the handset position or the phone at which it
  // works.
  Seat seat() const;

  // The word of a row button; nothing for a line that may not be commanded.
  std::optional<CommandWord> main_row_word(int line) const;
  std::optional<CommandWord> conference_row_word(int line) const;

  // Whether a press of that drop, hold or row button would do anything now.
  bool finds_work(const Control& button) const;

 private:
  bool phone_chosen() const;
  // What a drop or hold button sends: the fixed word or, where there is none, a word for each line
  // whose row button is visible.
  struct Sweep {
    std::span<const FixedCommandRule> fixed;
    std::span<const LineCommandRule> rules;
    const ControlArray<Picture>& row_buttons;
  };
  std::optional<Sweep> sweep_of(const Control& button) const;
  bool sweeps_any(const Sweep& sweep) const;
  std::optional<CommandWord> row_word(std::span<const LineCommandRule> rules, int line) const;
  void send(const std::optional<CommandWord>& command);
  void sweep(std::string_view handler, const Control& button);

  Console& console_;
};

}  // namespace lineweir

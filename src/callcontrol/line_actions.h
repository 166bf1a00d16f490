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

class CallerDataEntry;
class NextCaller;
class PhoneCommands;
struct ConsoleState;

// The controls that act on one line or on a hybrid: the two buttons of each row, the drop and hold
// buttons, the double and right clicks on a row. They only send command words: what a button does
// shows when the equipment reports it.
class LineActions {
 public:
  LineActions(ConsoleState& state, PhoneCommands& phone, CallerDataEntry& caller_data,
              NextCaller& next_caller);

  // Whether a press of that drop, hold or row button would do anything now.
  bool finds_work(const Control& button) const;

 private:
  void OnHybrid2_Click(int Index);
  void OnHybrid1_Click(int Index);
  // A double click on any text of a row presses its main button or, where that is disabled, its
  // conference button.
  void row_dbl_click(int Index);

  // What a drop or hold button sends: the fixed word or, where there is none, a word for each line
  // whose row button is visible.
  struct Sweep {
    std::span<const FixedCommandRule> fixed;
    std::span<const LineCommandRule> rules;
    const ControlArray<Picture>& row_buttons;
  };
  std::optional<Sweep> sweep_of(const Control& button) const;
  bool sweeps_any(const Sweep& sweep) const;
  void send(const std::optional<CommandWord>& command);
  void sweep(const Control& button);

  ConsoleState& state_;
  PhoneCommands& phone_;
  CallerDataEntry& caller_data_;
  NextCaller& next_caller_;
};

}  // namespace lineweir

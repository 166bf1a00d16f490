#include "callcontrol/line_actions.h"

#include <string>

#include "callcontrol/next_caller.h"
#include "callcontrol/phone_command.h"
#include "callcontrol/row_words.h"
#include "callerdata/caller_data.h"
#include "forms/columns.h"
#include "lines/status_letters.h"
#include "state/console_state.h"
#include "state/guard.h"
#include "state/wire.h"

namespace lineweir {

LineActions::LineActions(ConsoleState& state, PhoneCommands& phone, CallerDataEntry& caller_data,
                         NextCaller& next_caller)
    : state_(state), phone_(phone), caller_data_(caller_data), next_caller_(next_caller) {
  MainForm& form = state.Lineweir;
  form.OnHybrid1.wire_each([this](Picture& button) {
    wire(button.on_click, state_.trace, "Lineweir_OnHybrid1_Click",
         [this, line = button.index()] { OnHybrid1_Click(line); });
  });
  form.OnHybrid2.wire_each([this](Picture& button) {
    wire(button.on_click, state_.trace, "Lineweir_OnHybrid2_Click",
         [this, line = button.index()] { OnHybrid2_Click(line); });
  });
  for (Picture* button : {&form.Drop1, &form.Drop2, &form.Hold1, &form.Hold2}) {
    wire(button->on_click, state_.trace, "Lineweir_" + button->name() + "_Click",
         [this, button] { sweep(*button); });
  }

  const auto answer_dbl_click = [this](Control& part, const std::string& element) {
    wire(part.on_dbl_click, state_.trace, "Lineweir_" + element + "_DblClick",
         [this, line = part.index()] { row_dbl_click(line); });
  };
  for (int column = 0; column < column_count; ++column) {
    // The user's own column doesn't answer to clicks.
    if (column == user_column) continue;
    ControlArray<Label>& labels = form.column_labels(column);
    labels.wire_each([this, answer_dbl_click, element = labels.name()](Label& label) {
      answer_dbl_click(label, element);
      // The right button on any text of a row opens the line's caller data.
      wire(label.on_mouse_up, state_.trace, "Lineweir_" + element + "_MouseUp",
           [this, line = label.index()](int button, int) {
             if (button == right_button) caller_data_.show_for_line(line);
           });
    });
  }
  // The image covers the strip and forwards to it.
  for (ControlArray<Picture>* strips : {&form.DataRow, &form.DataRowImage}) {
    strips->wire_each([answer_dbl_click](Picture& strip) { answer_dbl_click(strip, "DataRow"); });
  }
}

void LineActions::OnHybrid1_Click(int Index) {
  const MainForm& form = state_.Lineweir;
  const auto command = main_row_word(state_, Index);
  const bool answers =
      !form.StudioMode.checked && state_.lines.StatusLetter(Index) == ringing_letter;
  if (answers && form.AutoDataEntry.checked) caller_data_.show_for_line(Index);
  send(command);
}

void LineActions::OnHybrid2_Click(int Index) {
  if (state_.Lineweir.StudioMode.checked) {
    send(conference_row_word(state_, Index));
  } else {
    next_caller_.pick_by_hand(Index);
  }
}

void LineActions::row_dbl_click(int Index) {
  for (const Picture* button :
       {&state_.Lineweir.OnHybrid1(Index), &state_.Lineweir.OnHybrid2(Index)}) {
    if (button->enabled) return button->on_click();
  }
}

void LineActions::send(const std::optional<CommandWord>& command) {
  if (phone_.refuse_locked_key()) return;
  if (command) phone_.PhoneCommand(command->word, command->bank);
}

std::optional<LineActions::Sweep> LineActions::sweep_of(const Control& button) const {
  const MainForm& form = state_.Lineweir;
  if (&button == &form.Drop1) return Sweep{drop1_fixed, drop1_rules, form.OnHybrid1};
  if (&button == &form.Drop2) return Sweep{drop2_fixed, drop2_rules, form.OnHybrid2};
  if (&button == &form.Hold1) return Sweep{hold1_fixed, hold1_rules, form.OnHybrid1};
  if (&button == &form.Hold2) return Sweep{hold2_fixed, hold2_rules, form.OnHybrid2};
  return std::nullopt;
}

void LineActions::sweep(const Control& button) {
  const auto sweep = sweep_of(button);
  if (!sweep) return;
  if (const auto word = fixed_command(sweep->fixed, seat_of(state_))) return send(word);
  for (int line = 0; line < state_.lines.LineCount; ++line) {
    if (!sweep->row_buttons(line).visible) continue;
    send(line_command(sweep->rules, seat_of(state_), state_.lines.StatusLetter(line), line));
  }
}

bool LineActions::sweeps_any(const Sweep& sweep) const {
  if (fixed_command(sweep.fixed, seat_of(state_))) return true;
  for (int line = 0; line < state_.lines.LineCount; ++line) {
    if (!sweep.row_buttons(line).visible) continue;
    if (line_command(sweep.rules, seat_of(state_), state_.lines.StatusLetter(line), line))
      return true;
  }
  return false;
}

bool LineActions::finds_work(const Control& button) const {
  if (phone_.keys_are_locked()) return true;
  const MainForm& form = state_.Lineweir;
  if (const auto sweep = sweep_of(button)) return sweeps_any(*sweep);
  const int line = button.index();
  if (button.name() == form.OnHybrid1.name()) {
    const bool opens_form = !form.StudioMode.checked && form.AutoDataEntry.checked &&
                            state_.lines.StatusLetter(line) == ringing_letter;
    return opens_form || main_row_word(state_, line).has_value();
  }
  // The producer's conference button chooses the next caller.
  return !form.StudioMode.checked || conference_row_word(state_, line).has_value();
}

}  // namespace lineweir

#include "callcontrol/line_actions.h"

#include <string>

#include "callcontrol/next_caller.h"
#include "callcontrol/phone_command.h"
#include "callcontrol/row_words.h"
#include "callerdata/caller_data.h"
#include "forms/columns.h"
#include "state/console_state.h"
#include "state/guard.h"

namespace lineweir {
namespace {

// The texts of a row that answer to clicks: all but the user's own column.
constexpr int clickable_columns = user_column;

}  // namespace

LineActions::LineActions(ConsoleState& state, PhoneCommands& phone, CallerDataEntry& caller_data,
                         NextCaller& next_caller)
    : state_(state), phone_(phone), caller_data_(caller_data), next_caller_(next_caller) {
  MainForm& form = state.Lineweir;
  form.OnHybrid1.wire([this](Picture& button) {
    button.on_click = [this, line = button.index()] { OnHybrid1_Click(line); };
  });
  form.OnHybrid2.wire([this](Picture& button) {
    button.on_click = [this, line = button.index()] { OnHybrid2_Click(line); };
  });
  form.Drop1.on_click = [this] { Drop1_Click(); };
  form.Drop2.on_click = [this] { Drop2_Click(); };
  form.Hold1.on_click = [this] { Hold1_Click(); };
  form.Hold2.on_click = [this] { Hold2_Click(); };

  const auto answer_dbl_click = [this](Control& part, const std::string& element) {
    part.on_dbl_click = [this, element, line = part.index()] { row_dbl_click(element, line); };
  };
  for (int column = 0; column < clickable_columns; ++column) {
    ControlArray<Label>& labels = form.column_labels(column);
    labels.wire([this, answer_dbl_click, element = labels.name()](Label& label) {
      answer_dbl_click(label, element);
      label.on_mouse_up = [this, element, line = label.index()](int button, int) {
        row_mouse_up(element, line, button);
      };
    });
  }
  // The image covers the strip and forwards to it.
  for (ControlArray<Picture>* strips : {&form.DataRow, &form.DataRowImage}) {
    strips->wire([answer_dbl_click](Picture& strip) { answer_dbl_click(strip, "DataRow"); });
  }
}

void LineActions::OnHybrid1_Click(int Index) {
  guard(state_.trace, "Lineweir_OnHybrid1_Click", [&] {
    const MainForm& form = state_.Lineweir;
    const auto command = main_row_word(state_, Index);
    const bool answers = !form.StudioMode.checked && state_.lines.StatusLetter(Index) == 'R';
    if (answers && form.AutoDataEntry.checked) caller_data_.show_for_line(Index);
    send(command);
  });
}

void LineActions::OnHybrid2_Click(int Index) {
  guard(state_.trace, "Lineweir_OnHybrid2_Click", [&] {
    if (state_.Lineweir.StudioMode.checked) {
      send(conference_row_word(state_, Index));
    } else {
      next_caller_.pick_by_hand(Index);
    }
  });
}

void LineActions::Drop1_Click() { sweep("Lineweir_Drop1_Click", state_.Lineweir.Drop1); }

void LineActions::Drop2_Click() { sweep("Lineweir_Drop2_Click", state_.Lineweir.Drop2); }

void LineActions::Hold1_Click() { sweep("Lineweir_Hold1_Click", state_.Lineweir.Hold1); }

void LineActions::Hold2_Click() { sweep("Lineweir_Hold2_Click", state_.Lineweir.Hold2); }

void LineActions::row_dbl_click(std::string_view element, int Index) {
  guard(state_.trace, "Lineweir_" + std::string(element) + "_DblClick", [&] {
    if (state_.Lineweir.OnHybrid1(Index).enabled) {
      OnHybrid1_Click(Index);
    } else if (state_.Lineweir.OnHybrid2(Index).enabled) {
      OnHybrid2_Click(Index);
    }
  });
}

void LineActions::row_mouse_up(std::string_view element, int Index, int Button) {
  guard(state_.trace, "Lineweir_" + std::string(element) + "_MouseUp", [&] {
    if (Button == right_button) caller_data_.show_for_line(Index);
  });
}

void LineActions::send(const std::optional<CommandWord>& command) {
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

void LineActions::sweep(std::string_view handler, const Control& button) {
  guard(state_.trace, handler, [&] {
    const auto sweep = sweep_of(button);
    if (!sweep) return;
    if (const auto word = fixed_command(sweep->fixed, seat_of(state_))) return send(word);
    for (int line = 0; line < state_.lines.LineCount; ++line) {
      if (!sweep->row_buttons(line).visible) continue;
      send(line_command(sweep->rules, seat_of(state_), state_.lines.StatusLetter(line), line));
    }
  });
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
  const MainForm& form = state_.Lineweir;
  if (const auto sweep = sweep_of(button)) return sweeps_any(*sweep);
  const int line = button.index();
  if (button.name() == form.OnHybrid1.name()) {
    const bool opens_form = !form.StudioMode.checked && form.AutoDataEntry.checked &&
                            state_.lines.StatusLetter(line) == 'R';
    return opens_form || main_row_word(state_, line).has_value();
  }
  // The producer's conference button chooses the next caller.
  return !form.StudioMode.checked || conference_row_word(state_, line).has_value();
}

}  // namespace lineweir

#include "callcontrol/line_actions.h"

#include <string>

#include "core/console.h"
#include "core/guard.h"
#include "screen/columns.h"

namespace lineweir {
namespace {

// The texts of a row that answer to clicks: all but the user's own column.
constexpr int clickable_columns = user_column;

constexpr int equipment_with_phones = 4;

}  // namespace

LineActions::LineActions(Console& console) : console_(console) {
  MainForm& form = console.Lineweir;
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
  guard(console_, "Lineweir_OnHybrid1_Click", [&] {
    const MainForm& form = console_.Lineweir;
    const auto command = main_row_word(Index);
    const bool answers = !form.StudioMode.checked && console_.lines.StatusLetter(Index) == 'R';
    if (answers && form.AutoDataEntry.checked) console_.caller_data.show_for_line(Index);
    send(command);
  });
}

void LineActions::OnHybrid2_Click(int Index) {
  guard(console_, "Lineweir_OnHybrid2_Click", [&] {
    if (console_.Lineweir.StudioMode.checked) {
      send(conference_row_word(Index));
    } else {
      console_.next_caller.pick_by_hand(Index);
    }
  });
}

void LineActions::Drop1_Click() { sweep("Lineweir_Drop1_Click", console_.Lineweir.Drop1); }

void LineActions::Drop2_Click() { sweep("Lineweir_Drop2_Click", console_.Lineweir.Drop2); }

void LineActions::Hold1_Click() { sweep("Lineweir_Hold1_Click", console_.Lineweir.Hold1); }

void LineActions::Hold2_Click() { sweep("Lineweir_Hold2_Click", console_.Lineweir.Hold2); }

void LineActions::row_dbl_click(std::string_view element, int Index) {
  guard(console_, "Lineweir_" + std::string(element) + "_DblClick", [&] {
    if (console_.Lineweir.OnHybrid1(Index).enabled) {
      OnHybrid1_Click(Index);
    } else if (console_.Lineweir.OnHybrid2(Index).enabled) {
      OnHybrid2_Click(Index);
    }
  });
}

void LineActions::row_mouse_up(std::string_view element, int Index, int Button) {
  guard(console_, "Lineweir_" + std::string(element) + "_MouseUp", [&] {
    if (Button == right_button) console_.caller_data.show_for_line(Index);
  });
}

Seat LineActions::seat() const {
  const MainForm& form = console_.Lineweir;
  const int kind = console_.lines.ThePhoneFlag;
  const bool second = form.MitelPhone2.checked;
  // Equipment of kind 4 knows the seat by its phone; a handset position still chosen only says how
  // its words begin.
  const bool by_phone = kind == equipment_with_phones && !second && phone_chosen();
  return {form.StudioMode.checked, kind, form.MitelPhone1.checked || by_phone, second};
}

bool LineActions::phone_chosen() const {
  const ControlArray<MenuItem>& phones = console_.Lineweir.NextGenPhone;
  for (int phone = 0; phone < phones.upper_bound(); ++phone) {
    if (phones.loaded(phone) && phones(phone).checked) return true;
  }
  return false;
}

std::optional<CommandWord> LineActions::main_row_word(int line) const {
  return row_word(main_row_rules, line);
}

std::optional<CommandWord> LineActions::conference_row_word(int line) const {
  return row_word(conference_row_rules, line);
}

std::optional<CommandWord> LineActions::row_word(std::span<const LineCommandRule> rules,
                                                 int line) const {
  const char letter = console_.lines.StatusLetter(line);
  if (!may_be_commanded(letter, console_.program.EmptyLineOverride)) return std::nullopt;
  return line_command(rules, seat(), letter, line);
}

void LineActions::send(const std::optional<CommandWord>& command) {
  if (command) console_.phone.PhoneCommand(command->word, command->bank);
}

std::optional<LineActions::Sweep> LineActions::sweep_of(const Control& button) const {
  const MainForm& form = console_.Lineweir;
  if (&button == &form.Drop1) return Sweep{drop1_fixed, drop1_rules, form.OnHybrid1};
  if (&button == &form.Drop2) return Sweep{drop2_fixed, drop2_rules, form.OnHybrid2};
  if (&button == &form.Hold1) return Sweep{hold1_fixed, hold1_rules, form.OnHybrid1};
  if (&button == &form.Hold2) return Sweep{hold2_fixed, hold2_rules, form.OnHybrid2};
  return std::nullopt;
}

void LineActions::sweep(std::string_view handler, const Control& button) {
  guard(console_, handler, [&] {
    const auto sweep = sweep_of(button);
    if (!sweep) return;
    if (const auto word = fixed_command(sweep->fixed, seat())) return send(word);
    for (int line = 0; line < console_.lines.LineCount; ++line) {
      if (!sweep->row_buttons(line).visible) continue;
      send(line_command(sweep->rules, seat(), console_.lines.StatusLetter(line), line));
    }
  });
}

bool LineActions::sweeps_any(const Sweep& sweep) const {
  if (fixed_command(sweep.fixed, seat())) return true;
  for (int line = 0; line < console_.lines.LineCount; ++line) {
    if (!sweep.row_buttons(line).visible) continue;
    if (line_command(sweep.rules, seat(), console_.lines.StatusLetter(line), line)) return true;
  }
  return false;
}

bool LineActions::finds_work(const Control& button) const {
  const MainForm& form = console_.Lineweir;
  if (const auto sweep = sweep_of(button)) return sweeps_any(*sweep);
  const int line = button.index();
  if (button.name() == form.OnHybrid1.name()) {
    const bool opens_form = !form.StudioMode.checked && form.AutoDataEntry.checked &&
                            console_.lines.StatusLetter(line) == 'R';
    return opens_form || main_row_word(line).has_value();
  }
  // The producer's conference button chooses the next caller.
  return !form.StudioMode.checked || conference_row_word(line).has_value();
}

}  // namespace lineweir

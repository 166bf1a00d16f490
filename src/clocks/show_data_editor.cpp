#include "clocks/show_data_editor.h"

#include "core/console.h"
#include "core/guard.h"
#include "core/stored_path.h"
#include "core/text.h"
#include "letters/path_text.h"

namespace lineweir {
namespace {

constexpr std::string_view file_filter = "All Files (*.*)|*.*|Text Files (*.txt)|*.txt";
constexpr std::string_view save_as_filter = "All Files (*.*)|*.*|Text Files(*.txt)|*.txt";

void store_column(const Grid& grid, int column, int entry_above, auto& texts) {
  for (int row = 1; row <= plan_rows_per_grid; ++row) {
    texts(entry_above + row) = grid.cell(row, column);
  }
}

}  // namespace

ShowDataEditor::ShowDataEditor(Console& console)
    : console_(console), boxes_(console), grids_(console) {
  MainForm& main = console.Lineweir;
  main.ShowData.on_click = [this] {
    guard(console_, "Lineweir_ShowData_Click", [&] { show_form(); });
  };
  main.ServerShowData.on_click = [this] {
    guard(console_, "Lineweir_ServerShowData_Click", [&] {
      MenuItem& item = console_.Lineweir.ServerShowData;
      item.checked = !item.checked;
    });
  };

  ShowDataForm& form = console.Form2;
  form.on_load = [this] { guard(console_, "Form2_Form_Load", [&] { Form2_Load(); }); };
  form.on_unload = [this] { console_.show_plan.undo_unsaved(); };
  form.New.on_click = [this] {
    told_guard("Form2_New_Click",
               [&] { choose_file("New", file_filter, true, &ShowDataEditor::use_new_file); });
  };
  form.Open.on_click = [this] {
    told_guard("Form2_Open_Click",
               [&] { choose_file("Open", file_filter, false, &ShowDataEditor::use_file); });
  };
  form.SaveAs.on_click = [this] {
    told_guard("Form2_SaveAs_Click",
               [&] { choose_file("Save As", save_as_filter, true, &ShowDataEditor::use_copy); });
  };
  form.SaveOption.on_click = [this] {
    told_guard("Form2_SaveOption_Click", [&] { console_.show_plan.save_plan(draft()); });
  };
  form.Exit.on_click = [this] {
    told_guard("Form2_Exit_Click", [&] {
      console_.show_plan.save_plan(draft());
      console_.Form2.unload();
    });
  };
  form.CancelOption.on_click = [this] {
    guard(console_, "Form2_CancelOption_Click", [&] { console_.Form2.unload(); });
  };
  form.Bye.on_click = [this] {
    guard(console_, "Form2_Bye_Click", [&] { console_.Form2.unload(); });
  };
  form.InsertRow.on_click = [this] {
    guard(console_, "Form2_InsertRow_Click", [&] { edit_rows(insert_show_entry); });
  };
  form.DeleteRow.on_click = [this] {
    guard(console_, "Form2_DeleteRow_Click", [&] { edit_rows(delete_show_entry); });
  };
}

// A plan that can't be read or saved is told to the user as well as to the trace.
template <class Body>
void ShowDataEditor::told_guard(std::string_view handler, Body&& body) {
  attempt(std::forward<Body>(body), [&](const Failure& failure) {
    report_failure(console_, handler, failure);
    console_.messages.ShowMessage(description_of(console_, failure));
  });
}

void ShowDataEditor::Filler() {
  ShowPlan& plan = console_.show_plan.plan;
  for (int entry = 1; entry <= show_entry_count; ++entry) {
    plan.ShowTimes(entry) = plan.ShowTimes(entry).trimmed();
    plan.ShowTexts(entry) = plan.ShowTexts(entry).trimmed();
  }
  grids_.show(plan);
}

void ShowDataEditor::Form2_Load() {
  ShowDataForm& form = console_.Form2;
  const ShowPlan& plan = console_.show_plan.plan;
  grids_.reset();
  grids_.write_headers();
  form.StartTime.text = plan.ShowTimes(show_start_entry).trimmed();
  form.Text1.text = plan.ShowTimes(show_end_entry).trimmed();
  form.Grid1.set_cell(1, row_start_column, form.StartTime.text);
  Filler();
  form.Label4.caption = shown_path(console_.services.letters, console_.show_plan.TheDataFileName);
}

ShowPlan ShowDataEditor::draft() const {
  const ShowDataForm& form = console_.Form2;
  ShowPlan plan;
  plan.ShowTimes(show_start_entry) = form.StartTime.text.get();
  plan.ShowTimes(show_end_entry) = form.Text1.text.get();
  int entry_above = show_end_entry;
  for (const Grid* grid : {&form.Grid1, &form.Grid2}) {
    store_column(*grid, row_end_column, entry_above, plan.ShowTimes);
    store_column(*grid, row_text_column, entry_above, plan.ShowTexts);
    entry_above += plan_rows_per_grid;
  }
  return plan;
}

void ShowDataEditor::choose_file(const std::string& title, std::string_view filter, bool for_saving,
                                 void (ShowDataEditor::*use)(const std::string& path)) {
  const auto path = console_.services.dialogs.ask_file(
      {title, std::string(filter), console_.show_plan.TheDataFileName, for_saving});
  if (!path) return;
  require_storable(*path, longest_plan_path);
  (this->*use)(*path);
  // The form shows another plan, or another name.
  console_.Form2.unload();
  show_form();
}

void ShowDataEditor::show_form() {
  console_.Form2.show();
  console_.Form2.StartTime.set_focus();
}

void ShowDataEditor::use_new_file(const std::string& path) { console_.show_plan.new_plan(path); }

void ShowDataEditor::use_file(const std::string& path) { console_.show_plan.load_plan(path); }

void ShowDataEditor::use_copy(const std::string& path) {
  console_.show_plan.save_plan_as(path, draft());
}

void ShowDataEditor::edit_rows(void (*change)(ShowPlan& plan, int entry)) {
  const int entry = grids_.selected_entry();
  if (entry == 0) return;
  ShowPlan changed = draft();
  change(changed, entry);
  console_.show_plan.change_unsaved(changed);
  Filler();
}

}  // namespace lineweir

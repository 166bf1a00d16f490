#include "clocks/show_data_editor.h"

#include "base/text.h"
#include "clocks/show_plan_store.h"
#include "letters/path_text.h"
#include "state/console_state.h"
#include "state/guard.h"
#include "state/stored_path.h"
#include "state/wire.h"

namespace lineweir {
namespace {

constexpr std::string_view file_filter = "All Files (*.*)|*.*|Text Files (*.txt)|*.txt";
constexpr std::string_view save_as_filter = "All Files (*.*)|*.*|Text Files(*.txt)|*.txt";
constexpr std::string_view shown_filter = "Show plans (*.txt)|*.txt|All files (*.*)|*.*";

void store_column(const Grid& grid, int column, int entry_above, auto& texts) {
  for (int row = 1; row <= plan_rows_per_grid; ++row) {
    texts(entry_above + row) = grid.cell(row, column);
  }
}

}  // namespace

ShowDataEditor::ShowDataEditor(ConsoleState& state, ShowPlanStore& show_plan)
    : state_(state), show_plan_(show_plan), boxes_(state), grids_(state), past_(state) {
  MainForm& main = state.Lineweir;
  wire(main.ShowData.on_click, state_.trace, "Lineweir_ShowData_Click", [this] { show_form(); });

  ShowDataForm& form = state.Form2;
  // A plan that can't be read or saved is told to the user as well as to the trace.
  const auto tell = [this](const Failure& failure) { state_.messages.tell(failure); };
  wire(form.on_load, state_.trace, "Form2_Form_Load", [this] { Form2_Load(); });
  wire(form.on_unload, state_.trace, "Form2_Form_Unload", [this] {
    state_.Form2.PastTimer.enabled = false;
    show_plan_.undo_unsaved();
  });
  boxes_.on_typed = [this] { show_past(); };
  grids_.on_typed = [this] { show_past(); };
  wire(form.PastTimer.on_timer, state_.trace, "Form2_PastTimer_Timer", [this] { show_past(); });
  wire(
      form.New.on_click, state_.trace, "Form2_New_Click",
      [this] {
        choose_file({.title = "New",
                     .filter = std::string(file_filter),
                     .for_saving = true,
                     .shown_title = "Make a new, empty show plan"},
                    &ShowDataEditor::use_new_file);
      },
      tell);
  wire(
      form.Open.on_click, state_.trace, "Form2_Open_Click",
      [this] {
        choose_file({.title = "Open",
                     .filter = std::string(file_filter),
                     .shown_title = "Open a show plan"},
                    &ShowDataEditor::use_file);
      },
      tell);
  wire(
      form.SaveAs.on_click, state_.trace, "Form2_SaveAs_Click",
      [this] {
        choose_file({.title = "Save As",
                     .filter = std::string(save_as_filter),
                     .for_saving = true,
                     .shown_title = "Save the show plan as"},
                    &ShowDataEditor::use_copy);
      },
      tell);
  wire(
      form.SaveOption.on_click, state_.trace, "Form2_SaveOption_Click",
      [this] {
        show_plan_.save_plan(draft());
        show_past();
      },
      tell);
  wire(
      form.Exit.on_click, state_.trace, "Form2_Exit_Click",
      [this] {
        show_plan_.save_plan(draft());
        state_.Form2.unload();
      },
      tell);
  wire(form.CancelOption.on_click, state_.trace, "Form2_CancelOption_Click",
       [this] { state_.Form2.unload(); });
  wire(form.Bye.on_click, state_.trace, "Form2_Bye_Click", [this] { state_.Form2.unload(); });
  wire(form.InsertRow.on_click, state_.trace, "Form2_InsertRow_Click",
       [this] { edit_rows(insert_show_entry); });
  wire(form.DeleteRow.on_click, state_.trace, "Form2_DeleteRow_Click",
       [this] { edit_rows(delete_show_entry); });
}

void ShowDataEditor::Filler() {
  ShowPlan& plan = show_plan_.plan;
  for (int entry = 1; entry <= show_entry_count; ++entry) {
    plan.ShowTimes(entry) = plan.ShowTimes(entry).trimmed();
    plan.ShowTexts(entry) = plan.ShowTexts(entry).trimmed();
  }
  grids_.show(plan);
}

void ShowDataEditor::Form2_Load() {
  ShowDataForm& form = state_.Form2;
  const ShowPlan& plan = show_plan_.plan;
  grids_.reset();
  grids_.write_headers();
  form.StartTime.text = plan.ShowTimes(show_start_entry).trimmed();
  form.Text1.text = plan.ShowTimes(show_end_entry).trimmed();
  form.Grid1.set_cell(1, row_start_column, form.StartTime.text);
  Filler();
  form.Label4.caption = shown_path(state_.services.letters, show_plan_.TheDataFileName);
  form.PastTimer.enabled = true;
  show_past();
}

void ShowDataEditor::show_past() { past_.show(draft(), show_plan_.saved_plan()); }

ShowPlan ShowDataEditor::draft() const {
  const ShowDataForm& form = state_.Form2;
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

void ShowDataEditor::choose_file(platform::FileQuestion question,
                                 void (ShowDataEditor::*use)(const std::string& path)) {
  question.default_path = show_plan_.TheDataFileName;
  question.shown_filter = shown_filter;
  const auto path = state_.services.dialogs.ask_file(question);
  if (!path) return;
  require_storable(*path, longest_plan_path);
  (this->*use)(*path);
  // The form shows another plan, or another name.
  state_.Form2.unload();
  show_form();
}

void ShowDataEditor::show_form() {
  state_.Form2.show();
  state_.Form2.StartTime.set_focus();
}

void ShowDataEditor::use_new_file(const std::string& path) { show_plan_.new_plan(path); }

void ShowDataEditor::use_file(const std::string& path) { show_plan_.load_plan(path); }

void ShowDataEditor::use_copy(const std::string& path) { show_plan_.save_plan_as(path, draft()); }

void ShowDataEditor::edit_rows(void (*change)(ShowPlan& plan, int entry)) {
  const int entry = grids_.selected_entry();
  if (entry == 0) return;
  ShowPlan changed = draft();
  change(changed, entry);
  show_plan_.change_unsaved(changed);
  Filler();
  show_past();
}

}  // namespace lineweir

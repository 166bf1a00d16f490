#pragma once

#include <string>

#include "clocks/plan_past_notice.h"
#include "clocks/show_data_boxes.h"
#include "clocks/show_data_grids.h"
#include "platform/dialogs.h"

namespace lineweir {

class ShowPlanStore;
struct ConsoleState;

// What the user does in Form2 with the plan as a whole. Boxes and grids are a draft: it is stored
// by `Exit`, `SaveOption` and `SaveAs` only. Inserting and deleting rows puts the draft in force at
// once, until it is saved or the form is left without.
class ShowDataEditor {
 public:
  ShowDataEditor(ConsoleState& state, ShowPlanStore& show_plan);

  // Trims all of the plan and shows its events in the grids.
  void Filler();

 private:
  void Form2_Load();
  // With the focus in the first box, whatever had it when the form was closed.
  void show_form();
  void show_past();
  // What boxes and grids hold.
  ShowPlan draft() const;
  void choose_file(platform::FileQuestion question,
                   void (ShowDataEditor::*use)(const std::string& path));
  void use_new_file(const std::string& path);
  void use_file(const std::string& path);
  void use_copy(const std::string& path);
  void edit_rows(void (*change)(ShowPlan& plan, int entry));

  ConsoleState& state_;
  ShowPlanStore& show_plan_;
  ShowDataBoxes boxes_;
  ShowDataGrids grids_;
  PlanPastNotice past_;
};

}  // namespace lineweir

#include "serverlink/group_choice.h"

#include <string>

#include "callerdata/caller_data.h"
#include "link/links.h"
#include "screen/display_options.h"
#include "state/console_state.h"
#include "state/guard.h"
#include "state/window_caption.h"
#include "state/wire.h"

namespace lineweir {
namespace {

constexpr auto handler = "DisplayOptionForm_ExitCommand_Click";

}  // namespace

GroupChoice::GroupChoice(ConsoleState& state, const Links& links, DisplayOptions& display,
                         CallerDataEntry& caller_data)
    : state_(state), links_(links), display_(display), caller_data_(caller_data) {
  DisplayDataForm& form = state.DisplayOptionForm;
  wire(state.Lineweir.DisplayDataOptionsMenu.on_click, state_.trace,
       "Lineweir_DisplayDataOptionsMenu_Click", [this] { DisplayDataOptionsMenu_Click(); });
  for (Event<void()>* leave : {&form.ExitCommand.on_click, &form.on_close}) {
    wire(*leave, state_.trace, handler, [this] { ExitCommand_Click(); });
  }
}

void GroupChoice::DisplayDataOptionsMenu_Click() {
  for (const int column : display_.ColumnsInUse) display_.fill_width_box(column);
  select_present_group();
  state_.DisplayOptionForm.show();
}

void GroupChoice::ExitCommand_Click() {
  DisplayDataForm& form = state_.DisplayOptionForm;
  guard(state_.trace, handler, [&] {
    // A box that is being typed in when the window is closed loses the focus first.
    form.focus(nullptr);
    display_.RefreshColumnOrder();
    display_.collect();
    const int group = form.MessageGroupSelector.list_index + 1;
    if (group >= 1 && group != state_.program.GroupNumber) change_group(group);
  });
  form.hide();
}

void GroupChoice::change_group(int group) {
  if (!open_to_user(group)) {
    state_.messages.ShowMessage("The selected Studio Group is not available to this user!");
    return select_present_group();
  }
  if (!links_.in_use().leave_group(handler)) return select_present_group();

  state_.program.GroupNumber = group;
  caller_data_.leave_group();
  check_present_group(state_);
  renew_window_caption(state_);
  state_.Lineweir.Timer4.enabled = true;
  state_.lines.FreshConnect = true;
}

bool GroupChoice::open_to_user(int group) const {
  const ControlArray<MenuItem>& groups = state_.Lineweir.StudioGr;
  return groups.loaded(group - 1) && groups(group - 1).enabled;
}

void GroupChoice::select_present_group() {
  ComboBox& selector = state_.DisplayOptionForm.MessageGroupSelector;
  const int present = state_.program.GroupNumber - 1;
  selector.list_index = present < selector.list_count() ? present : -1;
}

}  // namespace lineweir

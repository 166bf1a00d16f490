#include "serverlink/group_choice.h"

#include <string>
#include <utility>
#include <vector>

#include "callerdata/caller_data.h"
#include "callerdata/known_callers.h"
#include "link/links.h"
#include "screen/display_options.h"
#include "serverlink/group_leave.h"
#include "serverlink/line_events.h"
#include "state/console_state.h"
#include "state/guard.h"
#include "state/window_caption.h"
#include "state/wire.h"
#include "wire/server_packet_codec.h"

namespace lineweir {
namespace {

constexpr auto choice_handler = "DisplayOptionForm_ExitCommand_Click";

std::string unsaved_question(const std::vector<int>& lines) {
  std::string numbers;
  for (std::size_t place = 0; place < lines.size(); ++place) {
    const bool is_last = place + 1 == lines.size();
    if (place > 0) numbers += is_last ? " and " : ", ";
    numbers += std::to_string(lines[place] + 1);
  }
  const std::string callers = lines.size() == 1 ? "the caller on line " : "the callers on lines ";
  return "What was typed for " + callers + numbers +
         " isn't saved yet. Do you wish to change the studio group all the same?";
}

}  // namespace

GroupChoice::GroupChoice(ConsoleState& state, const Links& links, DisplayOptions& display,
                         CallerDataEntry& caller_data, KnownCallers& known_callers,
                         LineEvents& line_events)
    : state_(state),
      links_(links),
      display_(display),
      caller_data_(caller_data),
      known_callers_(known_callers),
      line_events_(line_events) {
  DisplayDataForm& form = state.DisplayOptionForm;
  wire(state.Lineweir.DisplayDataOptionsMenu.on_click, state_.trace,
       "Lineweir_DisplayDataOptionsMenu_Click", [this] { DisplayDataOptionsMenu_Click(); });
  for (Event<void()>* leave : {&form.ExitCommand.on_click, &form.on_close}) {
    wire(*leave, state_.trace, choice_handler, [this] { ExitCommand_Click(); });
  }
  state.Lineweir.StudioGr.wire_each([this](MenuItem& item) {
    const int index = item.index();
    wire(item.on_click, state_.trace, "Lineweir_StudioGr_Click",
         [this, index] { StudioGr_Click(index); });
  });
}

void GroupChoice::DisplayDataOptionsMenu_Click() {
  for (const int column : display_.ColumnsInUse) display_.fill_width_box(column);
  select_present_group();
  state_.DisplayOptionForm.show();
}

void GroupChoice::ExitCommand_Click() {
  DisplayDataForm& form = state_.DisplayOptionForm;
  bool stays = false;
  guard(state_.trace, choice_handler, [&] {
    // A box that is being typed in when the window is closed loses the focus first.
    form.focus(nullptr);
    display_.RefreshColumnOrder();
    display_.collect();
    const int group = form.MessageGroupSelector.list_index + 1;
    if (group < 1 || group == state_.program.GroupNumber) return;
    stays = !change_group(group);
  });
  if (stays) {
    select_present_group();
  } else {
    form.hide();
  }
}

void GroupChoice::StudioGr_Click(int Index) {
  if (Index + 1 == state_.program.GroupNumber) return;
  state_.login.SkipProfile = true;
  state_.DisplayOptionForm.MessageGroupSelector.list_index = Index;
  state_.DisplayOptionForm.ExitCommand.on_click();
}

void GroupChoice::force(int entry) {
  forced_ = true;
  state_.DisplayOptionForm.MessageGroupSelector.list_index = entry;
  state_.DisplayOptionForm.ExitCommand.on_click();
  forced_ = false;
}

bool GroupChoice::may_leave(int group) {
  if (!open_to_user(group)) {
    state_.messages.ShowMessage("The selected Studio Group is not available to this user!");
    return false;
  }
  // A user without rights in his group can't stay there.
  if (std::exchange(forced_, false)) return true;
  if (lines_stay()) return true;
  const std::vector<int> lines = caller_data_.lines_with_unsaved_data();
  return lines.empty() || state_.services.dialogs.ask_yes_no(unsaved_question(lines));
}

bool GroupChoice::change_group(int group) {
  const int left = state_.program.GroupNumber;
  // Events that run meanwhile may bring the console to another group, which is not left again.
  const auto has_moved = [&] { return state_.program.GroupNumber != left; };
  const bool may = may_leave(group);
  if (has_moved()) return true;
  if (!may || !links_.in_use().leave_group(choice_handler)) {
    state_.login.SkipProfile = false;
    return false;
  }
  if (has_moved()) return true;

  const bool has_groups = !lines_stay();
  if (has_groups) clear_studio_group(state_, line_events_);
  known_callers_.forget();
  state_.login.GroupLeft = left;
  state_.program.GroupNumber = group;
  check_present_group(state_);
  renew_window_caption(state_);
  if (!has_groups) {
    state_.login.SkipProfile = false;
    return true;
  }
  // What is on the group's lines when the console comes is no news, should a pass run on the way.
  state_.Lineweir.Timer4.enabled = false;
  state_.lines.FreshConnect = true;
  const GroupEntry entry = links_.in_use().enter_group();
  if (state_.program.GroupNumber != group) return true;
  if (entry != GroupEntry::EnteredBySession) state_.login.SkipProfile = false;
  state_.Lineweir.Timer4.enabled = true;
  state_.lines.FreshConnect = true;
  return true;
}

bool GroupChoice::lines_stay() const {
  return links_.serial_is_in_use() && links_.in_use().trouble().empty();
}

bool GroupChoice::open_to_user(int group) const {
  // A frame's field holds no other group.
  if (group > no_value) return false;
  const ControlArray<MenuItem>& groups = state_.Lineweir.StudioGr;
  return groups.loaded(group - 1) && groups(group - 1).enabled;
}

void GroupChoice::select_present_group() {
  ComboBox& selector = state_.DisplayOptionForm.MessageGroupSelector;
  const int present = state_.program.GroupNumber - 1;
  selector.list_index = present < selector.list_count() ? present : -1;
}

}  // namespace lineweir

#include "screen/group_choice.h"

#include <string>

#include "callcontrol/socket_trap.h"
#include "core/console.h"
#include "core/guard.h"
#include "core/window_caption.h"

namespace lineweir {
namespace {

constexpr std::string_view handler = "DisplayOptionForm_ExitCommand_Click";

}  // namespace

GroupChoice::GroupChoice(Console& console) : console_(console) {
  DisplayOptionWindow& form = console.DisplayOptionForm;
  form.ExitCommand.on_click = [this] { ExitCommand_Click(); };
  form.on_close = [this] { ExitCommand_Click(); };
}

void GroupChoice::ExitCommand_Click() {
  DisplayOptionWindow& form = console_.DisplayOptionForm;
  guard(console_, handler, [&] {
    // A box that is being typed in when the window is closed loses the focus first.
    form.focus(nullptr);
    console_.display.RefreshColumnOrder();
    console_.display.collect();
    const int group = form.MessageGroupSelector.list_index + 1;
    if (group >= 1 && group != console_.program.GroupNumber) change_group(group);
  });
  form.hide();
}

void GroupChoice::change_group(int group) {
  if (!open_to_user(group)) {
    console_.messages.ShowMessage("The selected Studio Group is not available to this user!");
    return select_present_group();
  }
  if (!leave_group()) return select_present_group();

  console_.program.GroupNumber = group;
  console_.caller_data.leave_group();
  check_present_group(console_);
  renew_window_caption(console_);
  console_.Lineweir.Timer4.enabled = true;
  console_.lines.FreshConnect = true;
}

bool GroupChoice::open_to_user(int group) const {
  const ControlArray<MenuItem>& groups = console_.Lineweir.StudioGr;
  return groups.loaded(group - 1) && groups(group - 1).enabled;
}

bool GroupChoice::leave_group() {
  if (!console_.Lineweir.WinsockMenu.checked) return true;
  const bool told = socket_trap(console_, handler, [&] {
    console_.server.send(console_.server.packet(ClientCommand::CmdLeaveGroup));
  });
  if (told) console_.services.loop.yield();
  return told;
}

void GroupChoice::select_present_group() {
  ComboBox& selector = console_.DisplayOptionForm.MessageGroupSelector;
  const int present = console_.program.GroupNumber - 1;
  selector.list_index = present < selector.list_count() ? present : -1;
}

}  // namespace lineweir

#include "serverlink/studio_groups.h"

#include <algorithm>
#include <string>
#include <vector>

#include "letters/folding.h"
#include "serverlink/access_rights.h"
#include "serverlink/group_choice.h"
#include "serverlink/reply_code.h"
#include "serverlink/server_link.h"
#include "state/console_state.h"
#include "state/window_caption.h"
#include "state/wire.h"

namespace lineweir {
namespace {

constexpr std::uint8_t no_group_open = 255;
constexpr std::uint8_t group_not_found = 0;

// What stands between the separators, before the first and behind the last of them.
std::vector<std::string> split_at(std::string_view text, char separator) {
  std::vector<std::string> parts(1);
  for (const char character : text) {
    if (character == separator) {
      parts.emplace_back();
    } else {
      parts.back() += character;
    }
  }
  return parts;
}

}  // namespace

StudioGroups::StudioGroups(ConsoleState& state, ServerLink& server, AccessRights& rights,
                           GroupChoice& group_choice)
    : state_(state), rights_(rights), group_choice_(group_choice) {
  using enum ServerCommand;
  server.handle(SrvGroupNames, [this](const ServerPacket& packet) { this->SrvGroupNames(packet); });
  server.handle(SrvAllowedGroups,
                [this](const ServerPacket& packet) { this->SrvAllowedGroups(packet); });
  server.handle(SrvFirstUnblocked,
                [this](const ServerPacket& packet) { this->SrvFirstUnblocked(packet); });
  wire(state.Lineweir.timForceGroupChange.on_timer, state.trace,
       "Lineweir_timForceGroupChange_Timer", [this] { timForceGroupChange_Timer(); });
}

void StudioGroups::SrvGroupNames(const ServerPacket& packet) {
  show_names(decode_list(packet.Buffer));
  state_.login.LastReplyCode = reply_group_names;
}

void StudioGroups::show_names(const std::vector<std::string>& names) {
  ControlArray<MenuItem>& items = state_.Lineweir.StudioGr;
  const int count = static_cast<int>(names.size());
  for (int group = items.upper_bound(); group-- > 1;) {
    if (items.loaded(group)) items.unload(group);
  }
  for (int group = 0; group < count; ++group) {
    MenuItem& item = items.loaded(group) ? items(group) : items.load(group);
    item.caption = names[static_cast<std::size_t>(group)];
    item.visible = true;
  }
  ComboBox& selector = state_.DisplayOptionForm.MessageGroupSelector;
  selector.list = names;
  // A group that the server doesn't name has neither entry nor item.
  group_choice_.select_present_group();
  check_present_group(state_);
  if (state_.program.GroupNumber > count) items(0).checked = false;
  renew_window_caption(state_);
  enable_open_groups();
}

void StudioGroups::SrvAllowedGroups(const ServerPacket& packet) {
  open_groups_ = split_at(packet.Buffer, item_end);
  enable_open_groups();
}

// The names may come before the groups that are open, or behind.
void StudioGroups::enable_open_groups() {
  if (!open_groups_) return;
  ControlArray<MenuItem>& items = state_.Lineweir.StudioGr;
  const auto folded = [this](const std::string& name) {
    return folded_text(state_.services.letters.to_utf8(name));
  };
  for (int group = 0; group < items.upper_bound(); ++group) {
    if (!items.loaded(group)) continue;
    const std::string name = folded(items(group).caption.get());
    items(group).enabled = open_groups_->size() >= 2 &&
                           std::ranges::any_of(*open_groups_, [&](const std::string& open) {
                             return folded(open) == name;
                           });
  }
}

void StudioGroups::SrvFirstUnblocked(const ServerPacket& packet) {
  switch (packet.AltInfo) {
    case no_group_open:
      state_.services.dialogs.message("No Studio Group Available for this user!");
      if (state_.services.end_program) state_.services.end_program();
      return;
    case group_not_found:
      return state_.messages.ShowMessage("Error Returning Valid Studio Group!");
    default:
      // A change into the present group is none, and would bring no rights.
      if (packet.AltInfo == state_.program.GroupNumber) rights_.RequestAccessRights(packet.AltInfo);
      state_.login.ForcedGroup = packet.AltInfo - 1;
      state_.Lineweir.timForceGroupChange.enabled = true;
  }
}

void StudioGroups::timForceGroupChange_Timer() {
  Timer& timer = state_.Lineweir.timForceGroupChange;
  timer.enabled = false;
  ComboBox& selector = state_.DisplayOptionForm.MessageGroupSelector;
  const bool in_list = selector.list_count() > state_.login.ForcedGroup;
  if (!in_list || !state_.Lineweir.StudioGr.loaded(state_.login.ForcedGroup)) {
    // The names are still on their way; what is in the list before they come are none.
    timer.enabled = true;
    return;
  }
  group_choice_.force(state_.login.ForcedGroup);
}

}  // namespace lineweir

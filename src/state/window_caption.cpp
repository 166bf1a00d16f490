#include "state/window_caption.h"

#include "state/console_state.h"

namespace lineweir {
namespace {

std::string first_checked(const ControlArray<MenuItem>& items) {
  for (int i = 0; i < items.upper_bound(); ++i) {
    if (items.loaded(i) && items(i).checked) return items(i).caption;
  }
  return {};
}

}  // namespace

std::string window_caption(const ConsoleState& state, bool talent) {
  // Blanks pad both modes to one width.
  const std::string mode =
      talent ? "Lineweir - Talent        Studio #" : "Lineweir - Producer      Studio #";
  return mode + std::to_string(state.program.GroupNumber) + " - " +
         TextWrit_ReturnStudioGroupName(state) + "      " + GetPhoneText(state);
}

void renew_window_caption(ConsoleState& state) {
  MainForm& form = state.Lineweir;
  const bool talent = form.caption.get().find("Talent") != std::string::npos;
  form.caption = window_caption(state, talent);
}

void check_present_group(ConsoleState& state) {
  if (state.program.GroupNumber == 0) state.program.GroupNumber = 1;
  ControlArray<MenuItem>& groups = state.Lineweir.StudioGr;
  for (int i = 0; i < groups.upper_bound(); ++i) {
    if (groups.loaded(i)) groups(i).checked = i == state.program.GroupNumber - 1;
  }
}

std::string GetPhoneText(const ConsoleState& state) {
  if (!state.Lineweir.NextGenPhoneMenu.visible) return {};
  return first_checked(state.Lineweir.NextGenPhone);
}

std::string TextWrit_ReturnStudioGroupName(const ConsoleState& state) {
  return first_checked(state.Lineweir.StudioGr);
}

}  // namespace lineweir

#include "core/window_caption.h"

#include "core/console.h"

namespace lineweir {
namespace {

std::string first_checked(const ControlArray<MenuItem>& items) {
  for (int i = 0; i < items.upper_bound(); ++i) {
    if (items.loaded(i) && items(i).checked) return items(i).caption;
  }
  return {};
}

}  // namespace

std::string window_caption(const Console& console, bool talent) {
  // Blanks pad both modes to one width.
  const std::string mode =
      talent ? "Lineweir - Talent        Studio #" : "Lineweir - Producer      Studio #";
  return mode + std::to_string(console.program.GroupNumber) + " - " +
         TextWrit_ReturnStudioGroupName(console) + "      " + GetPhoneText(console);
}

void renew_window_caption(Console& console) {
  MainForm& form = console.Lineweir;
  const bool talent = form.caption.get().find("Talent") != std::string::npos;
  form.caption = window_caption(console, talent);
}

void check_present_group(Console& console) {
  if (console.program.GroupNumber == 0) console.program.GroupNumber = 1;
  ControlArray<MenuItem>& groups = console.Lineweir.StudioGr;
  for (int i = 0; i < groups.upper_bound(); ++i) {
    if (groups.loaded(i)) groups(i).checked = i == console.program.GroupNumber - 1;
  }
}

std::string GetPhoneText(const Console& console) {
  if (!console.Lineweir.NextGenPhoneMenu.shown()) return {};
  return first_checked(console.Lineweir.NextGenPhone);
}

std::string TextWrit_ReturnStudioGroupName(const Console& console) {
  return first_checked(console.Lineweir.StudioGr);
}

}  // namespace lineweir

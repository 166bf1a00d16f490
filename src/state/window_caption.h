#pragma once

#include <string>

namespace lineweir {

struct ConsoleState;

// The main window's caption for a mode: the group's number and name, and the phone.
std::string window_caption(const ConsoleState& state, bool talent);

// Gives the main window its caption anew, in the mode that the present caption names: the group or
// the phone has changed.
void renew_window_caption(ConsoleState& state);

// Checks the present group's item of StudioGr alone. A group of 0 becomes 1.
void check_present_group(ConsoleState& state);

// The caption of the checked item of NextGenPhone while its menu is visible; else empty.
std::string GetPhoneText(const ConsoleState& state);

// The caption of the first checked item of StudioGr; else empty.
std::string TextWrit_ReturnStudioGroupName(const ConsoleState& state);

}  // namespace lineweir

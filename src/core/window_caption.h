#pragma once

#include <string>

namespace lineweir {

struct Console;

// The main window's caption for a mode: the group's number and name, and the phone.
std::string window_caption(const Console& console, bool talent);

// The caption of the checked item of NextGenPhone while its menu is visible; else empty.
std::string GetPhoneText(const Console& console);

// The caption of the first checked item of StudioGr; else empty.
std::string TextWrit_ReturnStudioGroupName(const Console& console);

}  // namespace lineweir

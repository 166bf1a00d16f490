#pragma once

#include <QString>
#include <string_view>

namespace lineweir {

class MainForm;

// The anchor of the section that tells of the form of that name; empty for one of which none does.
QString manual_section_of(std::string_view form);

// That of the work at this console, in the mode that it is in.
QString manual_section_of(const MainForm& form);

}  // namespace lineweir

#pragma once

#include <string>

namespace lineweir {

struct Console;

// The table of lines as it stands, as UTF-8 text for a terminal: one row a line, with the letter of
// its state and the columns that the window shows.
std::string line_report(Console& console);

}  // namespace lineweir

#pragma once

#include <string>
#include <vector>

namespace lineweir {

// The screens of this program, each with its size and scale. A QGuiApplication exists.
std::vector<std::string> screens_in_words();

// The same, found by a process of its own, as a display that can't be opened ends the one that
// tries. Empty where there is none. No QCoreApplication exists yet.
std::vector<std::string> screens_from_aside(int argc, char** argv);

}  // namespace lineweir

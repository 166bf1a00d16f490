#pragma once

#include <string>
#include <string_view>

#include "letters/letters.h"

namespace lineweir {

// A path is a text of the console like any other. Where its letters don't hold a name that the file
// system has, the text is the bytes of the name themselves, so that each file can be reached.

std::string path_text(const Letters& letters, std::string_view name);
std::string file_name(const Letters& letters, std::string_view path);

// As it is shown to the user, as near as the letters can.
std::string shown_path(const Letters& letters, std::string_view path);

}  // namespace lineweir

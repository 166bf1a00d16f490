#pragma once

#include <string>
#include <string_view>

namespace lineweir {

// Adds a UTF-8 text to another one in the form in which texts are compared: neither case nor
// accents are told apart.
void append_folded(std::string& folded, std::string_view utf8);
std::string folded_text(std::string_view utf8);

}  // namespace lineweir

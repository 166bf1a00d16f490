#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace lineweir {

// Adds a UTF-8 text to another one in the form in which texts are compared: neither case nor
// accents are told apart.
void append_folded(std::string& folded, std::string_view utf8);
std::string folded_text(std::string_view utf8);

// A folded text and, for each of its bytes, where the letter begins in the text that it comes from;
// behind the last byte stands that text's size.
struct FoldedOrigins {
  std::string folded;
  std::vector<std::size_t> origins;
};
FoldedOrigins folded_with_origins(std::string_view utf8);

}  // namespace lineweir

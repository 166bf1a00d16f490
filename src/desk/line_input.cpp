#include "desk/line_input.h"

#include <utility>

namespace lineweir::desk {

std::vector<std::string> LineInput::receive(std::string_view text) {
  std::vector<std::string> lines;
  for (const char character : text) {
    if (character == '\n') {
      lines.push_back(std::exchange(line_, {}));
    } else if (line_.size() < longest_line) {
      line_ += character;
    }
  }
  return lines;
}

}  // namespace lineweir::desk

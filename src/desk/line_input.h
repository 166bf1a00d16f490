#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace lineweir::desk {

// Cuts what is typed into lines. A line that is longer than any that can be understood is cut off.
class LineInput {
 public:
  static constexpr std::size_t longest_line = 256;

  std::vector<std::string> receive(std::string_view text);

 private:
  std::string line_;
};

}  // namespace lineweir::desk

#pragma once

#include <initializer_list>
#include <string>

namespace lineweir::test {

inline std::string bytes(std::initializer_list<int> codes) {
  std::string text;
  for (const int code : codes) text += static_cast<char>(code);
  return text;
}

}  // namespace lineweir::test

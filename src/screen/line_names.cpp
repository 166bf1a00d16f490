#include "screen/line_names.h"

#include "base/text.h"

namespace lineweir {

std::string FindLongestName(std::string_view TheOldName) {
  if (TheOldName.size() < line_name_length) return std::string(TheOldName);
  std::string_view longest;
  for (std::size_t at = 0; at < TheOldName.size(); at += line_name_length) {
    const std::string_view name = trimmed(TheOldName.substr(at, line_name_length));
    if (name.size() > longest.size()) longest = name;
  }
  return std::string(longest);
}

}  // namespace lineweir

#include "base/names.h"

#include <algorithm>

namespace lineweir {
namespace {

constexpr char folded(char c) {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

}  // namespace

bool same_name(std::string_view a, std::string_view b) {
  return std::ranges::equal(a, b, {}, folded, folded);
}

std::string folded_name(std::string_view name) {
  std::string result(name);
  std::ranges::transform(result, result.begin(), folded);
  return result;
}

}  // namespace lineweir

#include "wire/password_scramble.h"

#include "base/text.h"

namespace lineweir {
namespace {

constexpr int lowest_key = 60;
constexpr int highest_code = 255;

}  // namespace

std::optional<std::string> pass_encode(std::string_view clear, int seconds) {
  const int key = seconds + lowest_key;
  std::string scrambled(1, static_cast<char>(key));
  for (const char c : clear) {
    const int code = code_of(c) + key;
    if (code > highest_code) return std::nullopt;
    scrambled += static_cast<char>(code);
  }
  return scrambled;
}

std::optional<std::string> pass_decode(std::string_view scrambled) {
  std::string clear;
  if (scrambled.empty()) return clear;
  const int key = code_of(scrambled.front());
  for (const char c : scrambled.substr(1)) {
    const int code = code_of(c) - key;
    if (code < 0) return std::nullopt;
    clear += static_cast<char>(code);
  }
  return clear;
}

}  // namespace lineweir

#include "letters/path_text.h"

#include "letters/utf8.h"

namespace lineweir {
namespace {

// Hardly any text in letters of one byte happens to be UTF-8.
bool is_name_itself(std::string_view path) { return !is_ascii(path) && is_utf8(path); }

}  // namespace

std::string path_text(const Letters& letters, std::string_view name) {
  std::string text = letters.from_utf8(name);
  const bool held = !is_name_itself(text) && letters.to_utf8(text) == name;
  return held ? text : std::string(name);
}

std::string file_name(const Letters& letters, std::string_view path) {
  return is_name_itself(path) ? std::string(path) : letters.to_utf8(path);
}

std::string shown_path(const Letters& letters, std::string_view path) {
  return letters.from_utf8(file_name(letters, path));
}

}  // namespace lineweir

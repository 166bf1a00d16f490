#include "driver/path.h"

#include <charconv>

#include "base/names.h"

namespace lineweir::driver {
namespace {

constexpr std::size_t most_indices = 2;

bool is_name_character(char c) {
  return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '_';
}

std::optional<std::vector<int>> parse_indices(std::string_view text) {
  std::vector<int> indices;
  while (true) {
    int index = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), index);
    if (error != std::errc{} || indices.size() == most_indices) return std::nullopt;
    indices.push_back(index);
    text.remove_prefix(static_cast<std::size_t>(end - text.data()));
    if (text.empty()) return indices;
    if (text.front() != ',') return std::nullopt;
    text.remove_prefix(1);
  }
}

std::optional<PathPart> parse_part(std::string_view text) {
  std::size_t name_end = 0;
  while (name_end < text.size() && is_name_character(text[name_end])) ++name_end;
  if (name_end == 0) return std::nullopt;
  PathPart part{std::string(text.substr(0, name_end)), {}};
  text.remove_prefix(name_end);
  if (text.empty()) return part;
  if (text.size() < 2 || text.front() != '(' || text.back() != ')') return std::nullopt;
  const auto indices = parse_indices(text.substr(1, text.size() - 2));
  if (!indices) return std::nullopt;
  part.indices = *indices;
  return part;
}

}  // namespace

std::optional<std::vector<PathPart>> parse_path(std::string_view text) {
  std::vector<PathPart> parts;
  while (true) {
    const std::size_t end = text.find('.');
    const auto part = parse_part(text.substr(0, end));
    if (!part) return std::nullopt;
    parts.push_back(*part);
    if (end == std::string_view::npos) return parts;
    text.remove_prefix(end + 1);
  }
}

std::string path_shape(const std::vector<PathPart>& parts) {
  std::string shape;
  for (const PathPart& part : parts) {
    if (!shape.empty()) shape += '.';
    shape += folded_name(part.name);
    if (!part.indices.empty()) shape += "()";
  }
  return shape;
}

std::vector<int> path_indices(const std::vector<PathPart>& parts) {
  std::vector<int> indices;
  for (const PathPart& part : parts) {
    indices.insert(indices.end(), part.indices.begin(), part.indices.end());
  }
  return indices;
}

}  // namespace lineweir::driver

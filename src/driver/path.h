#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace lineweir::driver {

// One name of a path, with the numbers in parentheses behind it: `Cell(3,1)`.
struct PathPart {
  std::string name;
  std::vector<int> indices;
};

// `Form4.TheText(1).Text` as its parts. Nothing for what is no path.
std::optional<std::vector<PathPart>> parse_path(std::string_view text);

// The path's shape: the names in lower case, with "()" behind each that has indices, such as
// "linetable.callerdata().city".
std::string path_shape(const std::vector<PathPart>& parts);

// All indices of the path, from left to right.
std::vector<int> path_indices(const std::vector<PathPart>& parts);

}  // namespace lineweir::driver

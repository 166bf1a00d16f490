#include "platform/disk/path_lookup.h"

#include <algorithm>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>

#include "letters/path_text.h"

namespace lineweir::platform {

namespace {

namespace fs = std::filesystem;

char lower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

bool equal_ignoring_case(std::string_view a, std::string_view b) {
  return std::ranges::equal(a, b, [](char x, char y) { return lower(x) == lower(y); });
}

std::optional<std::string> find_in_directory(const fs::path& directory, const std::string& name) {
  std::optional<std::string> best;
  std::error_code error;
  fs::directory_iterator entry(directory.empty() ? fs::path(".") : directory, error);
  for (; !error && entry != fs::directory_iterator(); entry.increment(error)) {
    std::string candidate = entry->path().filename().string();
    if (equal_ignoring_case(candidate, name) && (!best || candidate < *best)) {
      best = std::move(candidate);
    }
  }
  return best;
}

// A link that leads nowhere counts as there: it has that spelling.
bool something_stands_at(const fs::path& path) {
  std::error_code error;
  return fs::exists(fs::symlink_status(path, error));
}

}  // namespace

fs::path spelling_on_disk(const fs::path& path) {
  if (something_stands_at(path)) return path;

  fs::path found;
  bool lost = false;
  for (const fs::path& part : path) {
    fs::path exact = found / part;
    if (!lost && !something_stands_at(exact)) {
      if (const auto match = find_in_directory(found, part.string())) {
        exact = found / *match;
      } else {
        lost = true;
      }
    }
    found = std::move(exact);
  }
  return found;
}

fs::path place_on_disk(const fs::path& directory, std::string_view path, const Letters& letters) {
  // A zero character ends a path for the system, so nothing behind it may decide anything here.
  path = path.substr(0, path.find('\0'));
  const fs::path exact = directory / path;
  return something_stands_at(exact) ? exact
                                    : spelling_on_disk(directory / file_name(letters, path));
}

}  // namespace lineweir::platform

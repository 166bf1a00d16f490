#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace lineweir::driver {

// How far a command line fits a usage line. A usage line is words in lower case, which stand for
// themselves, parameters, which don't, optional parameters in brackets, and "..." for any number of
// them.
struct UsageMatch {
  std::size_t literals = 0;
  bool whole = false;
  std::vector<std::string> parameters;
};

UsageMatch match_usage(std::string_view usage, const std::vector<std::string>& words);

}  // namespace lineweir::driver

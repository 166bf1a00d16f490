#pragma once

#include <iosfwd>
#include <string>
#include <vector>

namespace lineweir::admin {

// The program with the words behind its name. Its status: 0, or 1 with one line of why on `errors`.
int run(const std::vector<std::string>& words, std::ostream& out, std::ostream& errors);

}  // namespace lineweir::admin

#pragma once

#include <stdexcept>
#include <string>

namespace lineweir::admin {

// Why the tool can't do what it was told, as a sentence for the person who told it.
class Trouble : public std::runtime_error {
 public:
  explicit Trouble(const std::string& sentence) : std::runtime_error(sentence) {}
};

}  // namespace lineweir::admin

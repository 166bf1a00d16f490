#pragma once

#include <stdexcept>
#include <string>

namespace lineweir::driver {

// Why a command isn't done: the text behind "error". Nothing has been changed.
class Refusal : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// The command makes no sense: no such command, name or property, or a value that doesn't fit.
class NotUnderstood : public Refusal {
 public:
  using Refusal::Refusal;
};

// `expect` found another value.
class NotAsExpected : public Refusal {
 public:
  using Refusal::Refusal;
};

}  // namespace lineweir::driver

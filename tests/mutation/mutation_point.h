#pragma once

#include <string>

namespace lineweir {

// The places of one file that can be wrong. Made before anything else is, as what comes before
// `main` may pass through them.
class MutationPoints {
 public:
  explicit constexpr MutationPoints(const char* file) : file_(file) {}

  // Whether this mutant is the one that LINEWEIR_MUTANT names, as FILE:NUMBER.
  bool is_awake(int number) {
    if (!known_) begin();
    passed_[number] = true;
    return number == awake_;
  }

  // The mutants that were passed since the last time, of all files: a line each, FILE and numbers.
  static std::string take_passed();

 private:
  static constexpr int most = 4096;

  void begin();

  const char* file_;
  MutationPoints* next_ = nullptr;
  int awake_ = 0;
  bool known_ = false;
  bool passed_[most] = {};
};

}  // namespace lineweir

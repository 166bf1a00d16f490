#pragma once

#include <unistd.h>

#include <utility>

namespace lineweir::studio {

// Owns an open file of the system; -1 is none.
class Descriptor {
 public:
  Descriptor() = default;
  explicit Descriptor(int number) : number_(number) {}
  Descriptor(Descriptor&& other) noexcept : number_(std::exchange(other.number_, -1)) {}
  Descriptor& operator=(Descriptor&& other) noexcept {
    std::swap(number_, other.number_);
    return *this;
  }
  ~Descriptor() {
    if (number_ >= 0) close(number_);
  }

  int number() const { return number_; }

 private:
  int number_ = -1;
};

}  // namespace lineweir::studio

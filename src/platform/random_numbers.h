#pragma once

namespace lineweir::platform {

class RandomNumbers {
 public:
  virtual ~RandomNumbers() = default;

  // The next number of the sequence, from 0 up to but not 1.
  virtual double next() = 0;
};

}  // namespace lineweir::platform

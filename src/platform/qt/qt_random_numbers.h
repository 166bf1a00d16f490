#pragma once

#include <QRandomGenerator>

#include "platform/random_numbers.h"

namespace lineweir::platform {

// Numbers that differ from one start of the program to the next.
class QtRandomNumbers final : public RandomNumbers {
 public:
  double next() override { return generator_.generateDouble(); }

 private:
  QRandomGenerator generator_ = QRandomGenerator::securelySeeded();
};

}  // namespace lineweir::platform

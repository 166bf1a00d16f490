#include "platform/scripted/scripted_random_numbers.h"

#include <doctest/doctest.h>

namespace lineweir::platform {
namespace {

TEST_CASE("The sequence is the same at each start and lies from 0 up to 1") {
  ScriptedRandomNumbers numbers;
  const double first = numbers.next();
  for (int i = 0; i < 1000; ++i) {
    const double number = numbers.next();
    CHECK(number >= 0);
    CHECK(number < 1);
  }
  numbers.restart();
  CHECK(numbers.next() == first);
  CHECK(ScriptedRandomNumbers().next() == first);
}

}  // namespace
}  // namespace lineweir::platform

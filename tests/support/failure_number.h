#pragma once

#include <utility>

#include "base/failure.h"

namespace lineweir::test {

inline constexpr int no_failure = 0;

// The number of the Failure that the body ends with.
template <class Body>
int failure_number_of(Body&& body) {
  try {
    std::forward<Body>(body)();
  } catch (const Failure& failure) {
    return failure.number();
  }
  return no_failure;
}

}  // namespace lineweir::test

#pragma once

#include <string>
#include <string_view>
#include <utility>

#include "elements/failure.h"

namespace lineweir {

struct Console;

// The failure now being handled, whatever was thrown. Only to be called while one is.
Failure current_failure();

// The description in the console's letters.
std::string description_of(const Console& console, const Failure& failure);

// Reports as "HANDLER Error - " and the description in the trace.
void report_failure(Console& console, std::string_view handler, const Failure& failure);

// The one place where failures are caught. Runs the body; on a failure runs the reaction with it
// and returns false.
template <class Body, class Reaction>
bool attempt(Body&& body, Reaction&& reaction) {
  try {
    std::forward<Body>(body)();
    return true;
  } catch (...) {
    std::forward<Reaction>(reaction)(current_failure());
    return false;
  }
}

// The one handler of a procedure: on a failure the body ends and the failure is reported under the
// procedure's name.
template <class Body>
bool guard(Console& console, std::string_view handler, Body&& body) {
  return attempt(std::forward<Body>(body),
                 [&](const Failure& failure) { report_failure(console, handler, failure); });
}

}  // namespace lineweir

#pragma once

#include <string>
#include <string_view>
#include <utility>

#include "base/failure.h"
#include "letters/letters.h"

namespace lineweir {

class Trace;

// The failure now being handled, whatever was thrown. Only to be called while one is.
Failure current_failure();

// The description in the letters.
std::string description_of(const Letters& letters, const Failure& failure);

// Reports as "HANDLER Error - " and the description in the trace.
void report_failure(Trace& trace, std::string_view handler, const Failure& failure);

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
bool guard(Trace& trace, std::string_view handler, Body&& body) {
  return attempt(std::forward<Body>(body),
                 [&](const Failure& failure) { report_failure(trace, handler, failure); });
}

}  // namespace lineweir

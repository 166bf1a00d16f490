#pragma once

#include <string>
#include <utility>

#include "base/event.h"
#include "state/guard.h"

namespace lineweir {

// Sets what happens at an event: the handler runs in the guard, and the trace reports its failures
// under that name.
template <class... Arguments, class Handler>
void wire(Event<void(Arguments...)>& event, Trace& trace, std::string name, Handler handler) {
  event.handle([&trace, name = std::move(name)](auto&& body) { guard(trace, name, body); },
               std::move(handler));
}

// The same where more is to be done about a failure than to report it.
template <class... Arguments, class Handler, class Reaction>
void wire(Event<void(Arguments...)>& event, Trace& trace, std::string name, Handler handler,
          Reaction reaction) {
  event.handle(
      [&trace, name = std::move(name), reaction = std::move(reaction)](auto&& body) {
        attempt(body, [&](const Failure& failure) {
          report_failure(trace, name, failure);
          reaction(failure);
        });
      },
      std::move(handler));
}

}  // namespace lineweir

#pragma once

#include <utility>

#include "base/event.h"

namespace lineweir {

// Sets what a test does at an event. No guard stands around it: a failure reaches the test.
template <class... Arguments, class Handler>
void listen(Event<void(Arguments...)>& event, Handler handler) {
  event.handle([](auto&& body) { body(); }, std::move(handler));
}

}  // namespace lineweir

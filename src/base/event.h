#pragma once

#include <functional>
#include <memory>
#include <utility>

namespace lineweir {

// Something that happens to an element or on a port, with the arguments of its signature. At most
// one handler hears of it. A handler can't be set without a guard, which runs it and lets no
// failure out to the one who tells of the event. Where there is no handler nothing is done.
template <class Signature>
class Event;

template <class... Arguments>
class Event<void(Arguments...)> {
 public:
  // The guard is called with the handler's body, which takes no arguments.
  template <class Guard, class Handler>
  void handle(Guard guard, Handler handler) {
    run_ = std::make_shared<const std::function<void(Arguments...)>>(
        [guard = std::move(guard), handler = std::move(handler)](Arguments... arguments) {
          guard([&] { handler(arguments...); });
        });
  }

  void forget_handler() { run_ = nullptr; }

  explicit operator bool() const { return run_ != nullptr; }

  // The handler is held while it runs, since it may destroy what the event belongs to.
  void operator()(Arguments... arguments) const {
    if (const auto run = run_) (*run)(arguments...);
  }

 private:
  std::shared_ptr<const std::function<void(Arguments...)>> run_;
};

}  // namespace lineweir

#pragma once

#include "base/allowance.h"
#include "platform/event_loop.h"

namespace lineweir::platform {

// Whether somebody calls more often than any console does. He may call so many times at once, and
// then so many times a second; whoever calls more is shut out until he has been quiet for as long
// as it takes to have all of them again.
class CallMeter {
 public:
  static constexpr long at_once = 1000;
  static constexpr long each_second = 200;

  // False where the call at this moment isn't heard. Moments don't go back.
  bool hears(Milliseconds now) {
    if (shut_out_ && !calls_.is_whole(now)) {
      // A call while he is shut out begins the wait anew.
      calls_.use_up();
      return false;
    }
    shut_out_ = !calls_.take(1, now);
    return !shut_out_;
  }

 private:
  Allowance calls_{at_once, each_second, Milliseconds{0}};
  bool shut_out_ = false;
};

}  // namespace lineweir::platform

#pragma once

#include <algorithm>

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
    const Milliseconds quiet = now - last_;
    last_ = now;
    thousandths_ = std::min(at_once * 1000, thousandths_ + quiet.count() * each_second);
    if (shut_out_) {
      // A call while he is shut out begins the wait anew.
      shut_out_ = thousandths_ < at_once * 1000;
      if (shut_out_) thousandths_ = 0;
    }
    if (!shut_out_ && thousandths_ < 1000) shut_out_ = true;
    if (shut_out_) return false;
    thousandths_ -= 1000;
    return true;
  }

 private:
  Milliseconds last_{0};
  long thousandths_ = at_once * 1000;
  bool shut_out_ = false;
};

}  // namespace lineweir::platform

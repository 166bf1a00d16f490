#pragma once

#include <optional>

#include "platform/event_loop.h"

namespace lineweir {

// Tells a file that is slow for a moment from one that the user should know is being waited for.
class FileWait {
 public:
  // To be told each time whether the file has answered. True where it hasn't for half a second.
  bool lasts(platform::Milliseconds now, bool answered) {
    if (answered || !since_) since_ = now;
    return now - *since_ >= shown_after;
  }

 private:
  static constexpr platform::Milliseconds shown_after{500};

  std::optional<platform::Milliseconds> since_;
};

}  // namespace lineweir

#pragma once

#include <sdbus-c++/IProxy.h>

#include <cstddef>
#include <deque>
#include <memory>
#include <string>
#include <vector>

#include "platform/remote_service.h"
#include "platform/sdbus/call_meter.h"

namespace lineweir::platform {

// Somebody who has called, and what is to be told to him: a call at a time, so that one who doesn't
// answer fills no queue but this one. Before a call of his own is answered all that waits goes out,
// so that he hears everything in the order in which it happened.
struct RemoteCaller {
  struct Telling {
    std::string object;
    std::string member;
    RemoteArguments arguments;
  };

  // A call whose answer is due. The object must not go while that is handled.
  struct Told {
    std::unique_ptr<sdbus::IProxy> object;
    bool over = false;
  };

  CallMeter meter;
  std::deque<Telling> waiting;
  // What waits takes so much.
  std::size_t room = 0;
  std::vector<std::unique_ptr<Told>> told;
  // Calls in a row that came to nothing.
  int failures = 0;
  // He is told nothing and does nothing until he registers anew.
  bool given_up = false;
};

}  // namespace lineweir::platform

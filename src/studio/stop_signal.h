#pragma once

#include <signal.h>

#include "studio/descriptor.h"

namespace lineweir::studio {

// While it lives, a request to end (SIGINT, SIGTERM, SIGHUP) doesn't end the process but makes a
// descriptor readable, so that the poll loop can leave by its front door. A reader of the standard
// output that goes away doesn't end the process either.
class StopSignal {
 public:
  StopSignal();  // throws std::system_error
  ~StopSignal();

  StopSignal(const StopSignal&) = delete;
  StopSignal& operator=(const StopSignal&) = delete;

  int descriptor() const { return requests_.number(); }

 private:
  sigset_t blocked_before_{};
  struct sigaction broken_pipe_before_ {};
  Descriptor requests_;
};

}  // namespace lineweir::studio

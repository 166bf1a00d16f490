#pragma once

#include <functional>
#include <memory>

#include "platform/asio/asio_loop.h"

namespace lineweir::platform {

// While it lives, SIGTERM, SIGINT and SIGHUP don't end the process but are told from the loop.
class ProcessSignals {
 public:
  ProcessSignals(AsioLoop& loop, std::function<void(int signal)> on_signal);
  ~ProcessSignals();
  ProcessSignals(const ProcessSignals&) = delete;
  ProcessSignals& operator=(const ProcessSignals&) = delete;

 private:
  class Inside;
  std::shared_ptr<Inside> inside_;
};

}  // namespace lineweir::platform

#include "platform/asio/process_signals.h"

#include <csignal>
#include <utility>

#include <boost/asio/signal_set.hpp>

namespace lineweir::platform {

class ProcessSignals::Inside : public std::enable_shared_from_this<Inside> {
 public:
  Inside(AsioLoop& loop, std::function<void(int signal)> on_signal)
      : on_signal_(std::move(on_signal)), signals_(loop.context(), SIGTERM, SIGINT, SIGHUP) {}

  void wait() {
    signals_.async_wait(
        [self = shared_from_this()](const boost::system::error_code& error, int signal) {
          if (error || self->closed_) return;
          self->on_signal_(signal);
          if (!self->closed_) self->wait();
        });
  }

  void close() {
    closed_ = true;
    signals_.cancel();
    signals_.clear();
  }

 private:
  std::function<void(int signal)> on_signal_;
  boost::asio::signal_set signals_;
  bool closed_ = false;
};

ProcessSignals::ProcessSignals(AsioLoop& loop, std::function<void(int signal)> on_signal)
    : inside_(std::make_shared<Inside>(loop, std::move(on_signal))) {
  inside_->wait();
}

ProcessSignals::~ProcessSignals() { inside_->close(); }

}  // namespace lineweir::platform

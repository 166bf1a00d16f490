#include "platform/asio/asio_descriptor_watch.h"

#include <unistd.h>

// Under C++20 Boost 1.74 uses std::exchange without having asked for it.
#include <utility>

#include <boost/asio/posix/stream_descriptor.hpp>

namespace lineweir::platform {

namespace asio = boost::asio;
using boost::system::error_code;

namespace {

constexpr Milliseconds without_descriptor{100};

}  // namespace

struct AsioDescriptorWatch::Wait {
  Wait(AsioLoop& loop, int watched) : descriptor(watched), stream(loop.context()) {
    // The loop has one of its own, since the library closes its one when it likes.
    error_code ignored;
    stream.assign(::dup(watched), ignored);
  }

  int descriptor;
  asio::posix::stream_descriptor stream;
  std::function<void()> ready;
  // A wait that was cancelled may already be on its way.
  unsigned number = 0;
};

AsioDescriptorWatch::~AsioDescriptorWatch() { stop(); }

void AsioDescriptorWatch::wait(int descriptor, bool to_write_too, std::function<void()> ready) {
  if (wait_ && wait_->descriptor == descriptor && wait_->stream.is_open()) {
    error_code ignored;
    wait_->stream.cancel(ignored);
  } else {
    stop();
    wait_ = std::make_shared<Wait>(loop_, descriptor);
  }
  wait_->ready = std::move(ready);
  const auto come = [weak = std::weak_ptr(wait_), number = ++wait_->number](error_code) {
    const std::shared_ptr<Wait> wait = weak.lock();
    if (!wait || wait->number != number) return;
    ++wait->number;
    std::exchange(wait->ready, nullptr)();
  };
  if (!wait_->stream.is_open()) {
    // No descriptor was free; the library is asked again and again until one is.
    loop_.schedule(without_descriptor, [come] { come({}); });
    return;
  }
  wait_->stream.async_wait(asio::posix::stream_descriptor::wait_read, come);
  if (to_write_too) wait_->stream.async_wait(asio::posix::stream_descriptor::wait_write, come);
}

void AsioDescriptorWatch::stop() { wait_.reset(); }

}  // namespace lineweir::platform

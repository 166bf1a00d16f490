#pragma once

#include <memory>

#include "platform/asio/asio_loop.h"
#include "platform/descriptor_watch.h"

namespace lineweir::platform {

// Waits for the descriptor of a library beside the sockets of the loop.
class AsioDescriptorWatch final : public DescriptorWatch {
 public:
  explicit AsioDescriptorWatch(AsioLoop& loop) : loop_(loop) {}
  ~AsioDescriptorWatch() override;
  AsioDescriptorWatch(const AsioDescriptorWatch&) = delete;
  AsioDescriptorWatch& operator=(const AsioDescriptorWatch&) = delete;

  void wait(int descriptor, bool to_write_too, std::function<void()> ready) override;
  void stop() override;

 private:
  struct Wait;

  AsioLoop& loop_;
  std::shared_ptr<Wait> wait_;
};

}  // namespace lineweir::platform

#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "platform/connection.h"

namespace lineweir::test {

// The cable between a server and its interface box, as long as its port is open.
class BoxCable {
 public:
  // Null while it can't be opened.
  std::unique_ptr<platform::Connection> open() {
    if (!can_be_opened) return nullptr;
    return std::make_unique<Port>(*this);
  }

  // Null while it is closed.
  platform::Connection* port = nullptr;
  std::string sent;
  int opened = 0;
  bool can_be_opened = true;

 private:
  class Port final : public platform::Connection {
   public:
    explicit Port(BoxCable& cable) : cable_(cable) {
      cable_.port = this;
      ++cable_.opened;
    }
    ~Port() override { cable_.port = nullptr; }

    std::string peer() const override { return "box"; }
    void send(std::string_view bytes) override { cable_.sent += bytes; }
    std::size_t queued() const override { return 0; }
    void close_when_sent() override {}

   private:
    BoxCable& cable_;
  };
};

}  // namespace lineweir::test

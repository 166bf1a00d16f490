#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

#include "platform/asio/asio_loop.h"
#include "platform/connection.h"

namespace lineweir::platform {

class TlsIdentity;

// Listens on a TCP port, in plain text or by TLS.
class TcpListener final : public Listener {
 public:
  struct Options {
    // An address of this machine by its number, version 4 or 6.
    std::string address;
    // 0 takes a free one.
    std::uint16_t port = 0;
    // Null for plain text; outlives the listener otherwise.
    const TlsIdentity* tls = nullptr;
    // So long may a peer take for its TLS handshake, and so many peers may be at it at once.
    Milliseconds longest_handshake{10'000};
    int most_handshakes = 2048;
    // Told in a sentence what an engineer should know, and seldom.
    std::function<void(const std::string& trouble)> on_trouble = {};
  };

  // Peers can connect from now on, and wait until the listener is told to accept them. Throws
  // std::runtime_error, whose text is a sentence.
  TcpListener(AsioLoop& loop, Options options);
  ~TcpListener() override;
  TcpListener(const TcpListener&) = delete;
  TcpListener& operator=(const TcpListener&) = delete;

  void accept();

  std::uint16_t port() const;

 private:
  class Inside;
  std::shared_ptr<Inside> inside_;
};

}  // namespace lineweir::platform

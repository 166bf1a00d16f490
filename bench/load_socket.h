#pragma once

#include <memory>
#include <string_view>

#include <openssl/types.h>

namespace lineweir::bench {

// Tells why on the standard error, and ends the program.
[[noreturn]] void fail(std::string_view why);

// A connection to a port of this machine, in plain text or by TLS without asking who is there. Its
// end, in whatever way it comes, ends the program. It reads without waiting and writes with.
class LoadSocket {
 public:
  enum class Kind { Plain, Tls };

  LoadSocket() = default;
  LoadSocket(int port, Kind kind);
  ~LoadSocket();
  LoadSocket(LoadSocket&& other) noexcept;
  LoadSocket& operator=(LoadSocket&& other) noexcept;

  int descriptor() const { return descriptor_; }
  void write_all(std::string_view bytes);
  // What is there, up to so many bytes; empty where nothing is. It stands in the buffer.
  std::string_view read(char* buffer, std::size_t size);

 private:
  int descriptor_ = -1;
  std::unique_ptr<SSL, void (*)(SSL*)> tls_{nullptr, nullptr};
};

}  // namespace lineweir::bench

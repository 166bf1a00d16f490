#pragma once

#include <memory>
#include <string>

#include "platform/asio/asio_loop.h"
#include "platform/connection.h"

namespace lineweir::platform {

// Listens on a socket of the file system that nobody but this process's user and root may use.
class UnixListener final : public Listener {
 public:
  // A socket that a process has left there is replaced; one that is in use, or a file of another
  // kind, is not touched. Peers wait until the listener is told to accept them. Throws
  // std::runtime_error, whose text is a sentence.
  UnixListener(AsioLoop& loop, const std::string& path);
  ~UnixListener() override;
  UnixListener(const UnixListener&) = delete;
  UnixListener& operator=(const UnixListener&) = delete;

  void accept();

 private:
  class Inside;
  std::shared_ptr<Inside> inside_;
};

}  // namespace lineweir::platform

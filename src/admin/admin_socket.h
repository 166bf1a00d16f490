#pragma once

#include <chrono>
#include <string>

#include "platform/disk/file_descriptor.h"

namespace lineweir::admin {

// The way to a server: lines in both directions over a socket of the file system. Everything throws
// Trouble.
class AdminSocket {
 public:
  explicit AdminSocket(const std::string& path);

  // Sends a line and waits for the next one from the server; both without their ends.
  std::string ask(const std::string& line, std::chrono::seconds patience);

 private:
  void send(std::string text);

  platform::FileDescriptor socket_;
  std::string received_;
};

}  // namespace lineweir::admin

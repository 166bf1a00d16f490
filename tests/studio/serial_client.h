#pragma once

#include <string>
#include <string_view>

#include "studio/descriptor.h"

// A console's end of the device, as bare as can be. Nothing here waits longer than its limit.
class SerialClient {
 public:
  explicit SerialClient(const std::string& device);

  void send(std::string_view text);

  // Reads until `count` characters have come; fewer once nothing has come for the limit.
  std::string receive(std::size_t count);

  // Reads until the text has come; what was read.
  std::string receive_until(std::string_view text);

 private:
  std::string receive_some();

  lineweir::studio::Descriptor device_;
};

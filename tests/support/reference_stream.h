#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "wire/serial_buffer.h"

namespace lineweir::test {

// The rule of the box's stream in its plainest form: the whole buffer is searched for each line's
// token, and places count from 1. What SerialBuffer finds and drops is judged by it.
class ReferenceStream {
 public:
  void append(std::string_view characters) { buffer_ += characters; }

  // The items in the order in which they are handled.
  std::vector<StatusItem> items(int line_count) {
    std::vector<StatusItem> found;
    last_end_ = 0;
    for (int line = 0; line < line_count; ++line) {
      const std::string token = "0" + std::to_string(line);
      const std::size_t offset = buffer_.rfind(token);
      if (offset == std::string::npos || offset == 0) continue;
      const std::size_t place = offset + 1;
      found.push_back({buffer_[place - 2], std::stoi(buffer_.substr(place - 1, 2))});
      if (place > last_end_) last_end_ = place + 2;
    }
    return found;
  }

  // Drops what the last call of items() has consumed.
  void drop() {
    if (last_end_ > 0) buffer_.erase(0, last_end_ - 1);
    last_end_ = 0;
  }

  const std::string& buffer() const { return buffer_; }

 private:
  std::string buffer_;
  std::size_t last_end_ = 0;
};

}  // namespace lineweir::test

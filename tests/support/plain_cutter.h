#pragma once

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

namespace lineweir::test {

// The rule by which frames are cut in its plainest form: everything is searched anew for each
// frame, and places count from 1 with 0 for none. What ReceiveBuffer cuts is judged by it.
class PlainCutter {
 public:
  void append(std::string_view received) { text_ += received; }

  // The bodies of all whole frames, which are taken out.
  std::vector<std::string> take() {
    std::vector<std::string> bodies;
    while (true) {
      std::size_t end = place_of("\5\5", 1);
      while (end != 0 && body(end).size() < 7) end = place_of("\5\5", end + 1);
      if (end == 0) return bodies;
      bodies.push_back(body(end));
      text_ = text_.substr(end);
    }
  }

  const std::string& text() const { return text_; }

 private:
  std::size_t place_of(std::string_view marker, std::size_t from) const {
    const auto found = text_.find(marker, from - 1);
    return found == std::string::npos ? 0 : found + 1;
  }

  std::string body(std::size_t end) const {
    std::size_t start = place_of("\4\4", 1);
    if (start > end) start = 0;
    const auto length = static_cast<long>(end) - static_cast<long>(start) - 2;
    if (length <= 0) return {};
    return text_.substr(start + 1, static_cast<std::size_t>(length));
  }

  std::string text_;
};

}  // namespace lineweir::test

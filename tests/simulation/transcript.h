#pragma once

#include <string>
#include <string_view>

#include "platform/event_loop.h"

namespace lineweir::simulation {

// What has happened, one line each: the second with its milliseconds, who, and what.
class Transcript {
 public:
  explicit Transcript(const platform::EventLoop& loop) : loop_(loop) {}

  void add(std::string_view who, std::string_view what);

  const std::string& text() const { return text_; }
  // What was told so far is forgotten.
  void clear() { text_.clear(); }

 private:
  const platform::EventLoop& loop_;
  std::string text_;
};

}  // namespace lineweir::simulation

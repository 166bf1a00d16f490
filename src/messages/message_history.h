#pragma once

#include <deque>
#include <string>

#include "base/date_time.h"

namespace lineweir {

// A message as it is remembered.
struct HeardMessage {
  platform::DateTime at;
  int group = 0;
  std::string sender;
  std::string text;
  bool urgent = false;
};

// The messages of the show, oldest first. The oldest go where it becomes too long to be read.
class MessageHistory {
 public:
  void add(HeardMessage message);

  // A line for each message, "hh:mm:ss  SENDER: TEXT", with a heading where the day or the group
  // is another one than before.
  const std::string& text() const { return text_; }

 private:
  void append(const HeardMessage& message, const HeardMessage* before);

  std::deque<HeardMessage> messages_;
  std::string text_;
};

}  // namespace lineweir

#include "messages/message_history.h"

#include <utility>

#include "base/time_text.h"
#include "messages/conversation.h"

namespace lineweir {
namespace {

constexpr std::size_t longest_history = 200'000;
// What is left of one that has become too long, so that it isn't cut at each message.
constexpr std::size_t shortened_history = 150'000;

bool same_day(const platform::DateTime& one, const platform::DateTime& other) {
  return one.year == other.year && one.month == other.month && one.day == other.day;
}

std::string heading(const HeardMessage& message) {
  return date_text(message.at) + ", group " + std::to_string(message.group);
}

std::string line_of(const HeardMessage& message) {
  std::string line = hms_text(seconds_of_day(message.at)) + "  ";
  if (message.urgent) line += "URGENT  ";
  if (!message.sender.empty()) line += message.sender + ": ";
  return line + message.text;
}

}  // namespace

void MessageHistory::append(const HeardMessage& message, const HeardMessage* before) {
  if (!text_.empty()) text_ += line_break;
  if (before == nullptr || !same_day(before->at, message.at) || before->group != message.group) {
    text_.append(heading(message)).append(line_break);
  }
  text_ += line_of(message);
}

void MessageHistory::add(HeardMessage message) {
  append(message, messages_.empty() ? nullptr : &messages_.back());
  messages_.push_back(std::move(message));
  if (text_.size() <= longest_history) return;
  std::size_t length = text_.size();
  while (messages_.size() > 1 && length > shortened_history) {
    length -= std::min(length, line_of(messages_.front()).size());
    messages_.pop_front();
  }
  text_.clear();
  const HeardMessage* before = nullptr;
  for (const HeardMessage& kept : messages_) {
    append(kept, before);
    before = &kept;
  }
}

}  // namespace lineweir

#include "messages/conversation.h"

#include <algorithm>

#include "base/text.h"

namespace lineweir {
namespace {

constexpr std::string_view name_end = "> ";

}  // namespace

std::string sendable(std::string_view typed) {
  std::string text(typed);
  std::erase_if(text, [](char character) {
    const bool control = code_of(character) < ' ' || character == '\x7f';
    return control && character != '\t' && character != '\r' && character != '\n';
  });
  return text;
}

std::string sendable_line(std::string_view typed) {
  std::string line = sendable(typed);
  std::ranges::replace_if(
      line, [](char character) { return character == '\r' || character == '\n'; }, ' ');
  return line;
}

std::string shown_message(std::string_view message) {
  const std::size_t sender = message.find(sender_end);
  if (sender == std::string_view::npos) return std::string(message);
  return std::string(message.substr(0, sender)) + ">" + std::string(message.substr(sender + 1));
}

std::string with_line(std::string_view conversation, std::string_view name,
                      std::string_view words) {
  std::string whole(conversation);
  whole.append(line_break).append(name).append(name_end).append(words);
  return whole;
}

std::string last_lines(std::string_view conversation) {
  while (conversation.size() > longest_message) {
    std::size_t end =
        conversation.find_first_of(line_break, conversation.size() - longest_message - 1);
    if (end == std::string_view::npos) end = conversation.find_last_of(line_break);
    if (end == std::string_view::npos) break;
    const bool both = conversation.substr(end).starts_with(line_break);
    conversation.remove_prefix(end + (both ? 2 : 1));
  }
  return std::string(conversation);
}

SeatMessage words_of(std::string_view message) {
  SeatMessage words;
  const std::size_t sender = message.find(sender_end);
  if (sender != std::string_view::npos) {
    words.sender = message.substr(0, sender);
    message.remove_prefix(sender + 1);
  }
  const std::string name = words.sender + std::string(name_end);
  const std::size_t last_break = message.rfind(line_break);
  if (last_break != std::string_view::npos &&
      message.substr(last_break + line_break.size()).starts_with(name)) {
    message.remove_prefix(last_break + line_break.size());
  }
  if (message.starts_with(name)) message.remove_prefix(name.size());
  words.text = message;
  return words;
}

}  // namespace lineweir

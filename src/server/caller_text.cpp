#include "server/caller_text.h"

#include <array>

#include "base/text.h"

namespace lineweir::server {
namespace {

constexpr std::size_t longest_sender = 50;
constexpr std::size_t longest_message = 30'200;

// In the order of the fields of caller data; what has a width in the consoles' records is cut to
// it.
constexpr std::array<std::size_t, entry_field_count> longest_fields = {100, 100, 100, 100, 100,
                                                                       100, 10,  6,   500, 100};

bool is_control(char character) { return code_of(character) < 32 || code_of(character) == 127; }

}  // namespace

CallerDetails clean_caller_data(std::string_view buffer) {
  const std::string missing(entry_field_count + 1, field_end);
  return clean_caller_data(decode_caller_data(std::string(buffer) + missing).value());
}

CallerDetails clean_caller_data(CallerDetails data) {
  data.sender = clean_name(data.sender, longest_sender);
  for (std::size_t i = 0; i < data.fields.size(); ++i) {
    data.fields[i] = clean_name(data.fields[i], longest_fields[i]);
  }
  return data;
}

std::optional<std::string> clean_message(std::string_view buffer) {
  auto message = decode_text_message(buffer);
  if (!message || message->text.size() > longest_message) return std::nullopt;
  for (char& character : message->text) {
    const bool has_meaning = character == item_end || character == '\r' || character == '\n';
    if (is_control(character) && !has_meaning) character = ' ';
  }
  return encode_text_message(*message);
}

std::string clean_name(std::string_view text, std::size_t longest) {
  std::string clean(text.substr(0, longest));
  for (char& character : clean) {
    if (is_control(character)) character = ' ';
  }
  return clean;
}

}  // namespace lineweir::server

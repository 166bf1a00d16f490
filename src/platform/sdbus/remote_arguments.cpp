#include "platform/sdbus/remote_arguments.h"

#include <sdbus-c++/Types.h>

#include <cstdint>
#include <string>
#include <utility>

namespace lineweir::platform {
namespace {

// A character takes so many bytes of UTF-8 at most.
constexpr std::size_t longest_point = 4;

std::optional<std::string> text_of(sdbus::Message& message, const Letters& letters) {
  std::string utf8;
  message >> utf8;
  // Looked at first, so that nothing is done for a text of any length.
  if (utf8.size() > longest_remote_text * longest_point) return std::nullopt;
  std::string text = letters.from_utf8(utf8);
  if (text.size() > longest_remote_text) return std::nullopt;
  return text;
}

}  // namespace

std::optional<RemoteArguments> arguments_of(sdbus::Message& message, std::string_view signature,
                                            const Letters& letters) {
  RemoteArguments arguments;
  for (const char type : signature) {
    if (type == 'i') {
      std::int32_t number = 0;
      message >> number;
      arguments.emplace_back(std::in_place_type<int>, number);
    } else if (type == 'o') {
      sdbus::ObjectPath path;
      message >> path;
      if (path.size() > longest_remote_text) return std::nullopt;
      arguments.emplace_back(std::in_place_type<std::string>, path);
    } else {
      std::optional<std::string> text = text_of(message, letters);
      if (!text) return std::nullopt;
      arguments.emplace_back(std::move(*text));
    }
  }
  return arguments;
}

void append(sdbus::Message& message, const RemoteArgument& argument, const Letters& letters) {
  if (const auto* number = std::get_if<int>(&argument)) {
    message << std::int32_t{*number};
  } else if (const auto* flag = std::get_if<bool>(&argument)) {
    message << *flag;
  } else {
    std::string text = std::get<std::string>(argument);
    std::erase(text, '\0');
    message << letters.to_utf8(text);
  }
}

char type_of(const RemoteArgument& argument) {
  constexpr std::string_view types = "ibs";
  return types[argument.index()];
}

std::size_t room_of(const RemoteArguments& arguments) {
  // A call without texts takes room too.
  std::size_t room = 64;
  for (const RemoteArgument& argument : arguments) {
    if (const auto* text = std::get_if<std::string>(&argument)) room += text->size();
  }
  return room;
}

}  // namespace lineweir::platform

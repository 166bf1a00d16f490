#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "forms/entry_fields.h"
#include "wire/packet_text.h"

// Caller data as they stand on the wire, made without the codec that is tested.
namespace lineweir::test {

inline std::string fields_text(std::string_view sender, const std::vector<std::string>& fields) {
  std::string text = std::string(sender) + '\2';
  for (std::size_t i = 0; i < entry_field_count; ++i)
    text += (i < fields.size() ? fields[i] : "") + '\2';
  return text;
}

inline std::string data_frame(int line, int group, int console, std::string buffer) {
  std::string bytes = "\4\4\6";
  for (const int field : {line, group, 255, console, 255}) bytes += static_cast<char>(field);
  bytes += TextWrit_SizeEncode(static_cast<int>(buffer.size()));
  if (buffer.size() % 2 == 1) buffer += '\xFF';
  return bytes + buffer + "\5\5";
}

}  // namespace lineweir::test

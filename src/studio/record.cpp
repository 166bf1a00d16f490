#include "studio/record.h"

namespace lineweir::studio {
namespace {

std::string_view kind_prefix(Record::Kind kind) {
  switch (kind) {
    case Record::Kind::Word:
      return "word ";
    case Record::Kind::Noise:
      return "noise ";
    case Record::Kind::Item:
      return "item ";
    case Record::Kind::Text:
      return "text ";
    case Record::Kind::Event:
      return "";
    case Record::Kind::Seat:
      return "seat ";
    case Record::Kind::Note:
      return "note ";
  }
  return "";
}

}  // namespace

std::string format_record(const Record& record) {
  std::string line = format_seconds(record.at);
  line += ' ';
  line += kind_prefix(record.kind);
  line += record.text;
  return line;
}

std::string printable(std::string_view bytes) {
  constexpr std::string_view hex = "0123456789abcdef";
  std::string text;
  for (const char character : bytes) {
    if (character >= ' ' && character <= '~' && character != '\\') {
      text += character;
      continue;
    }
    const auto code = static_cast<unsigned char>(character);
    text += "\\x";
    text += hex[code >> 4U];
    text += hex[code & 0x0fU];
  }
  return text;
}

}  // namespace lineweir::studio

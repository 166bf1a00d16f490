#include "state/settings_record.h"

#include <cstdint>

#include "base/integer16.h"
#include "base/text.h"

namespace lineweir {
namespace {

constexpr std::size_t shortest_file = 2;
constexpr std::size_t number_width = 2;

void write_number(std::string& bytes, std::size_t offset, std::size_t width, int value) {
  if (width == number_width) value = integer16(value);
  auto rest = static_cast<std::uint32_t>(value);
  for (std::size_t i = 0; i < width; ++i) {
    bytes[offset + i] = static_cast<char>(rest & 0xFF);
    rest >>= 8;
  }
}

int read_number(std::string_view bytes, std::size_t width) {
  std::uint32_t value = 0;
  for (std::size_t i = width; i-- > 0;) {
    value = (value << 8) | static_cast<std::uint32_t>(code_of(bytes[i]));
  }
  return width == number_width ? static_cast<std::int16_t>(value) : static_cast<int>(value);
}

int flag_number(SettingKind kind, bool flag) {
  if (!flag) return 0;
  return kind == SettingKind::FlagOfOne ? 1 : -1;
}

// Writes one field of a record, whatever the member's type is.
struct FieldWriter {
  std::string& bytes;
  const SettingsRecord& record;
  const SettingsField& field;

  void operator()(int SettingsRecord::*member) const {
    write_number(bytes, field.offset, field.width, record.*member);
  }
  void operator()(bool SettingsRecord::*member) const {
    write_number(bytes, field.offset, field.width, flag_number(field.kind, record.*member));
  }
  void operator()(std::string SettingsRecord::*member) const {
    const auto text = left_part(record.*member, field.width);
    bytes.replace(field.offset, text.size(), text);
  }
  void operator()(LogFieldFlags SettingsRecord::*member) const {
    std::size_t offset = field.offset;
    for (const bool flag : record.*member) {
      write_number(bytes, offset, number_width, flag_number(field.kind, flag));
      offset += number_width;
    }
  }
  void operator()(ColumnNumbers SettingsRecord::*member) const {
    std::size_t offset = field.offset;
    for (const int number : record.*member) {
      write_number(bytes, offset, number_width, number);
      offset += number_width;
    }
  }
};

struct FieldReader {
  std::string_view bytes;
  SettingsRecord& record;
  const SettingsField& field;

  void operator()(int SettingsRecord::*member) const {
    record.*member = read_number(bytes, field.width);
  }
  void operator()(bool SettingsRecord::*member) const {
    record.*member = read_number(bytes, field.width) != 0;
  }
  void operator()(std::string SettingsRecord::*member) const {
    const auto end = bytes.find_last_not_of(std::string_view(" \0", 2));
    record.*member = bytes.substr(0, end + 1);
  }
  void operator()(LogFieldFlags SettingsRecord::*member) const {
    std::size_t offset = 0;
    for (bool& flag : record.*member) {
      flag = read_number(bytes.substr(offset), number_width) != 0;
      offset += number_width;
    }
  }
  void operator()(ColumnNumbers SettingsRecord::*member) const {
    std::size_t offset = 0;
    for (int& number : record.*member) {
      number = read_number(bytes.substr(offset), number_width);
      offset += number_width;
    }
  }
};

}  // namespace

std::string encode_settings(const SettingsRecord& record) {
  std::string bytes(settings_record_size, ' ');
  for (const SettingsField& field : settings_fields) {
    std::visit(FieldWriter{bytes, record, field}, field.member);
  }
  return bytes;
}

std::optional<SettingsRecord> decode_settings(std::string_view bytes) {
  if (bytes.size() < shortest_file) return std::nullopt;
  std::string whole(left_part(bytes, settings_record_size));
  whole.resize(settings_record_size, '\0');

  SettingsRecord record;
  for (const SettingsField& field : settings_fields) {
    const auto part = std::string_view(whole).substr(field.offset, field.width);
    std::visit(FieldReader{part, record, field}, field.member);
  }
  return record;
}

}  // namespace lineweir

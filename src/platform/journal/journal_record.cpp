#include "platform/journal/journal_record.h"

#include <algorithm>
#include <array>
#include <optional>

namespace lineweir::platform {
namespace {

// A record is a mark, the size of its content, a check value of its content, and its content. All
// numbers have their low byte first; a text is its size and its bytes.
constexpr std::string_view mark = "LWC1";
constexpr std::size_t head_size = 12;
constexpr std::size_t largest_content = 1 << 20;
constexpr std::size_t most_columns = 255;

constexpr std::uint32_t crc_polynomial = 0xEDB88320U;

constexpr std::array<std::uint32_t, 256> make_crc_table() {
  std::array<std::uint32_t, 256> table{};
  for (std::uint32_t i = 0; i < table.size(); ++i) {
    std::uint32_t value = i;
    for (int bit = 0; bit < 8; ++bit) {
      value = (value & 1) != 0 ? (value >> 1) ^ crc_polynomial : value >> 1;
    }
    table[i] = value;
  }
  return table;
}

std::uint32_t check_value(std::string_view bytes) {
  static constexpr auto table = make_crc_table();
  std::uint32_t value = 0xFFFFFFFFU;
  for (const char c : bytes) {
    value = table[(value ^ static_cast<unsigned char>(c)) & 0xFFU] ^ (value >> 8);
  }
  return ~value;
}

void append_number(std::string& bytes, std::uint64_t number, int size) {
  for (int i = 0; i < size; ++i) bytes += static_cast<char>(number >> (8 * i) & 0xFFU);
}

void append_text(std::string& bytes, std::string_view text) {
  append_number(bytes, text.size(), 4);
  bytes += text;
}

void append_name(std::string& bytes, const RecordName& name) {
  append_text(bytes, name.run);
  append_number(bytes, name.sequence, 8);
}

void append_columns(std::string& bytes, const std::vector<LoggedColumn>& columns) {
  append_number(bytes, columns.size(), 4);
  for (const LoggedColumn& column : columns) {
    append_text(bytes, column.name);
    append_text(bytes, column.value);
  }
}

// Takes values from the front of bytes. What isn't there is nothing, and so is all behind it.
class Reader {
 public:
  explicit Reader(std::string_view bytes) : bytes_(bytes) {}

  bool at_end() const { return !failed_ && bytes_.empty(); }

  std::uint64_t number(std::size_t size) {
    const std::string_view bytes = take(size);
    std::uint64_t number = 0;
    for (std::size_t i = bytes.size(); i > 0; --i) {
      number = number << 8 | static_cast<unsigned char>(bytes[i - 1]);
    }
    return number;
  }
  std::string text() { return std::string(take(number(4))); }

  RecordName name() {
    std::string run = text();
    return {std::move(run), number(8)};
  }

  std::vector<LoggedColumn> columns() {
    const std::uint64_t count = number(4);
    if (count > most_columns) failed_ = true;
    std::vector<LoggedColumn> columns;
    for (std::uint64_t i = 0; i < count && !failed_; ++i) {
      std::string name = text();
      columns.push_back({std::move(name), text()});
    }
    return columns;
  }

 private:
  std::string_view take(std::uint64_t size) {
    if (failed_ || size > bytes_.size()) {
      failed_ = true;
      return {};
    }
    const std::string_view taken = bytes_.substr(0, size);
    bytes_.remove_prefix(size);
    return taken;
  }

  std::string_view bytes_;
  bool failed_ = false;
};

std::optional<JournalRecord> record_in(std::string_view content) {
  Reader reader(content);
  JournalRecord record;
  record.name = reader.name();
  record.instead_of = reader.name();
  record.call.file = reader.text();
  record.call.table = reader.text();
  record.call.columns = reader.columns();
  record.call.replaced = reader.columns();
  if (!reader.at_end()) return std::nullopt;
  return record;
}

// The content of the record with which the bytes begin.
std::optional<std::string_view> content_in_front(std::string_view bytes) {
  if (!bytes.starts_with(mark) || bytes.size() < head_size) return std::nullopt;
  Reader head(bytes.substr(mark.size(), head_size - mark.size()));
  const std::uint64_t size = head.number(4);
  const std::uint64_t check = head.number(4);
  if (size > largest_content || size > bytes.size() - head_size) return std::nullopt;
  const std::string_view content = bytes.substr(head_size, size);
  if (check_value(content) != check) return std::nullopt;
  return content;
}

}  // namespace

std::string journal_bytes(const JournalRecord& record) {
  std::string content;
  append_name(content, record.name);
  append_name(content, record.instead_of);
  append_text(content, record.call.file);
  append_text(content, record.call.table);
  append_columns(content, record.call.columns);
  append_columns(content, record.call.replaced);

  std::string bytes(mark);
  append_number(bytes, content.size(), 4);
  append_number(bytes, check_value(content), 4);
  return bytes + content;
}

std::vector<JournalRecord> journal_records(std::string_view bytes) {
  std::vector<JournalRecord> records;
  while (!bytes.empty()) {
    const auto content = content_in_front(bytes);
    if (content) {
      if (auto record = record_in(*content)) records.push_back(std::move(*record));
      bytes.remove_prefix(head_size + content->size());
    } else {
      // Behind what is damaged the next record begins at the next mark.
      bytes.remove_prefix(std::min(bytes.find(mark, 1), bytes.size()));
    }
  }
  return records;
}

}  // namespace lineweir::platform

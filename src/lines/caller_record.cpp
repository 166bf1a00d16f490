#include "lines/caller_record.h"

#include <algorithm>

#include "base/text.h"

namespace lineweir {

void CallerRecord::set(CallerField field, std::string_view text) {
  const auto place = static_cast<std::size_t>(field);
  const std::size_t width = rule_of(field).width;
  if (width == 0) {
    texts_[place] = text;
    return;
  }
  texts_[place] = left_part(text, width);
  texts_[place].resize(width, ' ');
}

void CallerRecord::clear_fields(std::size_t first, std::size_t end) {
  for (std::size_t i = first; i < end; ++i) set(caller_fields[i].field, "");
}

void CallerRecord::clear() { clear_fields(0, caller_fields.size()); }

void CallerRecord::clear_data_fields() { clear_fields(0, data_field_count); }

void CallerRecord::clear_times() { clear_fields(data_field_count, caller_fields.size()); }

bool CallerRecord::holds_data() const {
  return std::any_of(texts_.begin(), texts_.begin() + data_field_count, [](const auto& text) {
    const auto content = trimmed(text);
    return !content.empty() && code_of(content.front()) > 31;
  });
}

}  // namespace lineweir

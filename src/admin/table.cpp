#include "admin/table.h"

#include <algorithm>

#include "letters/utf8.h"

namespace lineweir::admin {
namespace {

constexpr std::size_t gap = 2;

bool is_control(char32_t point) {
  // Of which some turn the direction of what follows.
  return point < 0x20 || (point >= 0x7F && point < 0xA0) || point == 0x061C ||
         (point >= 0x200E && point <= 0x200F) || (point >= 0x2028 && point <= 0x202E) ||
         (point >= 0x2066 && point <= 0x2069);
}

// In characters, each of which is taken to be one column wide.
std::size_t width_of(std::string_view text) {
  return static_cast<std::size_t>(std::ranges::count_if(
      text, [](char byte) { return (static_cast<unsigned char>(byte) & 0xC0U) != 0x80U; }));
}

std::string line(const Cells& cells, const std::vector<std::size_t>& widths) {
  std::string text;
  for (std::size_t i = 0; i < cells.size(); ++i) {
    text += cells[i];
    text.append(widths[i] - width_of(cells[i]) + gap, ' ');
  }
  text.erase(text.find_last_not_of(' ') + 1);
  return text + '\n';
}

}  // namespace

std::string shown_text(std::string_view utf8) {
  std::string text;
  while (!utf8.empty()) {
    const auto point = leading_point(utf8);
    const std::size_t size = point ? point->size : 1;
    if (!point || is_control(point->point)) {
      text += '?';
    } else {
      text += utf8.substr(0, size);
    }
    utf8.remove_prefix(size);
  }
  return text;
}

std::string table(const Cells& headings, const std::vector<Cells>& rows) {
  std::vector<std::size_t> widths;
  for (std::size_t i = 0; i < headings.size(); ++i) {
    widths.push_back(width_of(headings[i]));
    for (const Cells& cells : rows) widths[i] = std::max(widths[i], width_of(cells[i]));
  }
  std::string text = line(headings, widths);
  for (const Cells& cells : rows) text += line(cells, widths);
  return text;
}

std::string csv_record(const Cells& cells) {
  std::string text;
  for (const std::string& cell : cells) {
    if (!text.empty() || &cell != &cells.front()) text += ',';
    if (cell.find_first_of("\",\r\n") == std::string::npos) {
      text += cell;
      continue;
    }
    text += '"';
    for (const char character : cell) {
      if (character == '"') text += '"';
      text += character;
    }
    text += '"';
  }
  return text + "\r\n";
}

}  // namespace lineweir::admin

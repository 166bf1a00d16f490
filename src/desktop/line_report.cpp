#include "desktop/line_report.h"

#include <algorithm>
#include <vector>

#include "base/text.h"
#include "core/console.h"

namespace lineweir {
namespace {

using Cells = std::vector<std::string>;

Cells headings(Console& console) {
  Cells cells;
  for (const int column : console.display.ColumnsInUse) {
    cells.push_back(console.Lineweir.CaptionLabel(column).caption);
  }
  cells.emplace_back("Letter");
  return cells;
}

Cells cells_of(Console& console, int line) {
  Cells cells;
  for (const int column : console.display.ColumnsInUse) {
    cells.push_back(console.Lineweir.column_labels(column)(line).caption);
  }
  cells.emplace_back(1, console.lines.StatusLetter(line));
  return cells;
}

}  // namespace

std::string line_report(Console& console) {
  std::vector<Cells> rows = {headings(console)};
  for (int line = 0; line < console.lines.LineCount; ++line) {
    rows.push_back(cells_of(console, line));
  }

  std::vector<std::size_t> widths(rows.front().size());
  for (const Cells& row : rows) {
    for (std::size_t i = 0; i < row.size(); ++i) widths[i] = std::max(widths[i], row[i].size());
  }

  std::string report;
  for (const Cells& row : rows) {
    std::string text;
    for (std::size_t i = 0; i < row.size(); ++i) {
      text += row[i];
      text.append(widths[i] - row[i].size() + 2, ' ');
    }
    report += console.services.letters.to_utf8(trimmed_right(text)) + "\n";
  }
  return report;
}

}  // namespace lineweir

#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace lineweir::admin {

using Cells = std::vector<std::string>;

// The text without what a terminal would obey: control characters become "?".
std::string shown_text(std::string_view utf8);

// Lines of UTF-8, each ended: columns two blanks apart, as wide as their widest cell.
std::string table(const Cells& headings, const std::vector<Cells>& rows);

// One record after RFC 4180, with its end.
std::string csv_record(const Cells& cells);

}  // namespace lineweir::admin

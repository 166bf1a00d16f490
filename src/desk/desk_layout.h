#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace lineweir::desk {

enum class Layout { TenLines, TwentyLines };

constexpr int lines_of(Layout layout) { return layout == Layout::TenLines ? 10 : 20; }

// The code that a key sends, by what stands beside it: "main 1" to "main 10" and "conf 1" to
// "conf 10", or "line 1" to "line 20"; "drop1", "hold1", "drop2", "hold2"; "next"; "dial 0" to
// "dial 9", "dial *", "dial #". "code 40" sends any code. Nothing for what the layout doesn't have.
std::optional<int> key_code(Layout layout, std::string_view name);

// A lamp by the row and the column where it stands. With ten lines the upper row is main and the
// lower one the conference; with twenty lines the rows are lines 1 to 10 and 11 to 20.
struct LampPlace {
  int row;
  int column;

  friend bool operator==(const LampPlace&, const LampPlace&) = default;
};
inline constexpr int lamp_rows = 2;
inline constexpr int lamp_columns = 10;

// The column of an address; its two cadence bytes are for the upper and the lower row. Nothing for
// an address that no lamp has.
std::optional<int> column_of(Layout layout, int address);

// What stands beside the lamp: "main 3", "line 13".
std::string lamp_name(Layout layout, LampPlace place);

}  // namespace lineweir::desk

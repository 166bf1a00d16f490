#pragma once

#include <algorithm>
#include <array>
#include <string>
#include <string_view>

namespace lineweir {

// The pictures behind the elements of the main form are files of the folder "Vesgraph" beside the
// program. A name tells the row count, the part and the face: "10TM.jpg", "17BG.jpg".

inline constexpr std::string_view background_folder = "Vesgraph";

enum class ScreenPart : char { Top = 'T', Bottom = 'B' };
enum class ScreenFace : char { Metal = 'M', Grey = 'G' };

struct BackgroundRange {
  // The highest number of visible rows of the range.
  int last_row_count;
  // The row count in the name of the upper picture.
  int top_number;
  // The row count in the name of the lower one; 0 where each row count has a picture of its own.
  int bottom_number;
};

inline constexpr std::array background_ranges = {
    BackgroundRange{10, 10, 10},
    BackgroundRange{18, 20, 0},
    BackgroundRange{19, 19, 0},
    BackgroundRange{20, 20, 0},
};

inline std::string background_file(ScreenPart part, ScreenFace face, int visible_lines) {
  const int rows = std::min(visible_lines, background_ranges.back().last_row_count);
  const auto& range = *std::ranges::find_if(
      background_ranges, [rows](const auto& row) { return rows <= row.last_row_count; });
  int number = part == ScreenPart::Top ? range.top_number : range.bottom_number;
  if (number == 0) number = rows;
  return std::to_string(number) + static_cast<char>(part) + static_cast<char>(face) + ".jpg";
}

}  // namespace lineweir

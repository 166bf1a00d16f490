#pragma once

#include <algorithm>
#include <array>
#include <optional>
#include <string>
#include <string_view>

#include "forms/picture_names.h"
#include "lines/status_letters.h"

namespace lineweir {

// The holders of a row's strip and of the marks on it, by the strip's colour.
struct StripPictures {
  RowColor color;
  std::string_view strip;
  std::string_view mark;
};

inline constexpr std::array strip_pictures = {
    StripPictures{RowColor::White, pictures::DataRowWhite, pictures::MarkWhite},
    StripPictures{RowColor::Green, pictures::DataRowGreen, pictures::MarkGreen},
    StripPictures{RowColor::Red, pictures::DataRowRed, pictures::MarkRed},
};

constexpr const StripPictures& strip_of(RowColor color) {
  return *std::ranges::find(strip_pictures, color, &StripPictures::color);
}

// Each strip is there in three widths: as wide as beside ten rows at design size, and behind its
// name for narrower rows and for wider.
inline constexpr std::string_view narrow_strip_ending = "Short";
inline constexpr std::string_view wide_strip_ending = "Long";

// The holder of a row's strip for that width.
std::string fitted_strip(std::string_view plain_strip, int width);

// The colour of a strip of any width; nothing for another picture.
constexpr std::optional<RowColor> color_of_strip(std::string_view picture) {
  for (const StripPictures& row : strip_pictures) {
    if (!picture.starts_with(row.strip)) continue;
    const std::string_view ending = picture.substr(row.strip.size());
    if (ending.empty() || ending == narrow_strip_ending || ending == wide_strip_ending) {
      return row.color;
    }
  }
  return std::nullopt;
}

constexpr std::optional<RowColor> color_of_mark(std::string_view picture) {
  const auto* row = std::ranges::find(strip_pictures, picture, &StripPictures::mark);
  return row == strip_pictures.end() ? std::nullopt : std::optional(row->color);
}

}  // namespace lineweir

#pragma once

#include <array>
#include <string_view>

#include "forms/picture_names.h"

namespace lineweir {

// The three faces of a picture button. The setup button has no disabled one.
struct ButtonFaces {
  std::string_view up;
  std::string_view down;
  std::string_view disabled;

  constexpr bool holds(std::string_view picture) const {
    return picture == up || picture == down || (!disabled.empty() && picture == disabled);
  }

  // The face of another family that shows the same state as one of this family.
  constexpr std::string_view counterpart(std::string_view picture, const ButtonFaces& other) const {
    if (picture == up) return other.up;
    return picture == down ? other.down : other.disabled;
  }
};

inline constexpr ButtonFaces drop_large_faces = {pictures::DropLargeUp, pictures::DropLargeDown,
                                                 pictures::DropLargeDisabled};
inline constexpr ButtonFaces drop_small_faces = {pictures::DropSmallUp, pictures::DropSmallDown,
                                                 pictures::DropSmallDisabled};
inline constexpr ButtonFaces center_faces = {pictures::Center1Up, pictures::Center1Down,
                                             pictures::CenterDisabled};
inline constexpr ButtonFaces right_faces = {pictures::ButtonRightUp, pictures::ButtonRightDown,
                                            pictures::ButtonRightDisabled};
inline constexpr ButtonFaces hybrid_faces = {pictures::HybridNormUp, pictures::HybridNormDown,
                                             pictures::HybridDisabledNorm};
inline constexpr ButtonFaces setup_faces = {pictures::SetupUp, pictures::SetupDown, {}};

inline constexpr std::array button_families = {drop_large_faces, drop_small_faces, center_faces,
                                               right_faces,      hybrid_faces,     setup_faces};

// The family that a picture belongs to; null for any other picture.
constexpr const ButtonFaces* faces_holding(std::string_view picture) {
  for (const ButtonFaces& faces : button_families) {
    if (faces.holds(picture)) return &faces;
  }
  return nullptr;
}

// The faces of the centre buttons: with 19 and 20 rows they stand in the column at the right.
constexpr const ButtonFaces& center_button_faces(int visible_lines) {
  return visible_lines >= 19 ? right_faces : center_faces;
}

}  // namespace lineweir

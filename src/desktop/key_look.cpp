#include "desktop/key_look.h"

#include "screen/button_faces.h"

namespace lineweir {

KeyState key_state(std::string_view picture) {
  const ButtonFaces* faces = faces_holding(picture);
  if (faces == nullptr || picture == faces->up) return KeyState::Up;
  return picture == faces->down ? KeyState::Down : KeyState::Disabled;
}

const KeyColors& key_colors(const Theme& theme, KeyState state) {
  switch (state) {
    case KeyState::Down:
      return theme.key_down;
    case KeyState::Disabled:
      return theme.key_disabled;
    default:
      return theme.key_up;
  }
}

}  // namespace lineweir

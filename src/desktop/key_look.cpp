#include "desktop/key_look.h"

namespace lineweir {

KeyState key_state(std::string_view picture) {
  if (picture.find("Disabled") != std::string_view::npos) return KeyState::Disabled;
  return picture.ends_with("Down") ? KeyState::Down : KeyState::Up;
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

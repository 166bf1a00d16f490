#pragma once

#include <string_view>

#include "desktop/theme.h"

namespace lineweir {

enum class KeyState { Up, Down, Disabled };

// The state that a key's face shows; a key is drawn by it. Whether it can be pressed is told by the
// key itself.
KeyState key_state(std::string_view picture);

const KeyColors& key_colors(const Theme& theme, KeyState state);

}  // namespace lineweir

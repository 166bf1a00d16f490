#pragma once

#include <string_view>

#include "desktop/theme.h"

namespace lineweir {

enum class KeyState { Up, Down, Disabled };

// The state that a key's picture shows, by the end or middle of the picture's name.
KeyState key_state(std::string_view picture);

const KeyColors& key_colors(const Theme& theme, KeyState state);

}  // namespace lineweir

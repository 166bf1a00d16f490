#pragma once

#include <cstdint>
#include <random>

#include "support/scripted_console.h"

namespace lineweir::test {

// Gives a console options as its user might choose them, by a seed. Plans and logs are among those
// that `offer_files` makes.
void choose_anything(Console& console, std::uint32_t seed, int most_lines = lines_of_large_layout);

void offer_files(platform::ScriptedPlatform& platform);

}  // namespace lineweir::test

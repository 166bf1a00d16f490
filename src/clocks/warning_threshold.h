#pragma once

#include <string>

namespace lineweir {

// The countdown text below which a warning of so many seconds holds: one second more than the
// warning, so that the clock turns red when the countdown shows the warning itself. A warning below
// -1, or one of an hour less a second and more, gives a text that is no time.
std::string warning_threshold(int warning);

// Whether a threshold of that warning is a time.
bool is_warning_time(int warning);

}  // namespace lineweir

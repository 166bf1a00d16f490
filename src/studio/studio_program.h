#pragma once

#include <iosfwd>

#include "studio/options.h"

namespace lineweir::studio {

// Opens the device, names it on `out` and runs the exchange on it in real time until the studio is
// over or a signal asks for the end. Throws std::exception if something can't be opened.
void run_studio(const StudioOptions& options, std::ostream& out);

}  // namespace lineweir::studio

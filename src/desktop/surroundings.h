#pragma once

#include <filesystem>

#include "desktop/diagnosis.h"
#include "letters/code_pages.h"

namespace lineweir {

// Looks at everything once, but for the server, which takes its time. A QCoreApplication exists;
// where there is no screen it is one that needs none.
Surroundings look_around(const std::filesystem::path& folder, const CodePage& page);

}  // namespace lineweir

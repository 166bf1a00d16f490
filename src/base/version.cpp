#include "base/version.h"

namespace lineweir {

const char* const program_version = LINEWEIR_VERSION;

}  // namespace lineweir

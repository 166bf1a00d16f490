#pragma once

#include <string_view>

#include "callerdata/ended_call.h"

namespace lineweir {

// Whether the call on a line is the one that was last seen there at that moment. `began` is the
// time of day from which the line's clock runs, empty where that isn't known. Each call begins its
// own clock, so that one that ran before must be that call's; of a clock that was begun anew since,
// as when the caller went to air, nothing can be said.
bool is_same_call(const LastSeen& seen, std::string_view began, const platform::DateTime& now);

}  // namespace lineweir

#pragma once

#include <string_view>

#include "callerdata/ended_call.h"

namespace lineweir {

struct PresentCall {
  // The time of day from which its clock runs, empty where that isn't known.
  std::string_view began;
  // When this run of the program has seen it first.
  platform::DateTime noticed;
};

// Whether the call on a line is the one that was last seen there at that moment. Each call begins
// its own clock, so that one that ran by then is that call's. Nothing can be said of a clock that
// was begun anew since, as when the caller went to air, nor of one that runs only since the call
// was noticed here: a box doesn't tell since when its callers wait.
bool is_same_call(const LastSeen& seen, const PresentCall& call, const platform::DateTime& now);

// Whether it can't be that one, since it began behind that moment, or that is too long ago. Of most
// calls neither is known.
bool is_other_call(const LastSeen& seen, const PresentCall& call, const platform::DateTime& now);

}  // namespace lineweir

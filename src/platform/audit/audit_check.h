#pragma once

#include <cstdint>
#include <limits>
#include <string>

#include "platform/store.h"

namespace lineweir::platform {

// What is kept beside an audit, so that a tail that was cut off shows.
struct AuditEnd {
  std::int64_t entries = 0;
  // Of the last entry; empty where there is none.
  std::string hash;

  friend bool operator==(const AuditEnd&, const AuditEnd&) = default;
};

// So many entries no audit comes to by itself. A number beyond was written by somebody's hand, and
// nothing is written behind it, as there may be no room.
inline constexpr std::int64_t most_entries = std::numeric_limits<std::int64_t>::max() / 2;

// The end behind which an audit goes on, by the end that is kept and the last number, up to
// most_entries, that is there: behind what was written last, also where somebody has cut it off, so
// that the gap stays; and behind whatever is there, also where somebody has changed the end. In
// place of an end beyond all a gap stays too.
AuditEnd end_to_go_on(AuditEnd kept, std::int64_t last_number);

// The entry that an event becomes behind that end, which has at most so many.
AuditEntry next_entry(const AuditEnd& end, AuditEvent event);

// Walks over an audit and finds the first entry that is missing, changed, added or in another's
// place.
//
// Who can write the whole store can also make a chain anew from any entry to its end, and the end
// that is kept beside it; nothing in the store shows that. The verdict's last hash does, to whoever
// has noted an earlier one elsewhere and looks for it among the entries.
class AuditCheck {
 public:
  // In the order of the numbers.
  void next(const AuditEntry& entry);

  AuditVerdict verdict(const AuditEnd& end) const;

 private:
  AuditEnd seen_;
  std::int64_t first_wrong_ = 0;
};

}  // namespace lineweir::platform

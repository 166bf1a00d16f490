#include "platform/audit/audit_check.h"

#include <algorithm>
#include <utility>

#include "platform/audit/audit_hash.h"

namespace lineweir::platform {

AuditEnd end_to_go_on(AuditEnd kept, std::int64_t last_number) {
  kept.entries =
      kept.entries > most_entries ? last_number + 1 : std::max(kept.entries, last_number);
  return kept;
}

AuditEntry next_entry(const AuditEnd& end, AuditEvent event) {
  const std::int64_t number = end.entries + 1;
  std::string hash = audit_hash(end.hash, number, event);
  return {.number = number, .event = std::move(event), .hash = std::move(hash)};
}

void AuditCheck::next(const AuditEntry& entry) {
  const std::int64_t expected = seen_.entries + 1;
  const bool right =
      entry.number == expected && entry.hash == audit_hash(seen_.hash, expected, entry.event);
  if (!right && first_wrong_ == 0) first_wrong_ = expected;
  seen_ = {.entries = expected, .hash = entry.hash};
}

AuditVerdict AuditCheck::verdict(const AuditEnd& end) const {
  AuditVerdict verdict{
      .entries = seen_.entries, .first_wrong = first_wrong_, .last_hash = seen_.hash};
  if (verdict.first_wrong != 0 || seen_ == end) return verdict;
  // Each entry fits the one before it, but they aren't those that were written. Where the number is
  // right the last one, or one before it, was changed with all behind it.
  verdict.first_wrong = seen_.entries == end.entries
                            ? std::max<std::int64_t>(seen_.entries, 1)
                            : std::max<std::int64_t>(std::min(seen_.entries, end.entries), 0) + 1;
  return verdict;
}

}  // namespace lineweir::platform

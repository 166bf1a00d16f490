#include "platform/transfer/store_transfer.h"

#include <functional>
#include <iterator>
#include <limits>
#include <string>

#include "base/failure.h"

namespace lineweir::platform {
namespace {

constexpr std::size_t piece = 500;
constexpr std::int64_t before_all = std::numeric_limits<std::int64_t>::min();

// Tells all that a store holds, always in the same pieces.
void each_portion(WholeStore& store, const std::function<void(const StorePortion&)>& take) {
  take({.accounts = store.accounts()});
  take({.groups = store.groups()});
  take({.flagged_callers = store.flagged_callers()});
  for (std::int64_t last = before_all;;) {
    const StorePortion portion{.calls = store.calls_behind(last, piece)};
    if (portion.calls.empty()) break;
    last = portion.calls.back().id;
    take(portion);
  }
  for (std::int64_t last = before_all;;) {
    const StorePortion portion{.entries = store.entries_behind(last, piece)};
    if (portion.entries.empty()) break;
    last = portion.entries.back().number;
    take(portion);
  }
}

// The first difference, as what a sentence says of it; empty where there is none.
std::string difference(const StorePortion& from, const StorePortion& to) {
  if (from.accounts != to.accounts) return "a user";
  if (from.groups != to.groups) return "what a studio remembers";
  if (from.flagged_callers != to.flagged_callers) return "what is noted of a caller";
  for (std::size_t i = 0; i < from.calls.size(); ++i) {
    if (i >= to.calls.size() || from.calls[i] != to.calls[i]) {
      return "the call " + std::to_string(from.calls[i].id);
    }
  }
  for (std::size_t i = 0; i < from.entries.size(); ++i) {
    if (i >= to.entries.size() || from.entries[i] != to.entries[i]) {
      return "the entry " + std::to_string(from.entries[i].number) + " of the audit";
    }
  }
  return from == to ? "" : "something that was not copied";
}

void require_same(const std::string& what) {
  if (what.empty()) return;
  throw Failure(failure_number::database_io,
                "What was copied is not the same as what was there: " + what + " differs.");
}

// Walks over the copy beside the original.
void compare(WholeStore& from, WholeStore& to) {
  std::int64_t call = before_all;
  std::int64_t entry = before_all;
  each_portion(from, [&](const StorePortion& portion) {
    StorePortion copied;
    if (!portion.accounts.empty()) copied.accounts = to.accounts();
    if (!portion.groups.empty()) copied.groups = to.groups();
    if (!portion.flagged_callers.empty()) copied.flagged_callers = to.flagged_callers();
    if (!portion.calls.empty()) copied.calls = to.calls_behind(call, portion.calls.size());
    if (!portion.entries.empty()) {
      copied.entries = to.entries_behind(entry, portion.entries.size());
    }
    require_same(difference(portion, copied));
    if (!portion.calls.empty()) call = portion.calls.back().id;
    if (!portion.entries.empty()) entry = portion.entries.back().number;
  });
  const bool has_more = to.accounts().size() != from.accounts().size() ||
                        to.groups().size() != from.groups().size() ||
                        to.flagged_callers().size() != from.flagged_callers().size() ||
                        !to.calls_behind(call, 1).empty() || !to.entries_behind(entry, 1).empty();
  require_same(has_more ? "something that was not copied" : "");
  require_same(from.audit_end() == to.audit_end() ? "" : "the end of the audit");
}

}  // namespace

TransferCounts transfer_store(WholeStore& from, StoreInTheMaking& to) {
  TransferCounts counts;
  AuditCheck check;
  each_portion(from, [&](const StorePortion& portion) {
    to.add(portion);
    counts.accounts += std::ssize(portion.accounts);
    counts.groups += std::ssize(portion.groups);
    counts.flagged_callers += std::ssize(portion.flagged_callers);
    counts.calls += std::ssize(portion.calls);
    for (const AuditEntry& entry : portion.entries) check.next(entry);
  });
  to.end_audit(from.audit_end());
  compare(from, to);
  // Entry by entry and at its end it is what was read here.
  counts.audit = check.verdict(to.audit_end());
  to.commit();
  return counts;
}

}  // namespace lineweir::platform

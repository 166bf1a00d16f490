#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "platform/call_journal.h"

namespace lineweir::platform {

// Tells a record from all others.
struct RecordName {
  // Names the run of the program that took the call, as no other run is named.
  std::string run;
  // Counts the run's records from 1.
  std::uint64_t sequence = 0;

  friend bool operator==(const RecordName&, const RecordName&) = default;
  friend auto operator<=>(const RecordName&, const RecordName&) = default;
};

// A record of the journal: a call as it was handed over.
struct JournalRecord {
  RecordName name;
  // An earlier record in whose place this one stands, since its call goes to another log; of an
  // empty name where there is none.
  RecordName instead_of;
  LoggedCall call;

  friend bool operator==(const JournalRecord&, const JournalRecord&) = default;
};

// The record's bytes, in which its end and any damage can be told.
std::string journal_bytes(const JournalRecord& record);

// The whole records in the bytes, in their order. What is damaged or cut off is passed over.
std::vector<JournalRecord> journal_records(std::string_view bytes);

}  // namespace lineweir::platform

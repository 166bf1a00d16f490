// The bytes of a journal of calls, damaged and cut off anyhow. The records that are found are
// found again in what is written of them, whatever stands between.

#include "platform/journal/journal_record.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace lineweir::platform;
  const std::string bytes(reinterpret_cast<const char*>(data), size);
  const auto records = journal_records(bytes);
  std::string written;
  for (const JournalRecord& record : records) written += journal_bytes(record);
  if (journal_records(written) != records) std::abort();
  JournalRecord own;
  own.name = {"run", 7};
  own.call = {bytes, "Table", {{"Name", bytes}}, {}};
  const auto found = journal_records(journal_bytes(own) + written);
  if (found.size() != records.size() + 1 || found.front() != own) std::abort();
  return 0;
}

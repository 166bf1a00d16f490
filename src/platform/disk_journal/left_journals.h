#pragma once

#include <filesystem>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "platform/disk_journal/handover_memory.h"
#include "platform/disk_journal/journal_file.h"
#include "platform/journal/journal_record.h"

namespace lineweir::platform {

// Where the files of a journal lie: those of the journal itself in the settings folder, and the
// handover memory in a folder that may serve the journals of several settings folders.
class JournalPlaces {
 public:
  // The settings folder must exist.
  JournalPlaces(std::filesystem::path folder, std::filesystem::path memory_folder);

  const std::filesystem::path& folder() const { return folder_; }
  std::filesystem::path journal(const std::string& run, int number) const;
  std::filesystem::path memory(const std::string& run) const;
  // Where the memory goes if its folder takes none.
  std::filesystem::path memory_beside_journal(const std::string& run) const;

  std::vector<std::filesystem::path> journals() const;
  std::vector<std::filesystem::path> memories() const;

 private:
  std::filesystem::path folder_;
  std::filesystem::path memory_folder_;
  // Tells the memories of one settings folder from those of others.
  std::string memory_prefix_;
};

// The files that a run of the program left which ended with calls waiting, or was killed.
struct LeftJournal {
  std::vector<JournalFile> files;
  std::vector<HandoverMemory> memories;
  // The records that aren't known to be in their logs.
  std::set<RecordName> waiting;
  // The runs that they are of.
  std::set<std::string> runs;

  // The files go.
  void remove();
};

struct LeftCalls {
  LeftJournal journal;
  // In the order in which they were handed over.
  std::vector<JournalRecord> records;
};

// Takes over what other processes have left, if there is anything: it belongs to this process from
// now on, and all of it is in the journal's files. Throws std::system_error where a file can't be
// read; it is left as it is then.
std::optional<LeftCalls> take_over(const JournalPlaces& places);

}  // namespace lineweir::platform

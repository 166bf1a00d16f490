#include "platform/disk_journal/left_journals.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <map>
#include <string_view>
#include <system_error>
#include <utility>

namespace lineweir::platform {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view journal_prefix = "calls-";
constexpr std::string_view journal_suffix = ".journal";
constexpr std::string_view memory_suffix = ".handover";

std::string memory_prefix_of(const fs::path& folder) {
  struct stat status {};
  if (::stat(folder.c_str(), &status) != 0) return "lineweir-calls-";
  return "lineweir-" + std::to_string(status.st_dev) + "-" + std::to_string(status.st_ino) + "-";
}

std::vector<fs::path> files_of(const fs::path& folder, std::string_view prefix,
                               std::string_view suffix) {
  std::vector<fs::path> found;
  std::error_code error;
  for (fs::directory_iterator entry(folder, error); !error && entry != fs::directory_iterator();
       entry.increment(error)) {
    const std::string name = entry->path().filename().string();
    if (name.starts_with(prefix) && name.ends_with(suffix)) found.push_back(entry->path());
  }
  std::ranges::sort(found);
  return found;
}

// The name of a run begins with its time.
std::vector<JournalRecord> in_order(std::map<RecordName, JournalRecord> records) {
  std::set<RecordName> replaced;
  for (const auto& [name, record] : records) replaced.insert(record.instead_of);
  std::vector<JournalRecord> ordered;
  for (auto& named : records) {
    if (!replaced.contains(named.first)) ordered.push_back(std::move(named.second));
  }
  return ordered;
}

}  // namespace

JournalPlaces::JournalPlaces(fs::path folder, fs::path memory_folder)
    : folder_(std::move(folder)),
      memory_folder_(std::move(memory_folder)),
      memory_prefix_(memory_prefix_of(folder_)) {}

fs::path JournalPlaces::journal(const std::string& run, int number) const {
  return folder_ / (std::string(journal_prefix) + run + "-" + std::to_string(number) +
                    std::string(journal_suffix));
}

fs::path JournalPlaces::memory(const std::string& run) const {
  return memory_folder_ / (memory_prefix_ + run + std::string(memory_suffix));
}

fs::path JournalPlaces::memory_beside_journal(const std::string& run) const {
  return folder_ / (std::string(journal_prefix) + run + std::string(memory_suffix));
}

std::vector<fs::path> JournalPlaces::journals() const {
  return files_of(folder_, journal_prefix, journal_suffix);
}

std::vector<fs::path> JournalPlaces::memories() const {
  auto found = files_of(memory_folder_, memory_prefix_, memory_suffix);
  std::ranges::move(files_of(folder_, journal_prefix, memory_suffix), std::back_inserter(found));
  return found;
}

void LeftJournal::remove() {
  for (HandoverMemory& memory : memories) {
    memory.release(memory.added());
    ::unlink(memory.file().c_str());
  }
  for (JournalFile& file : files) file.remove();
}

std::optional<LeftCalls> take_over(const JournalPlaces& places) {
  // One process at a time, so that what a run has left isn't shared out among several.
  const FileDescriptor folder(::open(places.folder().c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  if (folder.is_open() && ::flock(folder.get(), LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK) {
    return std::nullopt;
  }
  LeftCalls left;
  std::map<RecordName, JournalRecord> records;
  // The memories before the journals: a record goes from the first to the second.
  for (const fs::path& file : places.memories()) {
    if (auto memory = HandoverMemory::adopt(file))
      left.journal.memories.push_back(std::move(*memory));
  }
  for (const fs::path& path : places.journals()) {
    auto file = JournalFile::adopt(path);
    if (!file) continue;
    for (JournalRecord& record : journal_records(file->content())) {
      const RecordName name = record.name;
      records.emplace(name, std::move(record));
    }
    left.journal.files.push_back(std::move(*file));
  }
  std::string only_in_memory;
  std::string first_run;
  for (const HandoverMemory& memory : left.journal.memories) {
    for (JournalRecord& record : journal_records(memory.content())) {
      const RecordName name = record.name;
      if (records.contains(name)) continue;
      only_in_memory += journal_bytes(record);
      first_run = name.run;
      records.emplace(name, std::move(record));
    }
  }
  if (left.journal.files.empty() && left.journal.memories.empty()) return std::nullopt;
  if (!only_in_memory.empty()) {
    if (left.journal.files.empty()) {
      left.journal.files.push_back(JournalFile::make(places.journal(first_run, 0)));
    }
    left.journal.files.front().append(only_in_memory);
    left.journal.files.front().sync();
  }
  left.records = in_order(std::move(records));
  for (const JournalRecord& record : left.records) {
    left.journal.waiting.insert(record.name);
    left.journal.runs.insert(record.name.run);
  }
  return left;
}

}  // namespace lineweir::platform

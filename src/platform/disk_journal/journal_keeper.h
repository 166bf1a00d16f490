#pragma once

#include <deque>
#include <optional>

#include "platform/disk_journal/journal_exchange.h"
#include "platform/disk_journal/left_journals.h"

namespace lineweir::platform {

// The thread that alone owns the journal's files. What is handed over goes to the writer and into
// the file, and to the disk; the file is emptied when none of its calls waits.
//
// The files have a thread for themselves because bringing a call into its log may take long where
// that lies on another machine or a slow disk, and the calls behind it must be safe all the same.
class JournalKeeper {
 public:
  // The exchange must outlive this object.
  JournalKeeper(JournalExchange& exchange, JournalPlaces places)
      : exchange_(exchange), places_(std::move(places)) {}

  // Works until the journal is being left and everything has found its place.
  void run();

 private:
  // A record that is not known to be in its log.
  struct Kept {
    RecordName name;
    std::string bytes;
    std::uint64_t memory_end = 0;
    bool written = false;
  };

  struct News {
    std::deque<HandedOver> handed_over;
    std::vector<RecordName> stored;
    bool leaving = false;
    bool logs_done = false;
  };

  News await_news();
  void take_over_left();
  void take(std::deque<HandedOver> handed_over);
  void strike_out(const std::vector<RecordName>& stored);
  void use_files();
  void write();
  void release_memory();
  void tidy();
  void write_anew();
  void remove_left();
  void finish();
  bool all_written() const;
  void report(const std::string& trouble);

  JournalExchange& exchange_;
  JournalPlaces places_;
  std::optional<JournalFile> file_;
  int files_made_ = 0;
  std::size_t bytes_in_file_ = 0;
  bool synced_ = true;
  bool failed_ = false;
  // In the order in which they were handed over.
  std::deque<Kept> kept_;
  // Up to where no record of the handover memory is kept any more that isn't written.
  std::uint64_t memory_end_ = 0;
  std::optional<LeftJournal> left_;
};

}  // namespace lineweir::platform

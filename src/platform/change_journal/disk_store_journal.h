#pragma once

#include <condition_variable>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <mutex>
#include <thread>

#include "platform/disk/file_descriptor.h"
#include "platform/poster.h"
#include "platform/store_journal.h"

namespace lineweir::platform {

// A journal in a file, which a thread writes and brings to the disk behind whoever appends.
//
// The file holds pieces, each of four bytes of length and four of CRC-32 (both the least first) and
// so many bytes: the first piece is the epoch in decimal digits, each other one a change (see
// change_code.h). What lies behind a piece that isn't whole was being written when the machine
// stopped, and is passed over. A file without a byte holds nothing. What there was no room for is
// tried again once a second, and comes behind what was written before it.
class DiskStoreJournal final : public StoreJournal {
 public:
  // The poster outlives it; the file is made when something is appended.
  DiskStoreJournal(std::filesystem::path file, Poster& poster);
  // Writes what waits first.
  ~DiskStoreJournal() override;
  DiskStoreJournal(const DiskStoreJournal&) = delete;
  DiskStoreJournal& operator=(const DiskStoreJournal&) = delete;

  Left left() override;
  void append(Epoch epoch, std::vector<StoreChange> changes) override;
  void clear() override;
  bool has_kept_all() override;

 private:
  void work();
  // Empty, or what failed: then the file ends where it did before, and the bytes are to come again.
  std::string keep(const std::string& bytes, bool from_the_beginning);
  void tell(const std::string& trouble);

  const std::filesystem::path file_;
  Poster& poster_;
  bool has_epoch_ = false;

  // Of the thread alone: the file, and up to where it holds whole pieces.
  FileDescriptor open_{-1};
  std::size_t kept_ = 0;
  bool troubled_ = false;

  std::mutex guard_;
  std::condition_variable changed_;
  // What is to be written, from the file's beginning where it was cleared before.
  std::string waiting_;
  bool cleared_ = false;
  // What was written last has failed, or is being written.
  bool is_behind_ = false;
  // More has waited than is held, and was left out.
  bool has_gap_ = false;
  bool ends_ = false;
  std::shared_ptr<bool> alive_ = std::make_shared<bool>(true);
  std::thread thread_;
};

}  // namespace lineweir::platform

#include "platform/change_journal/disk_store_journal.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <charconv>
#include <chrono>
#include <fstream>
#include <iterator>
#include <system_error>
#include <utility>

#include "platform/change_journal/change_code.h"
#include "platform/change_journal/journal_pieces.h"
#include "platform/disk/replace_file.h"

namespace lineweir::platform {
namespace {

constexpr std::chrono::seconds tried_again_after{1};
// While there is no room; as much as a disk may lack, and no more than a machine has to spare.
constexpr std::size_t most_waiting = std::size_t{64} * 1024 * 1024;

std::optional<Epoch> epoch_of(std::string_view digits) {
  Epoch epoch = 0;
  const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), epoch);
  if (error != std::errc{} || end != digits.data() + digits.size()) return std::nullopt;
  return epoch;
}

std::string bytes_of(const std::filesystem::path& file) {
  std::ifstream stream(file, std::ios::binary);
  return {std::istreambuf_iterator<char>(stream), {}};
}

void check(bool done) {
  if (!done) throw std::system_error(errno, std::system_category());
}

}  // namespace

DiskStoreJournal::DiskStoreJournal(std::filesystem::path file, Poster& poster)
    : file_(std::move(file)), poster_(poster), thread_([this] { work(); }) {}

DiskStoreJournal::~DiskStoreJournal() {
  {
    const std::lock_guard lock(guard_);
    ends_ = true;
  }
  changed_.notify_one();
  thread_.join();
}

StoreJournal::Left DiskStoreJournal::left() {
  Left left;
  const std::string bytes = bytes_of(file_);
  const auto pieces = whole_pieces(bytes);
  if (pieces.empty()) return left;
  const auto epoch = epoch_of(pieces.front());
  if (!epoch) return left;
  left.epoch = *epoch;
  for (std::size_t i = 1; i < pieces.size(); ++i) {
    if (auto change = decoded(pieces[i])) left.changes.push_back(std::move(*change));
  }
  return left;
}

void DiskStoreJournal::append(Epoch epoch, std::vector<StoreChange> changes) {
  std::string bytes;
  if (!std::exchange(has_epoch_, true)) append_piece(bytes, std::to_string(epoch));
  for (const StoreChange& change : changes) append_piece(bytes, encoded(change));
  {
    const std::lock_guard lock(guard_);
    has_gap_ = has_gap_ || waiting_.size() + bytes.size() > most_waiting;
    if (!has_gap_) waiting_ += bytes;
  }
  changed_.notify_one();
}

void DiskStoreJournal::clear() {
  has_epoch_ = false;
  {
    const std::lock_guard lock(guard_);
    waiting_.clear();
    cleared_ = true;
    has_gap_ = false;
  }
  changed_.notify_one();
}

bool DiskStoreJournal::has_kept_all() {
  const std::lock_guard lock(guard_);
  return waiting_.empty() && !is_behind_ && !has_gap_;
}

void DiskStoreJournal::work() {
  std::unique_lock lock(guard_);
  for (bool is_last = false; !is_last;) {
    if (is_behind_) {
      changed_.wait_for(lock, tried_again_after, [this] { return ends_; });
    } else {
      changed_.wait(lock, [this] { return ends_ || cleared_ || !waiting_.empty(); });
    }
    is_last = ends_;
    const bool from_the_beginning = std::exchange(cleared_, false);
    const std::string bytes = std::exchange(waiting_, {});
    if (bytes.empty() && !from_the_beginning) continue;
    is_behind_ = true;
    lock.unlock();
    const std::string trouble = keep(bytes, from_the_beginning);
    tell(trouble);
    lock.lock();
    is_behind_ = !trouble.empty();
    if (!is_behind_ || cleared_) continue;
    waiting_.insert(0, bytes);
    cleared_ = from_the_beginning;
  }
}

std::string DiskStoreJournal::keep(const std::string& bytes, bool from_the_beginning) {
  try {
    // Most servers never have anything to keep.
    if (bytes.empty() && !open_.is_open() && !std::filesystem::exists(file_)) return {};
    if (!open_.is_open()) {
      constexpr int mode = S_IRUSR | S_IWUSR;
      open_ =
          FileDescriptor(::open(file_.c_str(), O_WRONLY | O_APPEND | O_CREAT | O_CLOEXEC, mode));
      check(open_.is_open());
      kept_ = whole_length(bytes_of(file_));
    }
    if (from_the_beginning) kept_ = 0;
    // Half a piece that was written when there was no more room would hide all that comes behind.
    check(::ftruncate(open_.get(), static_cast<off_t>(kept_)) == 0);
    write_whole(open_.get(), bytes);
    check(::fdatasync(open_.get()) == 0);
    kept_ += bytes.size();
    return {};
  } catch (const std::system_error& error) {
    return "what the store can't take now can't be kept in " + file_.string() +
           " either, and is lost if this server ends before the store is back: " +
           error.code().message();
  }
}

void DiskStoreJournal::tell(const std::string& trouble) {
  if (trouble.empty() == !troubled_) return;
  troubled_ = !trouble.empty();
  if (!troubled_) return;
  poster_.post([this, alive = std::weak_ptr(alive_), trouble] {
    if (alive.lock() && on_trouble) on_trouble(trouble);
  });
}

}  // namespace lineweir::platform

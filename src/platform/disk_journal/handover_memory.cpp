#include "platform/disk_journal/handover_memory.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <cstring>
#include <new>
#include <system_error>
#include <utility>

#include "platform/disk/owned_file.h"

namespace lineweir::platform {
namespace {

constexpr std::uint64_t head_mark = 0x31484C4C41435F57ULL;
constexpr std::size_t head_size = 4096;
constexpr std::size_t largest_size = std::size_t{64} << 20;

}  // namespace

// The count of bytes added is stored behind the bytes themselves, so that a process that ends in
// between has added nothing.
struct HandoverMemory::Head {
  std::uint64_t mark = head_mark;
  std::atomic<std::uint64_t> added = 0;
  std::atomic<std::uint64_t> released = 0;
};

std::optional<HandoverMemory> HandoverMemory::make(const std::filesystem::path& file,
                                                   std::size_t room) {
  const std::size_t size = head_size + room;
  std::optional<OwnedFile> owned;
  try {
    owned = make_owned_file(file);
  } catch (const std::system_error&) {
    return std::nullopt;
  }
  // All of it is there from the beginning: memory that could not be had later would end the process
  // that writes to it.
  if (::posix_fallocate(owned->descriptor.get(), 0, static_cast<off_t>(size)) != 0) {
    ::unlink(file.c_str());
    return std::nullopt;
  }
  auto made = map(file, std::move(owned->descriptor), size);
  if (made) {
    new (made->memory_) Head;
  } else {
    ::unlink(file.c_str());
  }
  return made;
}

std::optional<HandoverMemory> HandoverMemory::adopt(const std::filesystem::path& file) {
  auto left = adopt_file(file);
  if (!left) return std::nullopt;
  const std::size_t size = left->size;
  if (size <= head_size || size > largest_size) return std::nullopt;
  auto adopted = map(file, std::move(left->descriptor), size);
  if (!adopted || adopted->head().mark != head_mark) return std::nullopt;
  const std::uint64_t added = adopted->head().added;
  const std::uint64_t released = adopted->head().released;
  if (released > added || added - released > adopted->room()) return std::nullopt;
  return adopted;
}

std::optional<HandoverMemory> HandoverMemory::map(const std::filesystem::path& file,
                                                  FileDescriptor descriptor, std::size_t size) {
  void* memory =
      ::mmap(nullptr, size, PROT_READ | PROT_WRITE, MAP_SHARED | MAP_POPULATE, descriptor.get(), 0);
  if (memory == MAP_FAILED) return std::nullopt;
  return HandoverMemory(file, std::move(descriptor), memory, size);
}

HandoverMemory::HandoverMemory(std::filesystem::path file, FileDescriptor descriptor, void* memory,
                               std::size_t size)
    : file_(std::move(file)), descriptor_(std::move(descriptor)), memory_(memory), size_(size) {}

HandoverMemory::HandoverMemory(HandoverMemory&& other) noexcept
    : file_(std::move(other.file_)),
      descriptor_(std::move(other.descriptor_)),
      memory_(std::exchange(other.memory_, nullptr)),
      size_(other.size_) {}

HandoverMemory& HandoverMemory::operator=(HandoverMemory&& other) noexcept {
  std::swap(file_, other.file_);
  std::swap(descriptor_, other.descriptor_);
  std::swap(memory_, other.memory_);
  std::swap(size_, other.size_);
  return *this;
}

HandoverMemory::~HandoverMemory() {
  if (memory_ != nullptr) ::munmap(memory_, size_);
}

HandoverMemory::Head& HandoverMemory::head() const { return *static_cast<Head*>(memory_); }

char* HandoverMemory::bytes() const { return static_cast<char*>(memory_) + head_size; }

std::size_t HandoverMemory::room() const { return size_ - head_size; }

bool HandoverMemory::add(std::string_view added_bytes) {
  const std::uint64_t added = head().added.load(std::memory_order_relaxed);
  const std::uint64_t used = added - head().released.load(std::memory_order_acquire);
  if (added_bytes.size() > room() - used) return false;
  const std::size_t place = added % room();
  const std::size_t first = std::min(added_bytes.size(), room() - place);
  std::memcpy(bytes() + place, added_bytes.data(), first);
  std::memcpy(bytes(), added_bytes.data() + first, added_bytes.size() - first);
  head().added.store(added + added_bytes.size(), std::memory_order_release);
  return true;
}

std::uint64_t HandoverMemory::added() const { return head().added.load(std::memory_order_relaxed); }

void HandoverMemory::release(std::uint64_t count) {
  head().released.store(count, std::memory_order_release);
}

std::string HandoverMemory::content() const {
  const std::uint64_t added = head().added.load(std::memory_order_acquire);
  const std::uint64_t released = head().released.load(std::memory_order_acquire);
  std::string content;
  content.reserve(added - released);
  const std::size_t place = released % room();
  const std::size_t first = std::min<std::size_t>(added - released, room() - place);
  content.append(bytes() + place, first);
  content.append(bytes(), added - released - first);
  return content;
}

}  // namespace lineweir::platform

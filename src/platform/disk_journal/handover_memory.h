#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

#include "platform/disk/file_descriptor.h"

namespace lineweir::platform {

// Memory that outlives the process: what is copied into it is there for another process to read,
// whatever becomes of this one, and the copying never waits for a disk. It is a file that is
// mapped, in a file system without a disk where there is one, and holds as many bytes as haven't
// been released yet, oldest first.
//
// `add` is for one thread and `release` for one, which may be another.
class HandoverMemory {
 public:
  // A new file that belongs to this process until it ends, or nothing where none can be made.
  static std::optional<HandoverMemory> make(const std::filesystem::path& file, std::size_t room);

  // A file that a process left which has ended; nothing where there is none or its process lives.
  static std::optional<HandoverMemory> adopt(const std::filesystem::path& file);

  HandoverMemory(HandoverMemory&& other) noexcept;
  HandoverMemory& operator=(HandoverMemory&& other) noexcept;
  ~HandoverMemory();

  // Adds the bytes as a whole; false, and nothing is added, where there is no room for them.
  bool add(std::string_view bytes);

  // Counts all bytes ever added.
  std::uint64_t added() const;

  // The bytes up to this count are needed no more.
  void release(std::uint64_t count);

  // What has been added and not released.
  std::string content() const;

  const std::filesystem::path& file() const { return file_; }

 private:
  struct Head;

  HandoverMemory(std::filesystem::path file, FileDescriptor descriptor, void* memory,
                 std::size_t size);
  static std::optional<HandoverMemory> map(const std::filesystem::path& file,
                                           FileDescriptor descriptor, std::size_t size);
  Head& head() const;
  char* bytes() const;
  std::size_t room() const;

  std::filesystem::path file_;
  FileDescriptor descriptor_;
  void* memory_;
  std::size_t size_;
};

}  // namespace lineweir::platform

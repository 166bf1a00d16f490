#pragma once

#include <cstddef>
#include <functional>
#include <string>

namespace lineweir::platform {

// Hashes of passwords that take time and memory to guess. The work is done away from the loop; what
// is done is told from the loop, in the order of the calls, never from within the call.
class PasswordHash {
 public:
  virtual ~PasswordHash() = default;

  // A text of printable characters that holds all that `verify` needs, salted by chance; empty
  // where the machine had no memory for it.
  virtual void hash(std::string password, std::function<void(std::string hash)> done) = 0;

  // A hash that is none, such as an empty one, takes as long as any other and doesn't fit.
  virtual void verify(std::string hash, std::string password,
                      std::function<void(bool fits)> done) = 0;

  // Calls that wait or are being worked on.
  virtual std::size_t waiting() const = 0;
};

}  // namespace lineweir::platform

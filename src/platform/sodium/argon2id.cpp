#include "platform/sodium/argon2id.h"

#include <sodium/core.h>
#include <sodium/crypto_pwhash.h>
#include <sodium/utils.h>

#include <array>

#include "base/failure.h"

namespace lineweir::platform {
namespace {

constexpr unsigned long long passes = 2;
constexpr std::size_t memory = std::size_t{19} * 1024 * 1024;

bool is_hash(const std::string& text) {
  constexpr int no_hash = -1;
  return text.size() < crypto_pwhash_STRBYTES && text.find('\0') == std::string::npos &&
         crypto_pwhash_str_needs_rehash(text.c_str(), passes, memory) != no_hash;
}

}  // namespace

void begin_sodium() {
  if (sodium_init() < 0) {
    throw Failure(failure_number::device_unavailable, "The machine's random numbers can't be had.");
  }
}

std::string argon2id_hash(std::string& password) {
  std::array<char, crypto_pwhash_STRBYTES> hash{};
  const int result = crypto_pwhash_str_alg(hash.data(), password.data(), password.size(), passes,
                                           memory, crypto_pwhash_ALG_ARGON2ID13);
  sodium_memzero(password.data(), password.size());
  return result == 0 ? hash.data() : "";
}

bool argon2id_fits(const std::string& hash, std::string& password, const std::string& nobody) {
  const bool is_one = is_hash(hash);
  const bool fits = crypto_pwhash_str_verify((is_one ? hash : nobody).c_str(), password.data(),
                                             password.size()) == 0;
  sodium_memzero(password.data(), password.size());
  return fits && is_one;
}

}  // namespace lineweir::platform

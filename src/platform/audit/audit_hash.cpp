#include "platform/audit/audit_hash.h"

#include <sodium/crypto_hash_sha256.h>

#include <array>
#include <span>

namespace lineweir::platform {
namespace {

class EntryHash {
 public:
  EntryHash() { crypto_hash_sha256_init(&state_); }

  void add(std::int64_t number) {
    std::array<unsigned char, 8> bytes{};
    auto rest = static_cast<std::uint64_t>(number);
    for (auto byte = bytes.rbegin(); byte != bytes.rend(); ++byte, rest >>= 8) {
      *byte = static_cast<unsigned char>(rest & 0xFF);
    }
    crypto_hash_sha256_update(&state_, bytes.data(), bytes.size());
  }
  void add(std::string_view text) {
    add(static_cast<std::int64_t>(text.size()));
    crypto_hash_sha256_update(&state_, reinterpret_cast<const unsigned char*>(text.data()),
                              text.size());
  }

  std::string hexadecimal() {
    constexpr std::string_view digits = "0123456789abcdef";
    std::array<unsigned char, crypto_hash_sha256_BYTES> bytes{};
    crypto_hash_sha256_final(&state_, bytes.data());
    std::string text;
    for (const unsigned char byte : bytes) {
      text += digits[byte >> 4U];
      text += digits[byte & 0xFU];
    }
    return text;
  }

 private:
  crypto_hash_sha256_state state_{};
};

}  // namespace

std::string audit_hash(std::string_view previous_hash, std::int64_t number,
                       const AuditEvent& event) {
  EntryHash hash;
  hash.add("lineweir audit 1");
  hash.add(previous_hash);
  hash.add(number);
  hash.add(event.id);
  hash.add(static_cast<std::int64_t>(event.at.count()));
  hash.add(event.user);
  hash.add(event.action);
  hash.add(event.detail);
  return hash.hexadecimal();
}

}  // namespace lineweir::platform

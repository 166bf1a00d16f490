#pragma once

#include <string>

namespace lineweir::platform {

// Argon2id over 19 MiB, twice, as libsodium has it: some 20 ms each. Any thread may call them, once
// libsodium has begun.

// Makes libsodium ready; may be called again. A Failure where it can't be.
void begin_sodium();

// As PasswordHash has it. The password is wiped.
std::string argon2id_hash(std::string& password);
// `nobody` is a hash of argon2id_hash(), which is tried where the hash is none.
bool argon2id_fits(const std::string& hash, std::string& password, const std::string& nobody);

}  // namespace lineweir::platform

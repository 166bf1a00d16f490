#pragma once

#include <atomic>
#include <string>

#include "platform/postgres/postgres_address.h"

namespace lineweir::platform {

// Backups of a database's store, which are files as those of a store in a file are: each may be
// restored into either kind. Both wait, in sessions of their own, until the flag is set, and throw
// a Failure. See Store::backup and Store::restore.

void back_up_to_file(const PostgresAddress& address, const std::string& file,
                     const std::atomic<bool>& given_up);
void restore_from_file(const PostgresAddress& address, const std::string& file,
                       const std::atomic<bool>& given_up);

}  // namespace lineweir::platform

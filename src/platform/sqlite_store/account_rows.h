#pragma once

#include <sqlite3.h>

#include <vector>

#include "platform/store_records.h"

namespace lineweir::platform {

std::vector<Account> read_accounts(sqlite3* connection);
void write_account(sqlite3* connection, const Account& account);
void write_password(sqlite3* connection, const AccountPassword& password);
void write_lock(sqlite3* connection, const AccountLock& lock);
void write_rights(sqlite3* connection, const AccountRights& rights);
void write_seen(sqlite3* connection, const AccountSeen& seen);
void write_profile(sqlite3* connection, const AccountProfile& profile);
void remove_account(sqlite3* connection, const AccountRemoval& removal);

}  // namespace lineweir::platform

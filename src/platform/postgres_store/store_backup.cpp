#include "platform/postgres_store/store_backup.h"

#include "platform/postgres_store/whole_database.h"
#include "platform/sqlite_store/whole_store_file.h"
#include "platform/transfer/store_transfer.h"

namespace lineweir::platform {

void back_up_to_file(const PostgresAddress& address, const std::string& file,
                     const std::atomic<bool>& given_up) {
  NewStoreFile made(file);
  WholeDatabase database(address, given_up);
  transfer_store(database, made);
}

void restore_from_file(const PostgresAddress& address, const std::string& file,
                       const std::atomic<bool>& given_up) {
  WholeStoreFile backup(file);
  FilledDatabase database(address, FilledDatabase::Before::Fresh, given_up);
  transfer_store(backup, database);
}

}  // namespace lineweir::platform

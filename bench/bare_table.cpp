#include "bare_table.h"

#include <sqlite3.h>

#include <stdexcept>

namespace lineweir::bench {

BareTable::BareTable(const std::filesystem::path& file, int columns) {
  if (sqlite3_open(file.c_str(), &connection_) != SQLITE_OK) {
    throw std::runtime_error("the bare table can't be made");
  }
  execute("PRAGMA journal_mode = WAL");
  execute("PRAGMA synchronous = FULL");
  std::string names;
  std::string places;
  for (int column = 0; column < columns; ++column) {
    names += (column == 0 ? "c" : ", c") + std::to_string(column) + " TEXT";
    places += column == 0 ? "?" : ", ?";
  }
  execute("CREATE TABLE bare (" + names + ")");
  const std::string insertion = "INSERT INTO bare VALUES (" + places + ")";
  if (sqlite3_prepare_v2(connection_, insertion.c_str(), -1, &insertion_, nullptr) != SQLITE_OK) {
    throw std::runtime_error(sqlite3_errmsg(connection_));
  }
}

BareTable::~BareTable() {
  sqlite3_finalize(insertion_);
  sqlite3_close(connection_);
}

void BareTable::insert(const std::vector<std::string>& texts) {
  for (std::size_t i = 0; i < texts.size(); ++i) {
    sqlite3_bind_text(insertion_, static_cast<int>(i) + 1, texts[i].data(),
                      static_cast<int>(texts[i].size()), SQLITE_STATIC);
  }
  const bool inserted = sqlite3_step(insertion_) == SQLITE_DONE;
  sqlite3_reset(insertion_);
  if (!inserted) throw std::runtime_error(sqlite3_errmsg(connection_));
}

void BareTable::checkpoint() { execute("PRAGMA wal_checkpoint(TRUNCATE)"); }

void BareTable::execute(const std::string& statement) {
  if (sqlite3_exec(connection_, statement.c_str(), nullptr, nullptr, nullptr) != SQLITE_OK) {
    throw std::runtime_error(sqlite3_errmsg(connection_));
  }
}

}  // namespace lineweir::bench

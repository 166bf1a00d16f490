#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "platform/row_batch.h"

namespace lineweir::platform {

// All text of a database is UTF-8. Names of tables and columns are told apart without regard to the
// case of the letters A to Z. What fails is a Failure with one sentence for the user; its number is
// one of those of the database engine in base/failure.h.

// A column of a table: its name and the largest number of characters that it holds, 0 for any. A
// longer value is cut.
struct DatabaseColumn {
  std::string name;
  int size = 0;

  friend bool operator==(const DatabaseColumn&, const DatabaseColumn&) = default;
};

// Names a row of a table for as long as the row exists in its place. A row that is added has a
// higher one than all rows before it.
using RowId = std::int64_t;

// Which rows are visited: those behind a row in the direction of the scan, and at most `limit`.
struct RowScan {
  // From the newest row down, or from the oldest up.
  bool newest_first = false;
  // Nothing: from the first row on.
  std::optional<RowId> behind;
  int limit = 1000;
  // The positions of the columns whose values are wanted, in the order in which they are given.
  std::vector<int> columns;
};

// Told of a row and the values wanted of it, which last only as long as the call. It may not use
// the recordset.
using RowVisitor = std::function<void(RowId row, std::span<const std::string_view> values)>;

// The rows of one table. A row is begun with add_new or edit, filled field by field and stored with
// update; when update returns the row is safe on the disk.
class Recordset {
 public:
  virtual ~Recordset() = default;

  // The columns in their order.
  virtual const std::vector<DatabaseColumn>& fields() const = 0;

  // Reads the columns anew and forgets the row that was begun.
  virtual void refresh() = 0;

  // A new row of empty values; a present one with its own.
  virtual void add_new() = 0;
  virtual void edit(RowId row) = 0;

  // The value in the row that was begun. A name or position that the table doesn't have is a
  // Failure of number 3265, and so is using them while no row is begun, with 3020.
  virtual std::string field(int position) const = 0;
  virtual void set_field(std::string_view name, std::string_view value) = 0;
  virtual void set_field(int position, std::string_view value) = 0;

  // Stores the row that was begun and returns which one it is. After a failure it is still begun.
  virtual RowId update() = 0;

  virtual void remove(RowId row) = 0;

  // The rows exchange their places: the first of them takes the first place that any of them has,
  // and so on. Each has the RowId of its new place then. To be called in a transaction.
  virtual void take_places(const std::vector<RowId>& order) = 0;

  virtual std::int64_t count() = 0;

  // All values of a row; nothing where there is no such row.
  virtual std::optional<std::vector<std::string>> row(RowId row) = 0;

  // Visits rows in the order of storing and returns how many. Fewer than the limit were the last.
  virtual int scan(const RowScan& rows, const RowVisitor& visit) = 0;

  // Visits the rows, newest first and at most `limit`, whose value in the column is the number,
  // both taken by their digits alone. Without a number index of the column none is found.
  virtual int find_number(int column, std::string_view number, int limit,
                          const std::vector<int>& columns, const RowVisitor& visit) = 0;
};

// What stands under the name of a database's file now.
enum class FileStanding {
  Same,
  // The file that was opened, but it has changed other than through this database; where that was
  // not the engine's work, what is known of it may be wrong until it is opened anew.
  Written,
  // Another file.
  Replaced,
  Gone,
};

// Tells a file of the machine from all others that are there at the same time.
struct FileIdentity {
  std::uint64_t device = 0;
  std::uint64_t number = 0;

  friend bool operator==(const FileIdentity&, const FileIdentity&) = default;
};

class Database {
 public:
  virtual ~Database() = default;

  virtual void create_table(const std::string& name,
                            const std::vector<DatabaseColumn>& columns) = 0;
  virtual std::vector<DatabaseColumn> table_columns(const std::string& table) = 0;
  // A name that is empty or that another column has is a Failure of number 3191.
  virtual void rename_column(const std::string& table, int position, const std::string& name) = 0;
  // Makes the index by which find_number is quick, if the column has none yet.
  virtual void index_numbers(const std::string& table, int position) = 0;

  virtual std::unique_ptr<Recordset> open_recordset(const std::string& table) = 0;

  // Another value after each change of the file, by whatever program.
  virtual std::int64_t change_stamp() = 0;

  // Forgets what is known of the file if it was written over by other means than an engine's, such
  // as a copying program. False where another program prevents it for now.
  virtual bool follow_file() = 0;

  // What the body stores is stored as a whole when the body has ended, and nothing of it where it
  // fails. Other writers wait meanwhile.
  virtual void in_transaction(const std::function<void()>& body) = 0;

  // Rows for the table that are to be stored all together, however many they are. They must not
  // outlive the database.
  virtual std::unique_ptr<RowBatch> collect_rows(const std::string& table) = 0;

  // Brings what the engine keeps beside the file into it, so that a copy of the file holds
  // everything. False where others that use the file prevent it for now.
  virtual bool checkpoint() = 0;

  // Both without touching the file: which one was opened, and whether it is still there.
  virtual FileIdentity identity() const = 0;
  virtual FileStanding standing() = 0;
};

class DatabaseEngine {
 public:
  virtual ~DatabaseEngine() = default;

  // A database that can be written to. A file that doesn't exist is a Failure of number 3024; one
  // that can't be used fails with the reason, and nothing in it is changed.
  virtual std::unique_ptr<Database> open(const std::string& path) = 0;

  // A new file; one that exists is a Failure of number 3204, but for a database without a table,
  // which is what a program leaves that was killed while it made one. A new file in which no table
  // was made goes with its Database.
  virtual std::unique_ptr<Database> create(const std::string& path) = 0;

  // Whether the file is a database, whatever it holds and whether it can be used or not. An empty
  // file is none; one that the engine keeps beside an open database counts as one. It is looked at
  // by the engine alone, as all files must be that may be databases: reading one by another handle
  // would end the engine's locks on it.
  virtual bool is_database(const std::string& path) = 0;
};

}  // namespace lineweir::platform

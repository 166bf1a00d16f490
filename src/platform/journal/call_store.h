#pragma once

#include <map>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <utility>

#include "platform/database.h"
#include "platform/journal/journal_marks.h"
#include "platform/journal/journal_record.h"

namespace lineweir::platform {

// A table in which calls are logged, opened when it is first needed and anew whenever its file may
// hold something else than before.
class CallStore {
 public:
  // A row whose call was logged longer ago than this isn't found any more when it is replaced.
  static constexpr int rows_looked_through = 2000;

  // The engine must outlive this object.
  CallStore(DatabaseEngine& engine, std::string file, std::string table)
      : engine_(engine), file_(std::move(file)), table_(std::move(table)) {}

  // Stores all of the records' calls that the log doesn't hold yet, in their order, or none of
  // them. A run's records come in the order of their sequence. Those of a run without a name are
  // never there before. This and the next two fail as the database does; another try may succeed.
  void put(std::span<const JournalRecord> records);

  // Makes numbers in the column quick to find.
  void index_numbers(int column);

  // No record of the run will come any more, neither now nor after another start.
  void forget(const std::string& run);

  // A copy of the file alone holds all calls; false where it doesn't yet.
  bool checkpoint();

  // Whether since the last question another file was found in the place of the log, or the same one
  // without calls that it had held.
  bool take_replaced() { return std::exchange(replaced_, false); }

 private:
  // The name of a run's mark in the log. A file that is reached by two names has two, since the
  // order of the records holds for each name by itself.
  std::string mark_name(const std::string& run) const { return run + ' ' + file_; }

  template <class Step>
  void work(Step&& step);
  void open();
  void open_marks();
  void look_for_other_file();
  void close();
  void put_row(const LoggedCall& call, const std::vector<DatabaseColumn>& present);
  std::optional<RowId> find(const std::vector<LoggedColumn>& columns,
                            const std::vector<DatabaseColumn>& present);

  DatabaseEngine& engine_;
  std::string file_;
  std::string table_;
  std::unique_ptr<Database> database_;
  std::unique_ptr<Recordset> rows_;
  std::optional<JournalMarks> marks_;
  std::optional<FileIdentity> last_identity_;
  // What the marks must at least be in the file that was written to last.
  std::map<std::string, std::uint64_t> last_marks_;
  bool replaced_ = false;
};

}  // namespace lineweir::platform

#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <string>

#include "platform/database.h"

namespace lineweir::platform {

// How far the journals have come that write to a log, in a small table of the log's own file. A
// mark is stored in the same step as the calls that it stands for, so that a journal which is read
// again after its program was killed between storing a call and striking it out adds nothing twice.
// A row names a journal and the last of its records that is in the log.
class JournalMarks {
 public:
  // The table is made if there is none.
  explicit JournalMarks(Database& database);

  // Reads the marks that stand in the file now.
  void refresh();

  // The last record of the journal that is in the log; 0 for none.
  std::uint64_t stored(const std::string& journal) const;

  // To be called in the step that stores the records.
  void store(const std::string& journal, std::uint64_t last);

  // The journal is no more.
  void forget(const std::string& journal);

 private:
  struct Mark {
    RowId row = 0;
    std::uint64_t last = 0;
  };

  std::unique_ptr<Recordset> rows_;
  std::map<std::string, Mark> marks_;
};

}  // namespace lineweir::platform

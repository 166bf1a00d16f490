#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "base/failure.h"

namespace lineweir::platform {

// Rows that are to be added to a table all together or not at all, however many they are. They are
// collected beside the table, so that other writers wait for the last step only. Nothing here waits
// for the file: what is asked for is under way when a call returns. Destroyed before they are
// stored, the rows are forgotten.
class RowBatch {
 public:
  virtual ~RowBatch() = default;

  // One text a column. Rows that are told apart may be left out in the end.
  virtual void add(std::vector<std::string> values, bool apart) = 0;

  // How many rows were added and are still in memory.
  virtual std::size_t waiting() const = 0;

  // Adds the rows to the table, in the order in which they were added here; those that were told
  // apart only if they are wanted.
  virtual void store(bool apart_too) = 0;

  // Gives up. Where all rows are in the table already they stay.
  virtual void cancel() = 0;

  enum class Stage {
    Collecting,
    // Another program is writing to the file.
    Waiting,
    Storing,
    // The last three are ends.
    Stored,
    Cancelled,
    // The table is as it was.
    Failed
  };

  struct Progress {
    Stage stage = Stage::Collecting;
    // Rows that have been looked at in storing.
    std::int64_t done = 0;
    std::optional<Failure> failure;
  };
  virtual Progress progress() const = 0;
};

}  // namespace lineweir::platform

#pragma once

#include <optional>
#include <utility>
#include <vector>

#include "lines/caller_fields.h"
#include "platform/database.h"

namespace lineweir {

// Where the table of a log's file has the log's columns. A file that a newer release has made may
// have others among them.
class LogPlaces {
 public:
  // Nothing where these aren't the columns of a call log.
  static std::optional<LogPlaces> in(const std::vector<platform::DatabaseColumn>& columns);

  int of(CallerField field) const;

  // What is known of the column at a place; of one that isn't the log's, how it is to be shown.
  const CallerLogColumn& column_at(int place) const;

 private:
  explicit LogPlaces(std::vector<int> places) : places_(std::move(places)) {}

  // By the column of the log.
  std::vector<int> places_;
};

// A Failure of number 3265 unless these are the columns of a call log.
LogPlaces require_log_columns(const std::vector<platform::DatabaseColumn>& columns);

// The widths of such columns in a grid, in twips.
std::vector<int> log_grid_widths(const std::vector<platform::DatabaseColumn>& columns);

}  // namespace lineweir

#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

struct pg_result;

namespace lineweir::platform {

// The rows that a statement gave. Columns count from 0; each is asked for as what its type is:
// bigint, boolean, text or bytea. NULL is 0, false or empty.
class PostgresRows {
 public:
  // Takes the result.
  explicit PostgresRows(pg_result* result) : result_(result) {}

  int count() const;
  std::int64_t number(int row, int column) const;
  bool truth(int row, int column) const;
  std::string text(int row, int column) const;
  std::string bytes(int row, int column) const;
  // "INSERT 0 1", "COMMIT"
  std::string done() const;

 private:
  struct Clear {
    void operator()(pg_result* result) const;
  };

  std::unique_ptr<pg_result, Clear> result_;
};

struct PostgresFailure {
  // Five letters of the SQL standard; empty where the connection was lost.
  std::string code;
  // For the log: what failed, on what.
  std::string sentence;
};

// What came of statements that were sent together.
struct PostgresAnswer {
  // Of each statement, where nothing failed.
  std::vector<PostgresRows> rows = {};
  std::optional<PostgresFailure> failure = {};
};

}  // namespace lineweir::platform

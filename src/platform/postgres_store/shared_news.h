#pragma once

#include <set>
#include <string>
#include <string_view>

#include "platform/postgres_store/record_statements.h"

// How servers of one store hear what others write. A transaction that changes an account, what is
// noted of a caller, or where a studio is, notifies "lineweir_news" with one text for each:
//   account NAME, caller KEY, studio NUMBER, all
// Each session listens, and reads anew what is named.
namespace lineweir::platform {

PostgresStatement listen_to_news();

PostgresStatement all_is_news();

// Nothing is appended for what no other server needs.
void append_news(PostgresStatements& statements, const StoreChange& change);

// What is to be read.
class SharedNews {
 public:
  void add_all() { all_ = true; }
  // A text of a notification; one that nobody here would write is passed over.
  void add(std::string_view text);
  bool empty() const { return !all_ && accounts_.empty() && callers_.empty() && studios_.empty(); }
  void clear() { *this = {}; }

  void append_read(PostgresStatements& statements) const;
  // Of the rows of these statements, behind the first `skipped` ones.
  StoreNews read(const std::vector<PostgresRows>& rows, std::size_t skipped) const;

 private:
  bool all_ = false;
  std::set<std::string, std::less<>> accounts_;
  std::set<std::string, std::less<>> callers_;
  std::set<int> studios_;
};

}  // namespace lineweir::platform

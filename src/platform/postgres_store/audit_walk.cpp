#include "platform/postgres_store/audit_walk.h"

#include <limits>
#include <memory>
#include <utility>

namespace lineweir::platform {
namespace {

// So few that their hashes don't hold up the loop.
constexpr std::size_t piece = 500;

class Walk : public std::enable_shared_from_this<Walk> {
 public:
  using Done = std::function<void(const std::optional<PostgresFailure>& failure,
                                  const AuditVerdict& verdict)>;

  Walk(PostgresConnection& connection, Done done)
      : connection_(connection), done_(std::move(done)) {}

  void begin() {
    connection_.ask({{"BEGIN ISOLATION LEVEL REPEATABLE READ READ ONLY"}, audit_end_read()},
                    [self = shared_from_this()](const PostgresAnswer& answer) {
                      if (answer.failure) return self->done_(answer.failure, {});
                      self->end_ = audit_end_of(answer.rows[1]);
                      self->read_piece();
                    });
  }

 private:
  void read_piece() {
    connection_.ask({audit_read({.after = last_, .limit = piece})},
                    [self = shared_from_this()](const PostgresAnswer& answer) {
                      if (answer.failure) return self->done_(answer.failure, {});
                      self->take(entries_of(answer.rows[0]));
                    });
  }

  void take(const std::vector<AuditEntry>& entries) {
    for (const AuditEntry& entry : entries) check_.next(entry);
    if (entries.size() == piece) {
      last_ = entries.back().number;
      return read_piece();
    }
    connection_.ask({{"COMMIT"}}, [self = shared_from_this()](const PostgresAnswer& answer) {
      self->done_(answer.failure, self->check_.verdict(self->end_));
    });
  }

  PostgresConnection& connection_;
  Done done_;
  AuditCheck check_;
  AuditEnd end_;
  std::int64_t last_ = std::numeric_limits<std::int64_t>::min();
};

}  // namespace

void walk_over_audit(
    PostgresConnection& connection,
    std::function<void(const std::optional<PostgresFailure>& failure, const AuditVerdict& verdict)>
        done) {
  std::make_shared<Walk>(connection, std::move(done))->begin();
}

}  // namespace lineweir::platform

#include "platform/postgres_store/database_lease.h"

#include <algorithm>
#include <utility>

#include "platform/postgres_store/database_lock.h"
#include "platform/postgres_store/postgres_schema.h"

namespace lineweir::platform {
namespace {

// Longer than these nobody is waited for: the next try may find another database process well.
constexpr PostgresConnection::Patience lease_patience{.welcome = Milliseconds{1'000},
                                                      .answer = Milliseconds{700}};

// A proof needn't be on the disk: a database that has just begun takes its own beginning for one.
const std::vector<PostgresStatement> lease_settings = {
    {"SET search_path TO lineweir"},
    {"SET idle_session_timeout TO '2s'"},
    {"SET idle_in_transaction_session_timeout TO '2s'"},
    {"SET synchronous_commit TO off"},
};

// Milliseconds for which the last holder may rely on its last proof, on a clock that may run a
// fiftieth slower.
constexpr const char* remaining =
    "SELECT ceil(extract(epoch FROM "
    "greatest(proven, pg_postmaster_start_time()) - clock_timestamp()) * 1000)::bigint + 1020 "
    "FROM leader_proofs WHERE group_number = $1";

}  // namespace

DatabaseLease::DatabaseLease(PostgresAddress address, const PostgresConnection::Services& services,
                             std::vector<int> groups)
    : connection_(std::move(address), services, lease_patience), groups_(std::move(groups)) {
  connection_.on_lost = [this](const std::string& why) { set_trouble(why); };
}

void DatabaseLease::take(Taken done) {
  connection_.close();
  connection_.open([this, done = std::move(done)](const std::string& failure) {
    if (!failure.empty()) return end_try(done, failure);
    look_at_version(connection_, postgres_schema_steps(), [this, done](const std::string& trouble) {
      if (!trouble.empty()) return end_try(done, trouble);
      lock(done);
    });
  });
}

// The tables stay as the present leader knows them until it leads no more: it may be of an earlier
// version.
void DatabaseLease::lock(const Taken& done) {
  std::vector<PostgresStatement> statements = lease_settings;
  // A tool that works on the whole store alone keeps servers off, and they it.
  statements.push_back(DatabaseLock::shared_attempt());
  for (const int group : groups_) {
    statements.push_back(DatabaseLock::group_attempt(group));
  }
  connection_.ask(statements, [this, done](const PostgresAnswer& answer) {
    if (answer.failure) return end_try(done, answer.failure->sentence);
    const bool all =
        std::all_of(answer.rows.begin() + static_cast<std::ptrdiff_t>(lease_settings.size()),
                    answer.rows.end(), [](const PostgresRows& rows) { return rows.truth(0, 0); });
    if (!all) return end_try(done, {});
    bring_up_to_date(connection_, postgres_schema_steps(), MissingStore::Make,
                     [this, done](const std::string& trouble) {
                       if (!trouble.empty()) return end_try(done, trouble);
                       begin_epoch(done);
                     });
  });
}

void DatabaseLease::begin_epoch(const Taken& done) {
  // Not before: tables of an earlier version may take longer to be brought up to date, which the
  // database does to the end behind a try that is given up.
  std::vector<PostgresStatement> statements = {
      {"SET statement_timeout TO '600ms'"}, {"BEGIN"}, {"SET LOCAL synchronous_commit TO on"}};
  const std::size_t first_wait = statements.size();
  for (const int group : groups_) {
    statements.push_back({remaining, {PostgresValue::number(group)}});
  }
  const std::size_t epoch_row = statements.size();
  statements.push_back({"SELECT nextval('leader_epochs')"});
  for (const int group : groups_) {
    statements.push_back(
        {"INSERT INTO leaders VALUES ($1, currval('leader_epochs')) "
         "ON CONFLICT (group_number) DO UPDATE SET epoch = excluded.epoch",
         {PostgresValue::number(group)}});
    statements.push_back(
        {"INSERT INTO leader_proofs VALUES ($1, currval('leader_epochs'), clock_timestamp()) "
         "ON CONFLICT (group_number) DO UPDATE SET epoch = excluded.epoch, proven = "
         "excluded.proven",
         {PostgresValue::number(group)}});
  }
  statements.push_back({"COMMIT"});
  connection_.ask(statements, [this, done, first_wait, epoch_row](const PostgresAnswer& answer) {
    if (answer.failure) return end_try(done, answer.failure->sentence);
    std::int64_t wait = 0;
    for (std::size_t row = first_wait; row < epoch_row; ++row) {
      if (answer.rows[row].count() > 0) wait = std::max(wait, answer.rows[row].number(0, 0));
    }
    epoch_ = answer.rows[epoch_row].number(0, 0);
    set_trouble({});
    done(Grant{epoch_, Milliseconds(wait)});
  });
}

void DatabaseLease::prove(std::function<void(bool held)> done) {
  if (!connection_.is_open()) return done(false);
  connection_.ask({{"UPDATE leader_proofs SET proven = clock_timestamp() WHERE epoch = $1",
                    {PostgresValue::number(epoch_)}}},
                  [this, done = std::move(done)](const PostgresAnswer& answer) {
                    const std::string all = "UPDATE " + std::to_string(groups_.size());
                    if (answer.failure) set_trouble(answer.failure->sentence);
                    done(!answer.failure && answer.rows[0].done() == all);
                  });
}

// The locks end with the session.
void DatabaseLease::give_back() { connection_.close(); }

void DatabaseLease::end_try(const Taken& done, const std::string& trouble) {
  connection_.close();
  set_trouble(trouble);
  done(std::nullopt);
}

void DatabaseLease::set_trouble(const std::string& trouble) {
  if (std::exchange(trouble_, trouble) != trouble && on_trouble) on_trouble(trouble);
}

}  // namespace lineweir::platform

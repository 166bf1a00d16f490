#include "platform/postgres_store/database_lock.h"

#include <algorithm>
#include <utility>

namespace lineweir::platform {
namespace {

constexpr Milliseconds tried_again_after{1'000};
constexpr Milliseconds refused_tried_again_after{200};
constexpr Milliseconds beats_every{1'000};

// "line", beside numbers that others lock in the same database by two.
constexpr std::int64_t group_class = 0x6C696E65;

// "linewei2": beside the number that is locked while the tables are made.
constexpr std::int64_t lock_number = 0x6C696E6577656932;

// The database frees a session that has said nothing for so long: its server stands still, or the
// network is cut. Databases before version 14 can't.
const PostgresStatement free_when_silent = {
    "SELECT set_config(name, '5s', false) FROM pg_settings WHERE name = 'idle_session_timeout'"};

}  // namespace

DatabaseLock::DatabaseLock(PostgresAddress address, const PostgresConnection::Services& services,
                           std::vector<int> groups, PostgresConnection::Patience patience)
    : loop_(services.loop),
      connection_(std::move(address), services, patience),
      groups_(std::move(groups)) {
  connection_.on_lost = [this](const std::string& why) { again(why); };
}

DatabaseLock::~DatabaseLock() { loop_.cancel(next_); }

PostgresStatement DatabaseLock::attempt() {
  return {"SELECT pg_try_advisory_lock($1)", {PostgresValue::number(lock_number)}};
}

PostgresStatement DatabaseLock::shared_attempt() {
  return {"SELECT pg_try_advisory_lock_shared($1)", {PostgresValue::number(lock_number)}};
}

PostgresStatement DatabaseLock::group_attempt(int group) {
  return {"SELECT pg_try_advisory_lock($1::int, $2::int)",
          {PostgresValue::number(group_class), PostgresValue::number(group)}};
}

std::string DatabaseLock::refusal(const PostgresAddress& address) {
  return "another server works on the store in " + address.shown() +
         "; end it, or give this one a database of its own";
}

void DatabaseLock::take() {
  loop_.cancel(next_);
  connection_.open([this](const std::string& failure) {
    if (!failure.empty()) return again(failure);
    connection_.ask({free_when_silent}, [this](const PostgresAnswer& answer) {
      if (answer.failure) return again(answer.failure->sentence);
      try_it();
    });
  });
}

void DatabaseLock::try_it() {
  std::vector<PostgresStatement> attempts = {shared_attempt()};
  for (const int group : groups_) attempts.push_back(group_attempt(group));
  connection_.ask(attempts, [this](const PostgresAnswer& answer) {
    if (answer.failure) return again(answer.failure->sentence);
    attempted(answer);
  });
}

void DatabaseLock::attempted(const PostgresAnswer& answer) {
  const std::string place = connection_.address().shown();
  const auto is_had = [](const PostgresRows& row) { return row.truth(0, 0); };
  const auto lacking = std::find_if_not(answer.rows.begin(), answer.rows.end(), is_had);
  if (lacking == answer.rows.begin()) return refused(refusal(connection_.address()));
  if (lacking != answer.rows.end()) {
    const int group = groups_[static_cast<std::size_t>(lacking - answer.rows.begin() - 1)];
    return refused("another server has group " + std::to_string(group) + " of the store in " +
                   place + "; end it, or take the group out of one of the configurations");
  }
  refused_ = false;
  next(beats_every, &DatabaseLock::beat);
  if (on_held) on_held();
}

void DatabaseLock::refused(const std::string& why) {
  if (!std::exchange(refused_, true)) refused_since_ = loop_.now();
  // Those that were had are another's meanwhile.
  connection_.ask({{"SELECT pg_advisory_unlock_all()"}}, [this](const PostgresAnswer& answer) {
    if (answer.failure) return again(answer.failure->sentence);
    next(refused_tried_again_after, &DatabaseLock::try_it);
  });
  if (loop_.now() - refused_since_ < waited_for) return;
  refused_since_ = loop_.now();
  if (on_refused) on_refused(why);
}

// A lock that nobody can be told of is soon another's.
void DatabaseLock::beat() {
  connection_.ask({{"SELECT"}}, [this](const PostgresAnswer& answer) {
    if (answer.failure) return again(answer.failure->sentence);
    next(beats_every, &DatabaseLock::beat);
  });
}

void DatabaseLock::again(const std::string& trouble) {
  connection_.close();
  next(tried_again_after, &DatabaseLock::take);
  if (on_trouble) on_trouble(trouble);
}

void DatabaseLock::next(Milliseconds delay, void (DatabaseLock::*step)()) {
  loop_.cancel(next_);
  next_ = loop_.schedule(delay, [this, step] { (this->*step)(); });
}

}  // namespace lineweir::platform

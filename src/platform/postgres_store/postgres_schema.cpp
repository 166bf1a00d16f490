#include "platform/postgres_store/postgres_schema.h"

#include <array>
#include <utility>
#include <vector>

namespace lineweir::platform {
namespace {

// As SQLite's tables are, see sqlite_store/store_schema.cpp. What is compared or sorted is compared
// by its bytes, whatever the database's language.
constexpr auto first_step = std::to_array<const char*>({
    R"sql(
CREATE TABLE accounts (
  name text COLLATE "C" NOT NULL PRIMARY KEY,
  password_hash text NOT NULL,
  profile bytea NOT NULL,
  locked boolean NOT NULL,
  last_seen bigint
))sql",
    R"sql(
CREATE TABLE rights (
  account text COLLATE "C" NOT NULL REFERENCES accounts (name) ON DELETE CASCADE,
  group_number bigint NOT NULL,
  rights bytea NOT NULL,
  PRIMARY KEY (account, group_number)
))sql",
    R"sql(
CREATE TABLE calls (
  id bigint NOT NULL PRIMARY KEY,
  group_number bigint NOT NULL,
  line bigint NOT NULL,
  number text NOT NULL,
  began bigint,
  answered bigint,
  aired bigint,
  ended bigint,
  told_by text NOT NULL,
  caller_name text NOT NULL,
  street_address text NOT NULL,
  city text NOT NULL,
  state text NOT NULL,
  zip_code text NOT NULL,
  phone_number text NOT NULL,
  station text NOT NULL,
  gender text NOT NULL,
  comments text NOT NULL,
  user_field text NOT NULL
))sql",
    "CREATE INDEX calls_by_end ON calls (ended, id)",
    R"sql(
CREATE TABLE call_steps (
  call bigint NOT NULL REFERENCES calls (id) ON DELETE CASCADE,
  place bigint NOT NULL,
  at bigint,
  who text NOT NULL,
  action text NOT NULL,
  PRIMARY KEY (call, place)
))sql",
    R"sql(
CREATE VIEW call_list AS
  SELECT id, group_number, line, number,
    to_timestamp(began / 1000.0) AS began,
    to_timestamp(answered / 1000.0) AS answered,
    to_timestamp(aired / 1000.0) AS aired,
    to_timestamp(ended / 1000.0) AS ended,
    told_by, caller_name, city, comments
  FROM calls ORDER BY calls.began, id)sql",
    R"sql(
CREATE TABLE group_memory (
  group_number bigint NOT NULL PRIMARY KEY,
  next_call bigint,
  message bytea NOT NULL,
  show_last text NOT NULL,
  show_next text NOT NULL,
  show_text text NOT NULL
))sql",
    R"sql(
CREATE TABLE audit (
  number bigint NOT NULL PRIMARY KEY,
  id text COLLATE "C" NOT NULL UNIQUE,
  at bigint NOT NULL,
  who text NOT NULL,
  action text NOT NULL,
  detail text NOT NULL,
  hash text NOT NULL
))sql",
    R"sql(
CREATE TABLE audit_end (
  one bigint NOT NULL PRIMARY KEY CHECK (one = 1),
  entries bigint NOT NULL,
  hash text NOT NULL
))sql",
    "INSERT INTO audit_end VALUES (1, 0, '')",
    R"sql(
CREATE TABLE writers (
  id text COLLATE "C" DEFAULT gen_random_uuid()::text PRIMARY KEY,
  session bigint NOT NULL,
  since timestamptz NOT NULL DEFAULT now()
))sql",
    "COMMENT ON TABLE rights IS 'group 0: every group that is not named'",
    "COMMENT ON TABLE calls IS 'moments in milliseconds since 1970, UTC; NULL: has not come'",
    "COMMENT ON COLUMN calls.line IS 'from 1'",
    "COMMENT ON TABLE group_memory IS 'next_call: a line, from 1; NULL: none'",
    "COMMENT ON TABLE audit IS 'hash: SHA-256 over the hash of the entry before and this entry'",
    "COMMENT ON TABLE writers IS 'the present session of each server that writes'",
});

// Which of several servers leads which group, see database_lease.h.
constexpr auto second_step = std::to_array<const char*>({
    "CREATE SEQUENCE leader_epochs",
    R"sql(
CREATE TABLE leaders (
  group_number bigint NOT NULL PRIMARY KEY,
  epoch bigint NOT NULL
))sql",
    R"sql(
CREATE TABLE leader_proofs (
  group_number bigint NOT NULL PRIMARY KEY,
  epoch bigint NOT NULL,
  proven timestamptz NOT NULL
) WITH (fillfactor = 50))sql",
    "COMMENT ON TABLE leader_proofs IS 'when the present server of each group last proved itself'",
});

// What is known of callers, and where the groups of other servers are.
constexpr auto third_step = std::to_array<const char*>({
    "ALTER TABLE calls ADD COLUMN caller text COLLATE \"C\" NOT NULL DEFAULT ''",
    R"sql(
UPDATE calls SET caller = regexp_replace(
  regexp_replace(CASE WHEN phone_number ~ '([0-9].*){4}' THEN phone_number ELSE number END,
                 '[^0-9]', '', 'g'),
  '^1([0-9]{10})$', '\1'))sql",
    "CREATE INDEX calls_by_caller ON calls (caller, id) WHERE caller <> ''",
    R"sql(
CREATE TABLE flagged_callers (
  caller text COLLATE "C" NOT NULL PRIMARY KEY,
  number text NOT NULL,
  flag bigint NOT NULL,
  reason text NOT NULL,
  until text COLLATE "C" NOT NULL,
  flagged_by text NOT NULL,
  at bigint
))sql",
    R"sql(
CREATE TABLE studio_places (
  group_number bigint NOT NULL PRIMARY KEY,
  name text NOT NULL,
  address text NOT NULL
))sql",
    "COMMENT ON COLUMN calls.caller IS 'the digits of the caller''s number, without the country "
    "code 1 in front of ten; empty: not known'",
    "COMMENT ON COLUMN flagged_callers.flag IS '1: regular, 2: careful, 3: barred'",
    "COMMENT ON COLUMN flagged_callers.until IS 'the last day, 2026-12-31; empty: no end'",
    "COMMENT ON TABLE studio_places IS 'where the seats of each group find its server'",
});

constexpr std::array<PostgresStep, 3> schema_steps = {
    PostgresStep(first_step), PostgresStep(second_step), PostgresStep(third_step)};

// "lineweir" as a number, for nobody else who locks by numbers in the same database.
constexpr std::int64_t migration_lock = 0x6C696E6577656972;

const std::string version_query =
    "SELECT to_regclass('lineweir.store_version') IS NOT NULL, "
    "to_regnamespace('lineweir') IS NOT NULL, "
    "(SELECT count(*) FROM pg_class WHERE relnamespace = to_regnamespace('lineweir')::oid)";

class Upgrade : public std::enable_shared_from_this<Upgrade> {
 public:
  Upgrade(PostgresConnection& connection, std::span<const PostgresStep> steps, MissingStore missing,
          std::function<void(std::string failure)> done)
      : connection_(connection), steps_(steps), missing_(missing), done_(std::move(done)) {}

  void begin() {
    look_at_version([self = shared_from_this()](std::int64_t version) {
      if (self->is_newest(version)) return self->done_({});
      self->migrate();
    });
  }

  void look() {
    look_at_version([self = shared_from_this()](std::int64_t) { self->done_({}); });
  }

 private:
  using Version = std::function<void(std::int64_t version)>;

  void ask(const std::vector<PostgresStatement>& statements,
           std::function<void(const std::vector<PostgresRows>& rows)> then) {
    connection_.ask(statements, [self = shared_from_this(),
                                 then = std::move(then)](const PostgresAnswer& answer) {
      if (answer.failure) return self->done_(answer.failure->sentence);
      then(answer.rows);
    });
  }

  void look_at_version(Version then) {
    ask({{version_query}}, [self = shared_from_this(), then = std::move(then)](const auto& rows) {
      constexpr int tables = 2;
      if (rows[0].truth(0, 0)) return self->read_version(then);
      if (rows[0].number(0, tables) != 0) {
        return self->refuse("has a schema \"lineweir\" of another program");
      }
      if (self->missing_ == MissingStore::Refuse) {
        return self->refuse("has no store in it");
      }
      self->has_schema_ = rows[0].truth(0, 1);
      then(0);
    });
  }

  void read_version(const Version& then) {
    ask({{"SELECT version FROM lineweir.store_version"}},
        [self = shared_from_this(), then](const auto& rows) {
          const std::int64_t version = rows[0].count() == 1 ? rows[0].number(0, 0) : -1;
          const auto newest = static_cast<std::int64_t>(self->steps_.size());
          if (version >= 1 && version <= newest) return then(version);
          self->refuse("was written by a newer version of this program (its version is " +
                       std::to_string(version) + ", " + std::to_string(newest) +
                       " is the newest known)");
        });
  }

  // Another program may have come first, so that all is looked at again with the lock.
  void migrate() {
    ask({{"BEGIN"}, {"SELECT pg_advisory_xact_lock($1)", {PostgresValue::number(migration_lock)}}},
        [self = shared_from_this()](const auto&) {
          self->look_at_version([self](std::int64_t version) { self->take_steps(version); });
        });
  }

  void take_steps(std::int64_t version) {
    std::vector<PostgresStatement> statements;
    if (version == 0) {
      if (!has_schema_) statements.push_back({"CREATE SCHEMA lineweir"});
      statements.push_back(
          {"CREATE TABLE lineweir.store_version (one bigint PRIMARY KEY "
           "CHECK (one = 1), version bigint NOT NULL)"});
      statements.push_back({"INSERT INTO lineweir.store_version VALUES (1, 0)"});
    }
    for (const PostgresStep& step : steps_.subspan(static_cast<std::size_t>(version))) {
      for (const char* statement : step) statements.push_back({statement});
    }
    statements.push_back({"UPDATE lineweir.store_version SET version = $1",
                          {PostgresValue::number(static_cast<std::int64_t>(steps_.size()))}});
    statements.push_back({"COMMIT"});
    ask(statements, [self = shared_from_this()](const auto&) { self->done_({}); });
  }

  bool is_newest(std::int64_t version) const {
    return static_cast<std::size_t>(version) == steps_.size();
  }

  void refuse(const std::string& why) {
    std::string shown = connection_.address().shown();
    shown[0] = 'T';
    done_(shown + " " + why + ".");
  }

  PostgresConnection& connection_;
  std::span<const PostgresStep> steps_;
  MissingStore missing_;
  bool has_schema_ = false;
  std::function<void(std::string failure)> done_;
};

}  // namespace

std::span<const PostgresStep> postgres_schema_steps() { return schema_steps; }

void bring_up_to_date(PostgresConnection& connection, std::span<const PostgresStep> steps,
                      MissingStore missing, std::function<void(std::string failure)> done) {
  std::make_shared<Upgrade>(connection, steps, missing, std::move(done))->begin();
}

void look_at_version(PostgresConnection& connection, std::span<const PostgresStep> steps,
                     std::function<void(std::string failure)> done) {
  std::make_shared<Upgrade>(connection, steps, MissingStore::Make, std::move(done))->look();
}

}  // namespace lineweir::platform

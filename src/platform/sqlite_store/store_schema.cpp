#include "platform/sqlite_store/store_schema.h"

#include <array>
#include <set>
#include <string>

#include "base/failure.h"
#include "base/telephone_number.h"
#include "platform/sqlite/connection.h"
#include "platform/sqlite/sqlite_failure.h"
#include "platform/sqlite/statement.h"

namespace lineweir::platform {
namespace {

// SQLite keeps the comments, so that `.schema` shows them to who looks into a store from outside.
constexpr std::array schema_steps = {
    R"sql(
CREATE TABLE accounts (
  name TEXT NOT NULL PRIMARY KEY,
  password_hash TEXT NOT NULL,    -- Argon2id
  profile BLOB NOT NULL,          -- as the user's console sent it
  locked INTEGER NOT NULL,        -- 1: by an administrator
  last_seen INTEGER               -- milliseconds since 1970, UTC; NULL: never
);
CREATE TABLE rights (
  account TEXT NOT NULL REFERENCES accounts (name) ON DELETE CASCADE,
  group_number INTEGER NOT NULL,  -- 0: every group that isn't named
  rights BLOB NOT NULL,           -- 12 bytes
  PRIMARY KEY (account, group_number)
) WITHOUT ROWID;

CREATE TABLE calls (
  id INTEGER NOT NULL PRIMARY KEY,
  group_number INTEGER NOT NULL,
  line INTEGER NOT NULL,          -- from 1
  number TEXT NOT NULL,           -- as the exchange told it
  began INTEGER,                  -- each in milliseconds since 1970, UTC; NULL: has not come
  answered INTEGER,
  aired INTEGER,
  ended INTEGER,
  told_by TEXT NOT NULL,          -- who entered the data
  caller_name TEXT NOT NULL,
  street_address TEXT NOT NULL,
  city TEXT NOT NULL,
  state TEXT NOT NULL,
  zip_code TEXT NOT NULL,
  phone_number TEXT NOT NULL,
  station TEXT NOT NULL,
  gender TEXT NOT NULL,
  comments TEXT NOT NULL,
  user_field TEXT NOT NULL
);
CREATE INDEX calls_by_end ON calls (ended, id);
CREATE TABLE call_steps (
  call INTEGER NOT NULL REFERENCES calls (id) ON DELETE CASCADE,
  place INTEGER NOT NULL,         -- from 1
  at INTEGER,
  user TEXT NOT NULL,             -- empty: the exchange
  action TEXT NOT NULL,
  PRIMARY KEY (call, place)
) WITHOUT ROWID;
CREATE VIEW call_list AS
  SELECT id, group_number, line, number,
    datetime(began / 1000, 'unixepoch', 'localtime') AS began,
    datetime(answered / 1000, 'unixepoch', 'localtime') AS answered,
    datetime(aired / 1000, 'unixepoch', 'localtime') AS aired,
    datetime(ended / 1000, 'unixepoch', 'localtime') AS ended,
    told_by, caller_name, city, comments
  FROM calls ORDER BY began, id;

CREATE TABLE group_memory (
  group_number INTEGER NOT NULL PRIMARY KEY,
  next_call INTEGER,              -- a line, from 1; NULL: none
  message BLOB NOT NULL,          -- the last message, as it went to the consoles
  show_last TEXT NOT NULL,
  show_next TEXT NOT NULL,
  show_text TEXT NOT NULL
);

CREATE TABLE audit (
  number INTEGER NOT NULL PRIMARY KEY,
  id TEXT NOT NULL UNIQUE,
  at INTEGER NOT NULL,
  user TEXT NOT NULL,             -- empty: the server itself
  action TEXT NOT NULL,
  detail TEXT NOT NULL,
  hash TEXT NOT NULL              -- SHA-256 over the hash of the entry before and this entry
);
CREATE TABLE audit_end (
  one INTEGER NOT NULL PRIMARY KEY CHECK (one = 1),
  entries INTEGER NOT NULL,
  hash TEXT NOT NULL
);
INSERT INTO audit_end VALUES (1, 0, '');
)sql",
    R"sql(
ALTER TABLE calls ADD COLUMN caller TEXT NOT NULL DEFAULT '';  -- telephone_key of the caller
UPDATE calls SET caller = telephone_key(phone_number);
UPDATE calls SET caller = telephone_key(number) WHERE caller = '';
CREATE INDEX calls_by_caller ON calls (caller, id) WHERE caller <> '';
CREATE TABLE flagged_callers (
  caller TEXT NOT NULL PRIMARY KEY,  -- telephone_key of the number
  number TEXT NOT NULL,
  flag INTEGER NOT NULL,          -- 1: regular, 2: careful, 3: barred
  reason TEXT NOT NULL,
  until TEXT NOT NULL,            -- the last day, 2026-12-31; empty: no end
  flagged_by TEXT NOT NULL,
  at INTEGER
);
)sql",
};

void tell_telephone_key(sqlite3_context* context, int /*count*/, sqlite3_value** values) {
  const auto* const text = reinterpret_cast<const char*>(sqlite3_value_text(values[0]));
  const std::string key = telephone_key(text == nullptr ? "" : text);
  sqlite3_result_text(context, key.data(), static_cast<int>(key.size()), SQLITE_TRANSIENT);
}

// For the steps alone: the tables don't need it.
void offer_telephone_key(sqlite3* connection) {
  const int result =
      sqlite3_create_function_v2(connection, "telephone_key", 1, SQLITE_UTF8 | SQLITE_DETERMINISTIC,
                                 nullptr, tell_telephone_key, nullptr, nullptr, nullptr);
  if (result != SQLITE_OK) throw sqlite_failure(result, connection);
}

int version_of(sqlite3* connection) {
  return static_cast<int>(query_number(connection, "PRAGMA user_version"));
}

// Views have no pages of their own.
std::set<std::string> columns_of(sqlite3* connection) {
  Statement names(
      connection,
      "SELECT made.name || '.' || part.name, part.pk FROM sqlite_schema made, "
      "pragma_table_info(made.name) part WHERE made.type = 'table' AND made.rootpage > 0");
  std::set<std::string> columns;
  while (names.step()) {
    const std::string name(names.text(0));
    columns.insert(names.number(1) == 0 ? name : name + ", part of the key");
  }
  return columns;
}

std::set<std::string> columns_of_newest() {
  sqlite3* opened = nullptr;
  const int result = sqlite3_open(":memory:", &opened);
  const Connection empty(opened);
  if (result != SQLITE_OK) throw sqlite_failure(result, opened);
  bring_up_to_date(opened);
  return columns_of(opened);
}

}  // namespace

std::span<const char* const> store_schema_steps() { return schema_steps; }

bool is_empty_database(sqlite3* connection) {
  return version_of(connection) == 0 && query_number(connection, "PRAGMA application_id") == 0 &&
         query_number(connection, "SELECT count(*) FROM sqlite_schema") == 0;
}

void require_store(sqlite3* connection, std::span<const char* const> steps) {
  if (is_empty_database(connection)) return;
  if (query_number(connection, "PRAGMA application_id") != store_application_id) {
    throw Failure(failure_number::not_a_database,
                  "The file " + shown_name(connection) + " is another program's database.");
  }
  const int version = version_of(connection);
  if (version < 0 || static_cast<std::size_t>(version) > steps.size()) {
    throw Failure(failure_number::not_a_database,
                  "The file " + shown_name(connection) +
                      " was written by a newer version of this program (its version is " +
                      std::to_string(version) + ", " + std::to_string(steps.size()) +
                      " is the newest known).");
  }
}

bool is_up_to_date(sqlite3* connection) {
  return static_cast<std::size_t>(version_of(connection)) == schema_steps.size();
}

std::string missing_column(sqlite3* connection) {
  const std::set<std::string> there = columns_of(connection);
  for (const std::string& column : columns_of_newest()) {
    if (!there.contains(column)) return column;
  }
  return {};
}

std::string meddling_part(sqlite3* connection) {
  Statement found(connection,
                  "SELECT type || ' ' || name FROM sqlite_schema WHERE type = 'trigger' OR "
                  "(type = 'index' AND sql LIKE 'CREATE UNIQUE%') ORDER BY name");
  return found.step() ? std::string(found.text(0)) : std::string();
}

void bring_up_to_date(sqlite3* connection, std::span<const char* const> steps) {
  offer_telephone_key(connection);
  while (static_cast<std::size_t>(version_of(connection)) < steps.size()) {
    Transaction transaction(connection);
    // Another program may have taken it meanwhile.
    const auto version = static_cast<std::size_t>(version_of(connection));
    if (version >= steps.size()) return;
    execute(connection, steps[version]);
    execute(connection, "PRAGMA application_id = " + std::to_string(store_application_id));
    execute(connection, "PRAGMA user_version = " + std::to_string(version + 1));
    transaction.commit();
  }
}

}  // namespace lineweir::platform

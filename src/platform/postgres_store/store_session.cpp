#include "platform/postgres_store/store_session.h"

#include <utility>

#include "platform/postgres_store/shared_news.h"

namespace lineweir::platform {
namespace {

// The tables are found by their names alone. What the server has given up the database gives up
// too, and it holds nothing for a server that has gone.
const std::vector<PostgresStatement> store_settings = {
    {"SET search_path TO lineweir"},   {"SET statement_timeout TO '60s'"},
    {"SET lock_timeout TO '8s'"},      {"SET idle_in_transaction_session_timeout TO '2s'"},
    {"SET tcp_keepalives_idle TO 10"}, {"SET tcp_keepalives_interval TO 5"},
    {"SET tcp_keepalives_count TO 3"}, listen_to_news(),
};

}  // namespace

StoreSession::StoreSession(PostgresAddress address, const PostgresConnection::Services& services,
                           PostgresConnection::Patience patience, MissingStore missing,
                           LedGroups led)
    : connection_(std::move(address), services, patience), missing_(missing), led_(led) {}

void StoreSession::open(std::function<void(std::string failure)> done) {
  ready_ = false;
  opened_ = std::move(done);
  connection_.close();
  connection_.open([this](const std::string& failure) {
    if (!failure.empty()) return told(failure);
    set_up();
  });
}

void StoreSession::close() {
  ready_ = false;
  opened_ = nullptr;
  connection_.close();
}

void StoreSession::set_up() {
  connection_.ask(store_settings, [this](const PostgresAnswer& answer) {
    if (answer.failure) return told(answer.failure->sentence);
    bring_tables();
  });
}

void StoreSession::bring_tables() {
  bring_up_to_date(connection_, postgres_schema_steps(), missing_,
                   [this](const std::string& failure) {
                     if (!failure.empty()) return told(failure);
                     missing_ = MissingStore::Refuse;
                     become_writer();
                   });
}

void StoreSession::become_writer() {
  ++session_;
  std::vector<PostgresStatement> statements;
  // Servers that were here once.
  statements.push_back({"DELETE FROM writers WHERE since < now() - interval '1 year'"});
  statements.push_back({"UPDATE writers SET session = $2, since = now() WHERE id = $1 RETURNING id",
                        {PostgresValue::text(writer_), PostgresValue::number(session_)}});
  statements.push_back(
      {"INSERT INTO writers (session) SELECT $2 "
       "WHERE NOT EXISTS (SELECT FROM writers WHERE id = $1) RETURNING id",
       {PostgresValue::text(writer_), PostgresValue::number(session_)}});
  connection_.ask(statements, [this](const PostgresAnswer& answer) {
    if (answer.failure) return told(answer.failure->sentence);
    const PostgresRows& kept = answer.rows[1];
    const PostgresRows& made = answer.rows[2];
    writer_ = kept.count() > 0 ? kept.text(0, 0) : made.text(0, 0);
    ready_ = true;
    told({});
  });
}

void StoreSession::told(const std::string& failure) {
  if (!failure.empty()) connection_.close();
  const auto opened = std::exchange(opened_, nullptr);
  if (opened) opened(failure);
}

// It divides by zero where there is no such row, which is how a plain statement can fail.
PostgresStatement StoreSession::guard() const {
  if (led_.epoch != 0) {
    return {
        "SELECT 1 / ((SELECT count(*) FROM "
        "(SELECT FROM writers WHERE id = $1 AND session = $2 FOR SHARE) AS mine) * "
        "((SELECT count(*) FROM (SELECT FROM leaders WHERE epoch = $3 FOR SHARE) AS led) = $4)"
        "::int)",
        {PostgresValue::text(writer_), PostgresValue::number(session_),
         PostgresValue::number(led_.epoch), PostgresValue::number(led_.count)}};
  }
  return {
      "SELECT 1 / count(*) FROM "
      "(SELECT FROM writers WHERE id = $1 AND session = $2 FOR SHARE) AS mine",
      {PostgresValue::text(writer_), PostgresValue::number(session_)}};
}

}  // namespace lineweir::platform

#include "platform/postgres/postgres_connection.h"

#include <libpq-fe.h>

#include <algorithm>
#include <utility>

namespace lineweir::platform {
namespace {

constexpr int binary = 1;

// One line of what libpq says in several.
std::string one_line(const char* message) {
  std::string line;
  for (const char* c = message == nullptr ? "" : message; *c != '\0'; ++c) {
    const bool is_space = static_cast<unsigned char>(*c) <= ' ';
    if (!is_space) {
      line += *c;
    } else if (!line.empty() && line.back() != ' ') {
      line += ' ';
    }
  }
  while (line.ends_with(' ') || line.ends_with('.')) line.pop_back();
  return line;
}

std::string begun_large(std::string sentence) {
  if (!sentence.empty() && sentence[0] >= 'a' && sentence[0] <= 'z') sentence[0] -= 'a' - 'A';
  return sentence;
}

std::string list_of(const std::vector<PostgresHost>& hosts, std::string PostgresHost::*part) {
  std::string list;
  for (const PostgresHost& host : hosts) list += (&host == hosts.data() ? "" : ",") + host.*part;
  return list.find_first_not_of(',') == std::string::npos ? std::string() : list;
}

std::string in_seconds(Milliseconds time) {
  const auto seconds = std::chrono::ceil<std::chrono::seconds>(time).count();
  return std::to_string(seconds) + (seconds == 1 ? " second" : " seconds");
}

}  // namespace

void PostgresConnection::Finish::operator()(pg_conn* session) const { PQfinish(session); }

PostgresConnection::PostgresConnection(PostgresAddress address, const Services& services,
                                       Patience patience)
    : address_(std::move(address)),
      loop_(services.loop),
      watch_(services.watch),
      patience_(patience),
      lookup_(services.poster) {}

PostgresConnection::~PostgresConnection() { close(); }

void PostgresConnection::close() {
  opened_ = nullptr;
  answered_ = nullptr;
  lookup_.forget();
  end_session();
}

void PostgresConnection::open(std::function<void(std::string failure)> done) {
  opened_ = std::move(done);
  state_ = State::LookingUp;
  deadline_ = loop_.now() + patience_.welcome;
  watch_time();
  lookup_.find(address_.hosts(),
               [this](const std::vector<PostgresHost>& hosts, const std::string& why) {
                 if (hosts.empty()) return fail(why);
                 start(hosts);
               });
}

void PostgresConnection::start(const std::vector<PostgresHost>& hosts) {
  auto turned = hosts;
  const auto turn = static_cast<std::ptrdiff_t>(first_host_ % turned.size());
  std::rotate(turned.begin(), turned.begin() + turn, turned.end());
  auto options = address_.options();
  options["host"] = list_of(turned, &PostgresHost::name);
  options["hostaddr"] = list_of(turned, &PostgresHost::address);
  options["port"] = list_of(turned, &PostgresHost::port);
  std::vector<const char*> keys;
  std::vector<const char*> values;
  for (const auto& [key, value] : options) {
    if (value.empty()) continue;
    keys.push_back(key.c_str());
    values.push_back(value.c_str());
  }
  keys.push_back(nullptr);
  values.push_back(nullptr);
  constexpr int names_only = 0;
  session_.reset(PQconnectStartParams(keys.data(), values.data(), names_only));
  if (!session_ || PQstatus(session_.get()) == CONNECTION_BAD) return fail_as_told({});
  // What it would print by itself is no line of the log's.
  PQsetNoticeProcessor(
      session_.get(), [](void*, const char*) {}, nullptr);
  state_ = State::Connecting;
  watch_.wait(PQsocket(session_.get()), true, [this] { go_on_connecting(); });
}

// The descriptor may be another one after each step, also under the number of the former.
void PostgresConnection::go_on_connecting() {
  const PostgresPollingStatusType status = PQconnectPoll(session_.get());
  watch_.stop();
  switch (status) {
    case PGRES_POLLING_OK:
      return welcome();
    case PGRES_POLLING_FAILED:
      return fail_as_told({});
    default:
      watch_.wait(PQsocket(session_.get()), status == PGRES_POLLING_WRITING,
                  [this] { go_on_connecting(); });
  }
}

void PostgresConnection::welcome() {
  const char* const letters = PQparameterStatus(session_.get(), "server_encoding");
  if (letters == nullptr || std::string_view(letters) != "UTF8") {
    return fail(begun_large(address_.shown()) +
                " can't hold all letters; make it anew with "
                "'createdb --encoding=UTF8 --template=template0'.");
  }
  PQsetnonblocking(session_.get(), 1);
  state_ = State::Open;
  loop_.cancel(timer_);
  wait_for_words();
  const auto opened = std::exchange(opened_, nullptr);
  opened({});
}

void PostgresConnection::end_session() {
  loop_.cancel(timer_);
  watch_.stop();
  session_.reset();
  state_ = State::Closed;
  prepared_.clear();
  expected_.clear();
  answer_ = {};
}

void PostgresConnection::fail_as_told(const std::string& what) {
  const std::string why = one_line(session_ ? PQerrorMessage(session_.get()) : "");
  if (!what.empty()) return fail(what + (why.empty() ? "." : ": " + why + "."));
  fail(begun_large(address_.shown()) + " can't be reached: " + why +
       "; see that PostgreSQL runs there and lets this user in.");
}

void PostgresConnection::fail(const std::string& sentence) {
  const auto opened = std::exchange(opened_, nullptr);
  const auto answered = std::exchange(answered_, nullptr);
  const bool was_open = is_open();
  end_session();
  if (opened) return opened(sentence);
  if (answered) return answered({.rows = {}, .failure = PostgresFailure{{}, sentence}});
  if (was_open && on_lost) on_lost(sentence);
}

void PostgresConnection::ask(const std::vector<PostgresStatement>& statements,
                             std::function<void(PostgresAnswer answer)> done) {
  answered_ = std::move(done);
  answer_ = {};
  bool sent = PQenterPipelineMode(session_.get()) != 0;
  for (const PostgresStatement& statement : statements) sent = sent && send(statement);
  sent = sent && PQpipelineSync(session_.get()) != 0;
  expected_.push_back({Expected::Kind::End, {}});
  give_time();
  watch_time();
  // A session that is broken already shows that to whoever reads it.
  if (!sent || !is_open()) {
    loop_.cancel(timer_);
    timer_ = loop_.schedule(Milliseconds{0}, [this] {
      fail_as_told("The connection to " + address_.shown() + " was lost");
    });
    return;
  }
  wait_for_words();
}

bool PostgresConnection::send(const PostgresStatement& statement) {
  pg_conn* const session = session_.get();
  if (statement.values.empty()) {
    expected_.push_back({Expected::Kind::Statement, {}});
    return PQsendQueryParams(session, statement.sql.c_str(), 0, nullptr, nullptr, nullptr, nullptr,
                             binary) != 0;
  }
  std::vector<unsigned> types;
  std::vector<const char*> values;
  std::vector<int> sizes;
  const std::vector<int> forms(statement.values.size(), binary);
  for (const PostgresValue& value : statement.values) {
    types.push_back(value.type());
    values.push_back(value.content() ? value.content()->data() : nullptr);
    sizes.push_back(value.content() ? static_cast<int>(value.content()->size()) : 0);
  }
  const int count = static_cast<int>(values.size());
  std::string& name = prepared_[statement.sql];
  if (name.empty()) {
    name = "s" + std::to_string(++names_);
    expected_.push_back({Expected::Kind::Preparation, statement.sql});
    if (PQsendPrepare(session, name.c_str(), statement.sql.c_str(), count, types.data()) == 0) {
      return false;
    }
  }
  expected_.push_back({Expected::Kind::Statement, {}});
  return PQsendQueryPrepared(session, name.c_str(), count, values.data(), sizes.data(),
                             forms.data(), binary) != 0;
}

void PostgresConnection::wait_for_words() {
  const int left = PQflush(session_.get());
  watch_.wait(PQsocket(session_.get()), left > 0, [this] { read_words(); });
}

void PostgresConnection::read_words() {
  if (PQconsumeInput(session_.get()) == 0) {
    return fail_as_told("The connection to " + address_.shown() + " was lost");
  }
  take_notifications();
  if (!answered_) return wait_for_words();
  give_time();
  const bool all = take_results();
  // What came behind a result is found only once that is taken, and the socket is silent by then.
  take_notifications();
  if (PQstatus(session_.get()) == CONNECTION_BAD) {
    return fail_as_told("The connection to " + address_.shown() + " was lost");
  }
  if (!all) return wait_for_words();
  PQexitPipelineMode(session_.get());
  loop_.cancel(timer_);
  wait_for_words();
  if (answer_.failure) answer_.rows.clear();
  const auto answered = std::exchange(answered_, nullptr);
  answered(std::exchange(answer_, {}));
}

void PostgresConnection::take_notifications() {
  const auto free = [](PGnotify* told) { PQfreemem(told); };
  for (;;) {
    const std::unique_ptr<PGnotify, decltype(free)> told(PQnotifies(session_.get()), free);
    if (!told) return;
    if (on_notified) on_notified(told->extra);
  }
}

bool PostgresConnection::take_results() {
  bool was_end = false;
  while (!expected_.empty() && PQisBusy(session_.get()) == 0) {
    pg_result* const result = PQgetResult(session_.get());
    // Between one statement and the next there is none; twice none means that nothing comes.
    if (result == nullptr && std::exchange(was_end, true)) break;
    if (result == nullptr) continue;
    was_end = false;
    take(result);
  }
  return expected_.empty();
}

void PostgresConnection::take(pg_result* result) {
  PostgresRows rows(result);
  const ExecStatusType status = PQresultStatus(result);
  const Expected expected = std::move(expected_.front());
  expected_.pop_front();
  const bool is_done = status == PGRES_COMMAND_OK || status == PGRES_TUPLES_OK;
  if (expected.kind == Expected::Kind::Statement && is_done) {
    answer_.rows.push_back(std::move(rows));
  }
  if (expected.kind == Expected::Kind::Preparation && !is_done) prepared_.erase(expected.sql);
  if (status == PGRES_FATAL_ERROR && !answer_.failure) answer_.failure = failure_of(result);
}

PostgresFailure PostgresConnection::failure_of(const pg_result* result) const {
  const char* const code = PQresultErrorField(result, PG_DIAG_SQLSTATE);
  const std::string message = one_line(PQresultErrorField(result, PG_DIAG_MESSAGE_PRIMARY));
  return {.code = code == nullptr ? "" : code,
          .sentence = begun_large(address_.shown()) + " refused what was asked: " + message + "."};
}

void PostgresConnection::give_time() { deadline_ = loop_.now() + patience_.answer; }

// One call of the loop stands for the limit, however often that is moved on.
void PostgresConnection::watch_time() {
  loop_.cancel(timer_);
  timer_ = loop_.schedule(deadline_ - loop_.now(), [this] {
    if (loop_.now() < deadline_) return watch_time();
    const bool asking = is_open();
    if (!asking) ++first_host_;
    fail(begun_large(address_.shown()) + " has not answered for " +
         in_seconds(asking ? patience_.answer : patience_.welcome) +
         "; see whether it hangs, and the network on the way to it.");
  });
}

bool PostgresConnection::is_in_transaction() const {
  return is_open() && PQtransactionStatus(session_.get()) != PQTRANS_IDLE;
}

}  // namespace lineweir::platform

#include "platform/postgres_store/postgres_store.h"

#include <utility>

#include "base/failure.h"
#include "platform/postgres_store/audit_walk.h"
#include "platform/postgres_store/store_backup.h"
#include "platform/postgres_store/write_transaction.h"

namespace lineweir::platform {
namespace {

// All that is read together is seen as it is at one moment.
const PostgresStatement begin_look = {"BEGIN ISOLATION LEVEL REPEATABLE READ READ ONLY"};
const PostgresStatement end_look = {"COMMIT"};

}  // namespace

PostgresStore::PostgresStore(PostgresAddress address, const PostgresConnection::Services& services,
                             PostgresConnection::Patience patience, LedGroups led)
    : loop_(services.loop),
      poster_(services.poster),
      session_(std::move(address), services, patience, MissingStore::Make, led),
      here_(std::make_shared<PostgresStore*>(this)) {
  session_.connection().on_lost = [this](const std::string& why) {
    if (state_ != State::Working) return lost(why);
    // What is being done in the thread goes on.
    session_.close();
    set_trouble(why);
  };
  session_.connection().on_notified = [this](std::string_view text) { hear(text); };
}

PostgresStore::~PostgresStore() {
  given_up_ = true;
  if (thread_.joinable()) thread_.join();
  loop_.cancel(next_try_);
}

template <class Answer>
void PostgresStore::ask(PostgresStatements read,
                        std::function<Answer(const std::vector<PostgresRows>& rows)> decode,
                        std::function<void(std::optional<Answer>)> done) {
  read.insert(read.begin(), begin_look);
  read.push_back(end_look);
  const auto told = std::make_shared<decltype(done)>(std::move(done));
  const auto begin = [this, read = std::move(read), decode = std::move(decode),
                      told](const Finished& finished) mutable {
    session_.connection().ask(
        read, [decode = std::move(decode), told, finished](const PostgresAnswer& answer) {
          auto found = std::make_shared<std::optional<Answer>>();
          if (!answer.failure) *found = decode(answer.rows);
          finished(answer.failure, [told, found] { (*told)(std::move(*found)); });
        });
  };
  add({.begin = begin, .refuse = [told](const std::string&) { (*told)(std::nullopt); }});
}

void PostgresStore::load(std::function<void(std::optional<StoredState> state)> done) {
  PostgresStatements read;
  append_accounts_read(read);
  append_calls_read(read, open_calls());
  read.push_back(groups_read());
  read.push_back(flagged_callers_read());
  read.push_back(studio_places_read());
  ask<StoredState>(
      std::move(read),
      [](const std::vector<PostgresRows>& rows) {
        return StoredState{.accounts = accounts_of(rows[1], rows[2]),
                           .open_calls = calls_of(rows[3], rows[4]),
                           .groups = groups_of(rows[5]),
                           .flagged_callers = flagged_callers_of(rows[6]),
                           .studio_places = studio_places_of(rows[7])};
      },
      std::move(done));
}

void PostgresStore::write(std::vector<StoreChange> changes,
                          std::function<void(bool written)> done) {
  const auto told = std::make_shared<decltype(done)>(std::move(done));
  const auto begin = [this, changes = std::move(changes), told](const Finished& finished) mutable {
    write_in_one(session_, std::move(changes), [this, told, finished](const Failed& failure) {
      writes_fail_ = failure && session_.is_open();
      finished(failure, [told, written = !failure] { (*told)(written); });
    });
  };
  add({.begin = begin, .refuse = [told](const std::string&) { (*told)(false); }});
}

void PostgresStore::calls(const CallFilter& filter,
                          std::function<void(std::optional<std::vector<CallRecord>> calls)> done) {
  PostgresStatements read;
  append_calls_read(read, ended_calls(filter));
  ask<std::vector<CallRecord>>(
      std::move(read),
      [](const std::vector<PostgresRows>& rows) { return calls_of(rows[1], rows[2]); },
      std::move(done));
}

void PostgresStore::audit(
    const AuditFilter& filter,
    std::function<void(std::optional<std::vector<AuditEntry>> entries)> done) {
  ask<std::vector<AuditEntry>>(
      {audit_read(filter)},
      [](const std::vector<PostgresRows>& rows) { return entries_of(rows[1]); }, std::move(done));
}

void PostgresStore::caller_history(const std::string& key,
                                   std::function<void(std::optional<CallerHistory> history)> done) {
  ask<CallerHistory>(
      {caller_history_read(key)},
      [](const std::vector<PostgresRows>& rows) { return caller_history_of(rows[1]); },
      std::move(done));
}

void PostgresStore::forget(Moment before, Forgetting what, std::size_t limit,
                           std::function<void(std::optional<std::size_t> forgotten)> done) {
  const auto told = std::make_shared<decltype(done)>(std::move(done));
  const auto begin = [this, before, what, limit, told](const Finished& finished) {
    session_.connection().ask(
        {{"BEGIN"}, session_.guard(), forget_calls(before, what, limit), {"COMMIT"}},
        [told, finished](const PostgresAnswer& answer) {
          std::optional<std::size_t> count;
          if (!answer.failure) count = static_cast<std::size_t>(answer.rows[2].count());
          finished(answer.failure, [told, count] { (*told)(count); });
        });
  };
  add({.begin = begin, .refuse = [told](const std::string&) { (*told)(std::nullopt); }});
}

// More of the same transaction is on its way.
void PostgresStore::hear(std::string_view text) {
  const bool is_first = news_.empty();
  news_.add(text);
  if (!is_first) return;
  loop_.schedule(Milliseconds{0}, [this, here = std::weak_ptr(here_)] {
    if (here.lock()) read_news();
  });
}

// What comes while some is read is read together.
void PostgresStore::read_news() {
  if (!on_news || news_.empty() || std::exchange(reads_news_, true)) return;
  const SharedNews asked = std::exchange(news_, {});
  PostgresStatements read;
  asked.append_read(read);
  ask<StoreNews>(
      std::move(read),
      // Behind the beginning of the look.
      [asked](const std::vector<PostgresRows>& rows) { return asked.read(rows, 1); },
      [this](const std::optional<StoreNews>& news) {
        reads_news_ = false;
        if (news && on_news) on_news(*news);
        read_news();
      });
}

void PostgresStore::verify_audit(std::function<void(std::optional<AuditVerdict> verdict)> done) {
  const auto told = std::make_shared<decltype(done)>(std::move(done));
  const auto begin = [this, told](const Finished& finished) {
    walk_over_audit(session_.connection(), [told, finished](const Failed& failure,
                                                            const AuditVerdict& verdict) {
      finished(failure,
               [told, found = failure ? std::nullopt : std::optional(verdict)] { (*told)(found); });
    });
  };
  add({.begin = begin, .refuse = [told](const std::string&) { (*told)(std::nullopt); }});
}

void PostgresStore::backup(const std::string& file, std::function<void(std::string failure)> done) {
  in_thread(back_up_to_file, file, std::move(done));
}

void PostgresStore::restore(const std::string& file,
                            std::function<void(std::string failure)> done) {
  in_thread(restore_from_file, file, std::move(done));
}

// In a session and a thread of its own, while this one waits: so all is in its order.
void PostgresStore::in_thread(
    std::function<void(const PostgresAddress& address, const std::string& file,
                       const std::atomic<bool>& given_up)>
        task,
    const std::string& file, std::function<void(std::string failure)> done) {
  const auto told = std::make_shared<decltype(done)>(std::move(done));
  const auto begin = [this, task = std::move(task), file, told](const Finished& finished) {
    if (thread_.joinable()) thread_.join();
    thread_ = std::thread([this, task, file, told, finished] {
      std::string failed;
      try {
        task(session_.connection().address(), file, given_up_);
      } catch (const std::exception& failure) {
        failed = failure.what();
      }
      poster_.post([here = std::weak_ptr(here_), told, finished, failed] {
        if (here.lock()) finished({}, [told, failed] { (*told)(failed); });
      });
    });
  };
  add({.begin = begin, .refuse = [told](const std::string& why) { (*told)(why); }});
}

void PostgresStore::add(Work work) {
  works_.push_back(std::move(work));
  if (works_.size() == 1) go_on();
}

// Never from within what was asked.
void PostgresStore::go_on() {
  loop_.schedule(Milliseconds{0}, [this, here = std::weak_ptr(here_)] {
    if (here.lock()) begin_next();
  });
}

void PostgresStore::begin_next() {
  if (works_.empty() || state_ == State::Opening || state_ == State::Working) return;
  if (!session_.is_open()) return open_session();
  state_ = State::Working;
  works_.front().begin(
      [this, here = std::weak_ptr(here_)](const Failed& failure, const Tell& tell) {
        if (here.lock()) finish(failure, tell);
      });
}

void PostgresStore::finish(const Failed& failure, const Tell& tell) {
  if (failure && failure->code == StoreSession::not_the_writer) session_.close();
  if (session_.connection().is_in_transaction()) {
    roll_back();
  } else if (session_.is_open()) {
    state_ = State::Idle;
    go_on();
  } else {
    lost({});
  }
  works_.pop_front();
  const bool is_well = session_.is_open() && !writes_fail_;
  if (failure || is_well) set_trouble(failure ? failure->sentence : std::string());
  tell();
}

void PostgresStore::roll_back() {
  session_.connection().ask({{"ROLLBACK"}}, [this](const PostgresAnswer& answer) {
    if (answer.failure) return lost(answer.failure->sentence);
    state_ = State::Idle;
    go_on();
  });
}

void PostgresStore::open_session() {
  state_ = State::Opening;
  loop_.cancel(next_try_);
  session_.open([this](const std::string& failure) { opened(failure); });
}

void PostgresStore::opened(const std::string& failure) {
  if (failure.empty()) {
    state_ = State::Idle;
    writes_fail_ = false;
    set_trouble({});
    news_.add_all();
    read_news();
    return go_on();
  }
  lost(failure);
  // What comes while these are told waits for the next try.
  for (std::size_t count = works_.size(); count > 0; --count) {
    const auto here = std::weak_ptr(here_);
    const auto refuse = std::move(works_.front().refuse);
    works_.pop_front();
    refuse(failure);
    if (here.expired()) return;
  }
}

void PostgresStore::lost(const std::string& why) {
  state_ = State::Away;
  session_.close();
  loop_.cancel(next_try_);
  next_try_ = loop_.schedule(tried_again_after, [this] { open_session(); });
  if (!why.empty()) set_trouble(why);
}

void PostgresStore::set_trouble(const std::string& trouble) {
  if (trouble == trouble_) return;
  trouble_ = trouble;
  if (on_trouble) on_trouble(trouble);
}

}  // namespace lineweir::platform

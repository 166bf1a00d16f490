#pragma once

#include <atomic>
#include <deque>
#include <memory>
#include <thread>

#include "platform/postgres_store/record_statements.h"
#include "platform/postgres_store/shared_news.h"
#include "platform/postgres_store/store_session.h"
#include "platform/store.h"

namespace lineweir::platform {

// A store in a PostgreSQL database, which other stores may use at the same time. What is asked is
// done one behind the other in one session; what is written is on the database's disk when that is
// told.
//
// While the database is away everything that is asked is told to have failed once the session can't
// be had, the trouble says why, and the session is tried for again and again.
class PostgresStore final : public Store {
 public:
  static constexpr Milliseconds tried_again_after{1'000};

  // The watch is this store's alone. All outlive this object.
  PostgresStore(PostgresAddress address, const PostgresConnection::Services& services,
                PostgresConnection::Patience patience = {}, LedGroups led = {});
  // Nobody is told of what waits; a backup or restoration that runs is given up.
  ~PostgresStore() override;
  PostgresStore(const PostgresStore&) = delete;
  PostgresStore& operator=(const PostgresStore&) = delete;

  void load(std::function<void(std::optional<StoredState> state)> done) override;
  void write(std::vector<StoreChange> changes, std::function<void(bool written)> done) override;
  void calls(const CallFilter& filter,
             std::function<void(std::optional<std::vector<CallRecord>> calls)> done) override;
  void audit(const AuditFilter& filter,
             std::function<void(std::optional<std::vector<AuditEntry>> entries)> done) override;
  void caller_history(const std::string& key,
                      std::function<void(std::optional<CallerHistory> history)> done) override;
  void forget(Moment before, Forgetting what, std::size_t limit,
              std::function<void(std::optional<std::size_t> forgotten)> done) override;
  void verify_audit(std::function<void(std::optional<AuditVerdict> verdict)> done) override;
  void backup(const std::string& file, std::function<void(std::string failure)> done) override;
  void restore(const std::string& file, std::function<void(std::string failure)> done) override;
  std::size_t waiting() const override { return works_.size(); }

 private:
  using Failed = std::optional<PostgresFailure>;
  // Tells whoever asked.
  using Tell = std::function<void()>;
  using Finished = std::function<void(const Failed& failure, Tell tell)>;
  // Something that was asked. `done` is told when it has been done, in whatever way.
  struct Work {
    std::function<void(const Finished& done)> begin;
    // Where there is no session for it.
    std::function<void(const std::string& why)> refuse;
  };

  void add(Work work);
  template <class Answer>
  void ask(PostgresStatements read,
           std::function<Answer(const std::vector<PostgresRows>& rows)> decode,
           std::function<void(std::optional<Answer>)> done);
  void in_thread(std::function<void(const PostgresAddress& address, const std::string& file,
                                    const std::atomic<bool>& given_up)>
                     task,
                 const std::string& file, std::function<void(std::string failure)> done);

  void go_on();
  void begin_next();
  void finish(const Failed& failure, const Tell& tell);
  void roll_back();
  void open_session();
  void opened(const std::string& failure);
  void hear(std::string_view text);
  void read_news();
  void lost(const std::string& why);
  void set_trouble(const std::string& trouble);

  EventLoop& loop_;
  Poster& poster_;
  StoreSession session_;
  std::deque<Work> works_;
  enum class State { Away, Opening, Idle, Working };
  State state_ = State::Away;
  EventLoop::CallId next_try_ = 0;
  std::string trouble_;
  // The database has refused what was written last; reading says nothing of whether it takes it.
  bool writes_fail_ = false;
  SharedNews news_;
  bool reads_news_ = false;
  // What is told behind the end of this object is told to nobody.
  std::shared_ptr<PostgresStore*> here_;
  std::atomic<bool> given_up_ = false;
  std::thread thread_;
};

}  // namespace lineweir::platform

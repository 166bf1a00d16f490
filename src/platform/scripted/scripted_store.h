#pragma once

#include <cstdint>
#include <deque>
#include <map>
#include <random>
#include <string>

#include "platform/event_loop.h"
#include "platform/scripted/store_content.h"
#include "platform/store.h"

namespace lineweir::platform {

// A store in memory and virtual time. What is asked is worked on one behind the other, as by one
// thread, and can be made to take its time, to stand still and to fail.
class ScriptedStore final : public Store {
 public:
  // The loop outlives the store.
  explicit ScriptedStore(EventLoop& loop) : loop_(loop) {}
  ~ScriptedStore() override { forget_what_waits(); }
  ScriptedStore(const ScriptedStore&) = delete;
  ScriptedStore& operator=(const ScriptedStore&) = delete;

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

  // As write(), unless `may` says no at the moment in which the store would do it.
  void write_if(std::function<bool()> may, std::vector<StoreChange> changes,
                std::function<void(bool written)> done);

  // From now on each piece of work takes so long.
  void take(Milliseconds each) { each_takes_ = each; }
  // Nothing is worked on, or everything again.
  void stall(bool stalls);
  // Everything that is worked on fails, or nothing any more.
  void fail(bool fails) { fails_ = fails; }
  // What is written fails, and what is read doesn't; or nothing any more.
  void refuse_writes(bool refuses) { refuses_writes_ = refuses; }
  // By chance, of which a seed is the same each time: a piece of work fails with that probability,
  // and takes up to so much longer. Of the writes that are told to have failed, half were done, as
  // when a connection is cut behind them.
  void misbehave(std::uint64_t seed, double failing, Milliseconds longest);
  void behave() { misbehave(0, 0, Milliseconds{0}); }
  // What waits is lost and nobody is told, as at the end of a process.
  void forget_what_waits();

  // What it holds. A test that changes it is somebody who has the file.
  StoreContent& content() { return content_; }
  const StoreContent& content() const { return content_; }
  // The backups by their files' names.
  std::map<std::string, StoreContent>& files() { return files_; }

 private:
  enum class Outcome { Done, Failed, DoneButFailed };
  using Work = std::function<void(Outcome outcome)>;

  template <class Answer>
  void ask(std::function<Answer()> read, std::function<void(std::optional<Answer>)> done);
  void add(Work work);
  void schedule_next();
  void work_on_next();
  Outcome outcome();
  // From 0 up to but not 1.
  double chance();
  void set_trouble(bool troubled);

  EventLoop& loop_;
  StoreContent content_;
  std::map<std::string, StoreContent> files_;
  std::deque<Work> works_;
  EventLoop::CallId next_ = 0;
  bool scheduled_ = false;
  Milliseconds each_takes_{0};
  bool stalls_ = false;
  bool fails_ = false;
  bool refuses_writes_ = false;
  bool troubled_ = false;
  std::mt19937_64 engine_;
  double failing_ = 0;
  Milliseconds longest_{0};
};

}  // namespace lineweir::platform

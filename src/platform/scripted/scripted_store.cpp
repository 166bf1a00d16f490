#include "platform/scripted/scripted_store.h"

#include <utility>

namespace lineweir::platform {
namespace {

const std::string not_reached = "The store can't be reached.";

}  // namespace

template <class Answer>
void ScriptedStore::ask(std::function<Answer()> read,
                        std::function<void(std::optional<Answer>)> done) {
  add([read = std::move(read), done = std::move(done)](Outcome outcome) {
    done(outcome == Outcome::Done ? std::optional(read()) : std::nullopt);
  });
}

void ScriptedStore::load(std::function<void(std::optional<StoredState> state)> done) {
  ask<StoredState>([this] { return content_.state(); }, std::move(done));
}

void ScriptedStore::write(std::vector<StoreChange> changes,
                          std::function<void(bool written)> done) {
  write_if([] { return true; }, std::move(changes), std::move(done));
}

void ScriptedStore::write_if(std::function<bool()> may, std::vector<StoreChange> changes,
                             std::function<void(bool written)> done) {
  add([this, may = std::move(may), changes = std::move(changes),
       done = std::move(done)](Outcome outcome) {
    if (refuses_writes_ || !may()) return done(false);
    if (outcome != Outcome::Failed) {
      for (const StoreChange& change : changes) content_.apply(change);
    }
    done(outcome == Outcome::Done);
  });
}

void ScriptedStore::calls(const CallFilter& filter,
                          std::function<void(std::optional<std::vector<CallRecord>> calls)> done) {
  ask<std::vector<CallRecord>>([this, filter] { return content_.ended_calls(filter); },
                               std::move(done));
}

void ScriptedStore::audit(
    const AuditFilter& filter,
    std::function<void(std::optional<std::vector<AuditEntry>> entries)> done) {
  ask<std::vector<AuditEntry>>([this, filter] { return content_.entries(filter); },
                               std::move(done));
}

void ScriptedStore::caller_history(const std::string& key,
                                   std::function<void(std::optional<CallerHistory> history)> done) {
  ask<CallerHistory>([this, key] { return content_.caller_history(key); }, std::move(done));
}

void ScriptedStore::forget(Moment before, Forgetting what, std::size_t limit,
                           std::function<void(std::optional<std::size_t> forgotten)> done) {
  ask<std::size_t>([this, before, what, limit] { return content_.forget(before, what, limit); },
                   std::move(done));
}

void ScriptedStore::verify_audit(std::function<void(std::optional<AuditVerdict> verdict)> done) {
  ask<AuditVerdict>([this] { return content_.verdict(); }, std::move(done));
}

void ScriptedStore::backup(const std::string& file, std::function<void(std::string failure)> done) {
  add([this, file, done = std::move(done)](Outcome outcome) {
    if (outcome != Outcome::Done) return done(not_reached);
    const bool is_new = files_.try_emplace(file, content_).second;
    done(is_new ? "" : "The file is there already.");
  });
}

void ScriptedStore::restore(const std::string& file,
                            std::function<void(std::string failure)> done) {
  add([this, file, done = std::move(done)](Outcome outcome) {
    if (outcome != Outcome::Done) return done(not_reached);
    const auto found = files_.find(file);
    if (found == files_.end()) return done("There is no such file.");
    if (!content_.is_fresh()) return done("The store isn't empty.");
    content_ = found->second;
    done("");
  });
}

void ScriptedStore::stall(bool stalls) {
  stalls_ = stalls;
  schedule_next();
}

void ScriptedStore::misbehave(std::uint64_t seed, double failing, Milliseconds longest) {
  engine_.seed(seed);
  failing_ = failing;
  longest_ = longest;
}

void ScriptedStore::forget_what_waits() {
  if (scheduled_) loop_.cancel(next_);
  scheduled_ = false;
  works_.clear();
}

void ScriptedStore::add(Work work) {
  works_.push_back(std::move(work));
  schedule_next();
}

void ScriptedStore::schedule_next() {
  if (scheduled_ || stalls_ || works_.empty()) return;
  const auto longer =
      longest_ > Milliseconds{0} ? chance() * static_cast<double>(longest_.count()) : 0.0;
  scheduled_ = true;
  next_ = loop_.schedule(each_takes_ + Milliseconds{static_cast<Milliseconds::rep>(longer)},
                         [this] { work_on_next(); });
}

void ScriptedStore::work_on_next() {
  scheduled_ = false;
  if (stalls_) return;
  const Work work = std::move(works_.front());
  works_.pop_front();
  const Outcome came = outcome();
  set_trouble(came != Outcome::Done);
  schedule_next();
  work(came);
}

ScriptedStore::Outcome ScriptedStore::outcome() {
  if (fails_) return Outcome::Failed;
  if (failing_ <= 0 || chance() >= failing_) return Outcome::Done;
  return chance() < 0.5 ? Outcome::Failed : Outcome::DoneButFailed;
}

double ScriptedStore::chance() {
  // The bits that a double holds exactly.
  constexpr int spare_bits = 64 - 53;
  constexpr double range = 9007199254740992.0;
  return static_cast<double>(engine_() >> spare_bits) / range;
}

void ScriptedStore::set_trouble(bool troubled) {
  if (std::exchange(troubled_, troubled) == troubled || !on_trouble) return;
  on_trouble(troubled ? not_reached : "");
}

}  // namespace lineweir::platform

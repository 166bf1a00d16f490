#include "server/store_outbox.h"

#include <doctest/doctest.h>

#include "platform/scripted/scripted_store.h"
#include "platform/scripted/scripted_store_journal.h"
#include "platform/scripted/virtual_event_loop.h"

namespace lineweir::server {
namespace {

using namespace std::chrono_literals;
using platform::Account;
using platform::AuditEvent;
using platform::CallRecord;
using platform::GroupMemory;
using platform::StoreChange;
using Changes = std::vector<StoreChange>;

// Notes each batch that it is given, and answers when it is told to.
class NotingStore final : public platform::Store {
 public:
  void load(std::function<void(std::optional<platform::StoredState>)>) override {}
  void write(Changes changes, std::function<void(bool)> done) override {
    batches.push_back(std::move(changes));
    answer_ = std::move(done);
  }
  void calls(const platform::CallFilter&,
             std::function<void(std::optional<std::vector<CallRecord>>)>) override {}
  void audit(const platform::AuditFilter&,
             std::function<void(std::optional<std::vector<platform::AuditEntry>>)>) override {}
  void caller_history(const std::string&,
                      std::function<void(std::optional<platform::CallerHistory>)>) override {}
  void forget(platform::Moment, Forgetting, std::size_t,
              std::function<void(std::optional<std::size_t>)>) override {}
  void verify_audit(std::function<void(std::optional<platform::AuditVerdict>)>) override {}
  void backup(const std::string&, std::function<void(std::string)>) override {}
  void restore(const std::string&, std::function<void(std::string)>) override {}
  std::size_t waiting() const override { return 0; }

  bool is_asked() const { return answer_ != nullptr; }
  void answer(bool written) {
    const auto stored_call = std::exchange(answer_, nullptr);
    stored_call(written);
  }

  std::vector<Changes> batches;

 private:
  std::function<void(bool)> answer_;
};

struct Desk {
  void wait(platform::Milliseconds span) { loop.advance(span); }

  platform::VirtualEventLoop loop;
  NotingStore store;
  std::vector<std::string> logged;
  std::vector<LogLevel> levels;
  ServerLog log{[this](LogLevel level, const std::string& line) {
    logged.push_back(line);
    levels.push_back(level);
  }};
  StoreOutbox outbox{loop, store, log};
};

AuditEvent event(int number) { return {std::to_string(number), {}, {}, "login", {}}; }

Account account(const std::string& name, const std::string& profile = {}) {
  Account made;
  made.name = name;
  made.profile = profile;
  return made;
}

CallRecord stored_call(std::int64_t id, platform::Moment ended = platform::Moment{0}) {
  CallRecord made;
  made.id = id;
  made.ended = ended;
  return made;
}

TEST_CASE("what is put within twenty milliseconds is written at once, in its order") {
  Desk desk;
  desk.outbox.put(event(1));
  desk.wait(19ms);
  desk.outbox.put(account("anna"));
  CHECK(desk.store.batches.empty());
  desk.wait(1ms);
  REQUIRE(desk.store.batches.size() == 1);
  CHECK(desk.store.batches[0] == Changes{event(1), account("anna")});
  CHECK(desk.outbox.waiting() == 2);
  desk.store.answer(true);
  CHECK(desk.outbox.waiting() == 0);
}

TEST_CASE("what replaces something takes the place of what still waits for the same") {
  Desk desk;
  desk.outbox.put(account("anna", "1"));
  desk.outbox.put(stored_call(7));
  desk.outbox.put(GroupMemory{1, 3, {}, {}});
  desk.outbox.put(event(1));
  desk.outbox.put(GroupMemory{2, 4, {}, {}});
  desk.outbox.put(GroupMemory{1, 5, {}, {}});
  desk.outbox.put(stored_call(7, 9ms));
  desk.outbox.put(account("anna", "2"));
  desk.outbox.put(event(1));
  desk.outbox.put(account("bert"));
  desk.outbox.put(platform::AccountRemoval{"bert"});
  desk.wait(20ms);
  CHECK(desk.store.batches.at(0) ==
        Changes{account("anna", "2"), stored_call(7, 9ms), GroupMemory{1, 5, {}, {}}, event(1),
                GroupMemory{2, 4, {}, {}}, event(1), platform::AccountRemoval{"bert"}});
}

TEST_CASE("what was changed of an account is not done to the one of its name that comes later") {
  Desk desk;
  desk.outbox.put(event(1));
  desk.wait(20ms);
  desk.outbox.put(platform::AccountRights{"anna", 2, "old"});
  desk.outbox.put(platform::AccountProfile{"anna", "old"});
  desk.outbox.put(platform::AccountSeen{"anna", 5ms});
  desk.outbox.put(platform::AccountLock{"bert", true});
  desk.outbox.put(account("anna", "1"));
  desk.outbox.put(platform::AccountPassword{"anna", "old"});
  desk.outbox.put(platform::AccountLock{"anna", true});
  int told = 0;
  desk.outbox.when_written([&] { ++told; });
  desk.outbox.put(platform::AccountRemoval{"anna"});
  desk.outbox.put(account("anna", "2"));
  CHECK_FALSE(desk.outbox.holds(platform::AccountLock{"anna", true}));
  desk.outbox.put(platform::AccountPassword{"anna", "new"});
  desk.store.answer(true);
  desk.wait(0ms);
  REQUIRE(desk.store.batches.size() == 2);
  CHECK(desk.store.batches[1] == Changes{platform::AccountLock{"bert", true}, account("anna", "2"),
                                         platform::AccountPassword{"anna", "new"}});
  CHECK(told == 0);
  desk.store.answer(true);
  CHECK(told == 1);
}

TEST_CASE("what is on its way to the store isn't replaced any more") {
  Desk desk;
  desk.outbox.put(account("anna", "1"));
  desk.wait(20ms);
  desk.outbox.put(account("anna", "2"));
  desk.outbox.put(account("anna", "3"));
  desk.wait(1min);
  CHECK(desk.store.batches.size() == 1);
  desk.store.answer(true);
  desk.wait(0ms);
  REQUIRE(desk.store.batches.size() == 2);
  CHECK(desk.store.batches[1] == Changes{account("anna", "3")});
}

TEST_CASE("a batch that could not be written comes again as it was, before all others") {
  Desk desk;
  desk.outbox.put(event(1));
  desk.wait(20ms);
  desk.outbox.put(event(2));
  for (int i = 0; i < 3; ++i) {
    desk.store.answer(false);
    CHECK(desk.outbox.store_is_away());
    desk.wait(999ms);
    CHECK_FALSE(desk.store.is_asked());
    desk.wait(1ms);
  }
  CHECK(desk.logged.size() == 1);
  desk.store.answer(true);
  CHECK_FALSE(desk.outbox.store_is_away());
  CHECK(desk.logged ==
        std::vector<std::string>{"the store can't be written; what must be kept waits",
                                 "the store can be written again"});
  CHECK(desk.levels == std::vector{LogLevel::Error, LogLevel::Notice});
  desk.wait(0ms);
  desk.store.answer(true);
  REQUIRE(desk.store.batches.size() == 5);
  for (std::size_t i = 0; i < 4; ++i) CHECK(desk.store.batches[i] == Changes{event(1)});
  CHECK(desk.store.batches[4] == Changes{event(2)});
}

TEST_CASE("no batch is longer than five hundred") {
  Desk desk;
  for (int i = 0; i < 1200; ++i) desk.outbox.put(event(i));
  desk.wait(20ms);
  for (const std::size_t size : {500U, 500U, 200U}) {
    CHECK(desk.store.batches.back().size() == size);
    desk.store.answer(true);
    desk.wait(0ms);
  }
  CHECK(desk.store.batches.size() == 3);
  CHECK(desk.store.batches[2].back() == StoreChange(event(1199)));
}

TEST_CASE("a store that never answers loses the oldest events and ended calls, and nothing else") {
  Desk desk;
  desk.outbox.put(event(0));
  desk.wait(20ms);
  desk.outbox.put(account("anna"));
  desk.outbox.put(stored_call(1));
  desk.outbox.put(stored_call(2, 5ms));
  const int most = static_cast<int>(StoreOutbox::most_waiting);
  for (int i = 1; i <= most; ++i) desk.outbox.put(event(i));
  // An open call that ends is one.
  desk.outbox.put(stored_call(1, 5ms));
  CHECK(desk.outbox.lost() == 3);
  CHECK(desk.outbox.waiting() == StoreOutbox::most_waiting + 1);
  CHECK(desk.logged.size() == 1);
  std::size_t events = 0;
  std::size_t accounts = 0;
  std::size_t calls = 0;
  int last = 2;
  while (desk.outbox.waiting() != 0) {
    desk.store.answer(true);
    desk.wait(0ms);
    if (!desk.store.is_asked()) break;
    for (const StoreChange& change : desk.store.batches.back()) {
      if (std::holds_alternative<Account>(change)) ++accounts;
      if (std::holds_alternative<CallRecord>(change)) ++calls;
      const auto* const noted = std::get_if<AuditEvent>(&change);
      if (noted == nullptr) continue;
      ++events;
      CHECK(std::stoi(noted->id) == ++last);
    }
  }
  CHECK(events == static_cast<std::size_t>(most) - 2);
  CHECK(desk.store.batches.at(1).front() == StoreChange(account("anna")));
  CHECK(accounts == 1);
  CHECK(calls == 1);
}

TEST_CASE("the first record that is lost is told at once, and the others no more") {
  Desk desk;
  const int most = static_cast<int>(StoreOutbox::most_waiting);
  for (int i = 0; i < most; ++i) desk.outbox.put(event(i));
  CHECK(desk.logged.empty());
  desk.outbox.put(event(most));
  CHECK(desk.outbox.lost() == 1);
  CHECK(desk.logged ==
        std::vector<std::string>{"the store has been away for too long: records are lost"});
  for (int i = 0; i < 5; ++i) desk.outbox.put(event(most));
  CHECK(desk.outbox.lost() == 6);
  CHECK(desk.logged.size() == 1);
}

TEST_CASE("where all that waits must be kept the oldest of it goes, and the order stays") {
  Desk desk;
  const int most = static_cast<int>(StoreOutbox::most_waiting);
  for (int i = 0; i <= most; ++i) desk.outbox.put(account("user " + std::to_string(i)));
  CHECK(desk.outbox.lost() == 1);
  CHECK(desk.outbox.waiting() == StoreOutbox::most_waiting);
  desk.wait(20ms);
  REQUIRE(desk.store.batches.size() == 1);
  CHECK(desk.store.batches[0].front() == StoreChange(account("user 1")));
  CHECK(desk.store.batches[0].back() == StoreChange(account("user 500")));
}

TEST_CASE("who waits for an empty outbox is told once, at once where it is") {
  Desk desk;
  int told = 0;
  desk.outbox.when_empty([&] { ++told; });
  CHECK(told == 1);
  desk.outbox.put(event(1));
  desk.outbox.when_empty([&] { ++told; });
  desk.wait(20ms);
  desk.store.answer(false);
  desk.wait(1s);
  CHECK(told == 1);
  desk.store.answer(true);
  CHECK(told == 2);
  desk.outbox.put(event(2));
  desk.wait(20ms);
  desk.store.answer(true);
  CHECK(told == 2);
}

TEST_CASE("who waits for what was put so far is told when that is written, whatever comes behind") {
  Desk desk;
  std::vector<int> told;
  desk.outbox.when_written([&] { told.push_back(0); });
  CHECK(told.empty());
  desk.wait(0ms);
  CHECK(told == std::vector{0});
  for (int i = 0; i < 501; ++i) desk.outbox.put(event(i));
  desk.outbox.when_written([&] { told.push_back(1); });
  desk.outbox.put(event(501));
  desk.wait(20ms);
  desk.store.answer(true);
  CHECK(told.size() == 1);
  desk.wait(0ms);
  desk.store.answer(false);
  CHECK(told.size() == 1);
  desk.wait(1s);
  desk.store.answer(true);
  CHECK(told == std::vector{0, 1});
}

TEST_CASE("what a store doesn't take at once lies in the journal until it is all written") {
  platform::VirtualEventLoop loop;
  NotingStore store;
  platform::ScriptedStoreJournal journal;
  const ServerLog log = [](LogLevel, const std::string&) {};
  StoreOutbox outbox(loop, store, log, {&journal, 7});
  outbox.put(event(1));
  loop.advance(20ms);
  SUBCASE("as the store has failed") {
    CHECK(journal.content().changes.empty());
    store.answer(false);
  }
  SUBCASE("as the store has failed behind others") {
    store.answer(true);
    outbox.put(event(1));
    loop.advance(600ms);
    store.answer(false);
  }
  SUBCASE("as it says nothing") {
    loop.advance(499ms);
    CHECK(journal.content().changes.empty());
    loop.advance(1ms);
  }
  CHECK(journal.content().epoch == 7);
  CHECK(journal.content().changes == Changes{event(1)});
  outbox.put(account("anna", "1"));
  outbox.put(account("anna", "2"));
  CHECK(journal.content().changes == Changes{event(1), account("anna", "1"), account("anna", "2")});
  loop.advance(1s);
  store.answer(true);
  CHECK(journal.content().changes.size() == 3);
  loop.advance(20ms);
  store.answer(true);
  CHECK(journal.content().changes.empty());
  loop.advance(1min);
  CHECK(store.batches.back() == Changes{account("anna", "2")});
}

TEST_CASE("all is kept once it is in the store, or in a journal that has room") {
  platform::VirtualEventLoop loop;
  NotingStore store;
  platform::ScriptedStoreJournal journal;
  const ServerLog log = [](LogLevel, const std::string&) {};
  StoreOutbox outbox(loop, store, log, {&journal, 7});
  StoreOutbox without_journal(loop, store, log);
  CHECK(outbox.has_kept_all());
  outbox.put(event(1));
  CHECK_FALSE(outbox.has_kept_all());
  loop.advance(20ms);
  store.answer(false);
  CHECK(outbox.has_kept_all());
  journal.fill();
  outbox.put(event(2));
  CHECK_FALSE(outbox.has_kept_all());
  loop.advance(1s);
  store.answer(true);
  loop.advance(20ms);
  store.answer(true);
  CHECK(outbox.has_kept_all());
  without_journal.put(event(1));
  loop.advance(20ms);
  store.answer(false);
  CHECK_FALSE(without_journal.has_kept_all());
}

TEST_CASE("what waits behind what the store doesn't take lies in the journal too") {
  platform::VirtualEventLoop loop;
  NotingStore store;
  platform::ScriptedStoreJournal journal;
  const ServerLog log = [](LogLevel, const std::string&) {};
  StoreOutbox outbox(loop, store, log, {&journal, 7});
  outbox.put(event(1));
  loop.advance(20ms);
  outbox.put(event(2));
  outbox.put(account("anna"));
  loop.advance(480ms);
  CHECK(journal.content().changes.empty());
  loop.advance(20ms);
  CHECK(journal.content().changes == Changes{event(1), event(2), account("anna")});
}

TEST_CASE("what a former server has left stays in the journal until it is in the store") {
  platform::VirtualEventLoop loop;
  NotingStore store;
  platform::ScriptedStoreJournal journal;
  journal.append(6, {event(1)});
  const ServerLog log = [](LogLevel, const std::string&) {};
  StoreOutbox outbox(loop, store, log, {.journal = &journal, .epoch = 7, .holds_former = true});
  outbox.put(event(2));
  loop.advance(20ms);
  store.answer(false);
  loop.advance(1s);
  store.answer(true);
  CHECK(outbox.waiting() == 0);
  CHECK(journal.content().changes == Changes{event(1), event(2)});
  // The store is away again when the former server's are in it.
  outbox.put(event(3));
  loop.advance(20ms);
  store.answer(false);
  CHECK(journal.content().changes.back() == StoreChange{event(3)});
  journal.clear();
  outbox.former_is_kept();
  CHECK(journal.content().changes == Changes{event(3)});
  CHECK(outbox.has_kept_all());
  loop.advance(1s);
  store.answer(true);
  CHECK(journal.content().changes.empty());
}

TEST_CASE("what is written at once never comes into the journal") {
  platform::VirtualEventLoop loop;
  NotingStore store;
  platform::ScriptedStoreJournal journal;
  const ServerLog log = [](LogLevel, const std::string&) {};
  StoreOutbox outbox(loop, store, log, {&journal, 7});
  for (int i = 0; i < 10; ++i) {
    outbox.put(event(i));
    loop.advance(20ms);
    CHECK(journal.content().changes.empty());
    store.answer(true);
    loop.advance(1s);
    CHECK(journal.content().changes.empty());
  }
}

TEST_CASE("what a store tells behind the outbox's end is passed over") {
  platform::VirtualEventLoop loop;
  NotingStore store;
  const ServerLog log = [](LogLevel, const std::string&) {};
  {
    StoreOutbox outbox(loop, store, log);
    outbox.put(event(1));
    loop.advance(20ms);
    outbox.put(event(2));
  }
  store.answer(true);
  CHECK(loop.scheduled() == 0);
}

TEST_CASE("through a store that fails and stalls by chance everything comes once, in its order") {
  platform::VirtualEventLoop loop;
  platform::ScriptedStore store(loop);
  const ServerLog log = [](LogLevel, const std::string&) {};
  StoreOutbox outbox(loop, store, log);
  store.misbehave(7, 0.4, 300ms);
  constexpr int events = 2000;
  for (int i = 0; i < events; ++i) {
    outbox.put(event(i));
    outbox.put(account("anna", std::to_string(i)));
    loop.advance(platform::Milliseconds{i % 50});
  }
  store.behave();
  loop.advance(1min);
  CHECK(outbox.waiting() == 0);
  const auto& audit = store.content().audit;
  REQUIRE(audit.size() == events);
  for (int i = 0; i < events; ++i) CHECK(audit[static_cast<std::size_t>(i)].event == event(i));
  CHECK(store.content().accounts.at("anna").profile == std::to_string(events - 1));
}

}  // namespace
}  // namespace lineweir::server

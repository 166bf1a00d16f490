#include "server/retention.h"

#include <doctest/doctest.h>

#include "server/group_desk.h"

namespace lineweir::server {
namespace {

using namespace std::chrono_literals;
using platform::Moment;

// Notes when it is asked to forget, and has as much of it as the test says.
class ForgettingStore final : public platform::Store {
 public:
  explicit ForgettingStore(const platform::WallClock& clock) : clock_(clock) {}

  void load(std::function<void(std::optional<platform::StoredState>)>) override {}
  void write(std::vector<platform::StoreChange>, std::function<void(bool)>) override {}
  void calls(const platform::CallFilter&,
             std::function<void(std::optional<std::vector<platform::CallRecord>>)>) override {}
  void audit(const platform::AuditFilter&,
             std::function<void(std::optional<std::vector<platform::AuditEntry>>)>) override {}
  void caller_history(const std::string&,
                      std::function<void(std::optional<platform::CallerHistory>)>) override {}
  void forget(Moment before, Forgetting, std::size_t limit,
              std::function<void(std::optional<std::size_t>)> done) override {
    asked.push_back(clock_.local(clock_.now()));
    befores.push_back(before);
    if (is_away) return done(std::nullopt);
    const std::size_t now = std::min(limit, old_calls);
    old_calls -= now;
    done(now);
  }
  void verify_audit(std::function<void(std::optional<platform::AuditVerdict>)>) override {}
  void backup(const std::string&, std::function<void(std::string)>) override {}
  void restore(const std::string&, std::function<void(std::string)>) override {}
  std::size_t waiting() const override { return 0; }

  std::vector<platform::DateTime> asked;
  std::vector<Moment> befores;
  std::size_t old_calls = 0;
  bool is_away = false;

 private:
  const platform::WallClock& clock_;
};

// A server that has begun at ten in the morning, and keeps who called for a day.
struct RetentionDesk : PartsDesk {
  RetentionDesk() { begin(); }

  void begin() {
    retention = std::make_unique<Retention>(context, old_store);
    retention->set({.days = 1});
    retention->start();
  }
  std::vector<std::string> details() {
    loop.advance(1s);
    std::vector<std::string> found;
    for (const auto& entry : store.content().audit) {
      found.push_back(entry.event.action + ": " + entry.event.detail);
    }
    return found;
  }

  ForgettingStore old_store{clock};
  std::unique_ptr<Retention> retention;
};

}  // namespace

TEST_SUITE("server/retention") {
  TEST_CASE("what is too old is asked for soon behind the start and once a night at four") {
    RetentionDesk desk;
    desk.loop.advance(10min - 1ms);
    CHECK(desk.old_store.asked.empty());
    desk.loop.advance(1ms);
    REQUIRE(desk.old_store.asked.size() == 1);
    CHECK(desk.old_store.befores[0] == desk.clock.now() - 24h);
    desk.loop.advance(72h);
    const auto& asked = desk.old_store.asked;
    REQUIRE(asked.size() == 4);
    for (std::size_t night = 1; night < 4; ++night) {
      CHECK(asked[night].hour == 4);
      CHECK(asked[night].minute < 5);
      CHECK(asked[night].day == asked[0].day + static_cast<int>(night));
    }
  }

  TEST_CASE("a start in the hour of the night, or behind it, is that night's turn") {
    for (const int hour : {4, 23}) {
      RetentionDesk desk;
      desk.retention.reset();
      while (desk.clock.local(desk.clock.now()).hour != hour) desk.loop.advance(10min);
      desk.begin();
      desk.loop.advance(50min);
      CHECK(desk.old_store.asked.size() == 1);
    }
  }

  TEST_CASE("many old calls go in pieces, others come in between, and are told as one") {
    RetentionDesk desk;
    desk.old_store.old_calls = 1100;
    desk.loop.advance(10min);
    CHECK(desk.old_store.asked.size() == 1);
    desk.loop.advance(49ms);
    CHECK(desk.old_store.asked.size() == 1);
    desk.loop.advance(1ms);
    CHECK(desk.old_store.asked.size() == 2);
    desk.loop.advance(1s);
    CHECK(desk.old_store.asked.size() == 3);
    // All of them before the same moment.
    CHECK(desk.old_store.befores[2] == desk.old_store.befores[0]);
    CHECK(desk.details() ==
          std::vector<std::string>{
              "callers forgotten: 1100 calls that ended before 2026-01-04 10:10"});
    desk.loop.advance(24h);
    CHECK(desk.details().size() == 1);
    desk.old_store.old_calls = 1;
    desk.loop.advance(24h);
    REQUIRE(desk.details().size() == 2);
    CHECK(desk.details()[1].starts_with("callers forgotten: 1 call that ended before "));
  }

  TEST_CASE("a store that is away is asked again each five minutes, and what had gone is told") {
    RetentionDesk desk;
    desk.old_store.is_away = true;
    desk.loop.advance(10min);
    CHECK(desk.old_store.asked.size() == 1);
    desk.loop.advance(5min - 1ms);
    CHECK(desk.old_store.asked.size() == 1);
    desk.loop.advance(1ms);
    CHECK(desk.old_store.asked.size() == 2);
    CHECK(desk.details().empty());
    desk.old_store.is_away = false;
    desk.old_store.old_calls = 2;
    desk.loop.advance(5min);
    CHECK(desk.old_store.asked.size() == 3);
    CHECK(desk.details().size() == 1);
    desk.old_store.old_calls = 700;
    while (desk.old_store.asked.size() == 3) desk.loop.advance(10ms);
    desk.old_store.is_away = true;
    desk.loop.advance(1s);
    REQUIRE(desk.details().size() == 2);
    CHECK(desk.details()[1].starts_with("callers forgotten: 500 calls that ended before "));
  }

  TEST_CASE("who keeps everything asks for nothing, and who ends asks no more") {
    RetentionDesk desk;
    desk.retention->set({.days = 0});
    desk.loop.advance(72h);
    CHECK(desk.old_store.asked.empty());
    desk.retention->set({.days = 2});
    desk.old_store.old_calls = 10'000;
    while (desk.old_store.asked.empty()) desk.loop.advance(10ms);
    CHECK(desk.old_store.befores[0] == desk.clock.now() - 48h);
    desk.retention.reset();
    desk.loop.advance(72h);
    CHECK(desk.old_store.asked.size() == 1);
  }
}

}  // namespace lineweir::server

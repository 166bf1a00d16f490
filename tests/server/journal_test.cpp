#include <doctest/doctest.h>

#include <algorithm>

#include "server/server_room.h"
#include "server/still_true.h"

namespace lineweir::server {
namespace {

using namespace std::chrono_literals;
using platform::AuditEvent;
using platform::CallRecord;
using platform::Moment;
using platform::StoreChange;
using platform::StoreJournal;
using Changes = std::vector<StoreChange>;

CallRecord call(std::int64_t id, Moment ended) {
  CallRecord record;
  record.id = id;
  record.ended = ended;
  return record;
}

}  // namespace

TEST_SUITE("server/journal") {
  TEST_CASE("what a server had not written when it died is written by the next one") {
    ServerRoom room;
    room.start();
    const auto host = room.seat("host");
    room.store.stall(true);
    room.exchange().arrive(3, "555 0100");
    room.wait(5s);
    room.exchange().leave(3);
    room.wait(5s);
    REQUIRE(room.store.content().calls.empty());
    room.crash();
    room.store.forget_what_waits();
    room.wait(1s);

    SUBCASE("once the store is back") {
      room.start();
      room.wait(10s);
      CHECK(room.store.content().calls.empty());
      room.store.stall(false);
      room.wait(10s);
    }
    SUBCASE("again and again until it takes it") {
      room.store.stall(false);
      room.store.fail(true);
      room.start();
      room.wait(10s);
      CHECK(room.store.content().calls.empty());
      room.store.fail(false);
      room.wait(10s);
    }
    REQUIRE(room.store.content().calls.size() == 1);
    CHECK(room.store.content().calls.begin()->second.number == "555 0100");
    CHECK(room.store.content().calls.begin()->second.ended != Moment{0});
    CHECK(room.journal.content().changes.empty());
    CHECK(room.seat("host")->is_open());
  }

  TEST_CASE("a server that ends before the store takes what the last one left loses none of it") {
    ServerRoom room;
    room.exchange().arrive(3, "555 0100");
    room.store.stall(true);
    room.wait(5s);
    room.exchange().leave(3);
    room.wait(5s);
    room.crash();
    room.store.forget_what_waits();
    room.store.stall(false);
    room.store.fail(true);
    room.start();
    room.wait(1s);
    bool done = false;
    room.server->shut_down(0, "Now.", [&] { done = true; });
    // The end itself is written before the journal is tried again.
    room.wait(500ms);
    room.store.fail(false);
    while (!done) room.wait(10ms);
    room.crash();
    room.start();
    room.wait(10s);
    REQUIRE(room.store.content().calls.size() == 1);
    CHECK(room.store.content().calls.begin()->second.number == "555 0100");
    CHECK(room.journal.content().changes.empty());
  }

  TEST_CASE("a server whose journal holds nothing that still counts serves all the same") {
    ServerRoom room;
    room.wait(1s);
    room.crash();
    platform::Account changed = room.store.content().accounts.at("host");
    changed.profile = "old";
    room.journal.content() = {1, {changed}};
    room.epoch = 3;
    room.start();
    CHECK(room.seat("host")->is_open());
    CHECK(room.store.content().accounts.at("host").profile.empty());
    CHECK(room.journal.content().changes.empty());
  }

  TEST_CASE("behind the lead of others a journal gives what they can't know, and no more") {
    ServerRoom room;
    room.wait(1s);
    room.crash();
    CallRecord lost = call(7001, room.clock.now());
    lost.number = "5550107";
    CallRecord theirs = call(7002, room.clock.now());
    theirs.number = "5550108";
    CallRecord went_on = call(7003, room.clock.now());
    CallRecord closed = call(7004, room.clock.now());
    for (CallRecord* one : {&lost, &theirs, &went_on, &closed}) {
      one->group = 1;
      one->line = static_cast<int>(one->id - 7000);
      one->began = room.clock.now() - 1s;
      one->steps = {{one->began, "", "ring"}, {one->ended, "", "hang up"}};
    }
    // Others have told more of one, go on with another, and only found that the last one was over.
    CallRecord stored = theirs;
    stored.number = "5550199";
    room.store.content().apply(stored);
    CallRecord open = went_on;
    open.ended = Moment{0};
    open.steps = {{open.began, "", "ring"}};
    room.store.content().apply(open);
    CallRecord shut = closed;
    shut.steps = {{shut.began, "", "ring"},
                  {room.clock.now(), "", "ended while the server was away"}};
    room.store.content().apply(shut);
    platform::Account changed = room.store.content().accounts.at("host");
    changed.profile = "old";
    const AuditEvent event{"of the journal", room.clock.now(), "host", "on air", {}};
    room.journal.content() = {1, {changed, lost, theirs, went_on, closed, event}};
    room.epoch = 3;

    SUBCASE("at once") { room.start(); }
    SUBCASE("once the store can be read") {
      room.store.fail(true);
      room.start();
      room.wait(5s);
      room.store.fail(false);
      room.wait(2100ms);
    }
    SUBCASE("once all of the store can be read") {
      room.store.take(1s);
      room.start();
      // What stands was read, and the calls that have ended are not.
      room.wait(1500ms);
      room.store.fail(true);
      room.wait(1s);
      room.store.take(0s);
      room.store.fail(false);
      room.wait(2100ms);
    }
    room.wait(1s);
    const auto& content = room.store.content();
    CHECK(content.accounts.at("host").profile.empty());
    REQUIRE(content.calls.contains(7001));
    CHECK(content.calls.at(7001).number == "5550107");
    CHECK(content.calls.at(7002).number == "5550199");
    CHECK(content.calls.at(7003).steps.back().action != "hang up");
    CHECK(content.calls.at(7004).steps.back().action == "hang up");
    CHECK(std::ranges::count(content.audit, event, &platform::AuditEntry::event) == 1);
    CHECK(room.journal.content().changes.empty());
    CHECK(std::ranges::count(room.log,
                             "the journal holds 3 records that the store has not taken yet") == 1);
  }

  TEST_CASE("a journal of which nothing is true any more is emptied") {
    ServerRoom room;
    room.crash();
    platform::Account changed = room.store.content().accounts.at("host");
    changed.profile = "old";
    room.journal.content() = {1, {changed}};
    room.epoch = 3;
    room.start();
    CHECK(room.journal.content().changes.empty());
    CHECK(room.store.content().accounts.at("host").profile.empty());
    CHECK(room.connect()->is_open());
  }

  TEST_CASE("a journal of the lead before is written as it stands") {
    for (const platform::Epoch epoch : {1, 2}) {
      ServerRoom room;
      room.crash();
      platform::Account changed = room.store.content().accounts.at("host");
      changed.profile = "mine";
      room.journal.content() = {1, {changed}};
      room.epoch = epoch;
      room.start();
      CHECK(room.store.content().accounts.at("host").profile == "mine");
    }
  }

  TEST_CASE("a server that dies while its journal is looked at leaves it as it is") {
    ServerRoom room;
    room.crash();
    const AuditEvent event{"of the journal", room.clock.now(), "host", "on air", {}};
    for (const platform::Epoch epoch : {2, 9}) {
      room.journal.content() = {1, {event, call(7001, room.clock.now())}};
      room.epoch = epoch;
      room.store.take(1s);
      room.start();
      room.wait(500ms);
      room.crash();
      room.wait(10s);
      CHECK(room.journal.content().changes.size() == 2);
    }
    room.store.fail(true);
    room.start();
    room.crash();
    room.wait(10s);
    CHECK(room.journal.content().changes.size() == 2);
  }

  TEST_CASE("where others have led since, only what was over is still true") {
    const AuditEvent event{"a", Moment{5}, "host", "on air", {}};
    platform::Account account;
    account.name = "host";
    const StoreJournal::Left left{4,
                                  {account, platform::AccountRemoval{"amy"}, call(1, Moment{0}),
                                   call(2, Moment{9}), platform::GroupMemory{}, event}};
    CHECK(still_true(left, 4) == left.changes);
    CHECK(still_true(left, 5) == left.changes);
    CHECK(still_true(left, 6) == Changes{call(2, Moment{9}), event});
    CHECK(still_true({}, 9).empty());
  }
}

}  // namespace lineweir::server

#include <doctest/doctest.h>

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
    CHECK(room.seat("host") != nullptr);
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

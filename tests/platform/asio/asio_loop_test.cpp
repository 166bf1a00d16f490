#include <doctest/doctest.h>

#include <algorithm>
#include <memory>
#include <thread>
#include <vector>

#include "platform/asio/asio_loop.h"
#include "platform/processor_time.h"
#include "platform/waiting.h"

using namespace lineweir;
using namespace lineweir::platform;
using namespace std::chrono_literals;

namespace {

struct AsioLoopFixture {
  AsioLoop loop;
  std::vector<int> order;

  std::function<void()> note(int number) {
    return [this, number] { order.push_back(number); };
  }
  bool wait_for_calls(std::size_t count) {
    return wait_until(loop, [&] { return order.size() >= count; });
  }
};

}  // namespace

TEST_CASE_FIXTURE(AsioLoopFixture, "Calls run by their moment, and of one moment as scheduled") {
  // In one go, so that equal delays mean equal moments or at least moments in this order.
  for (int i = 0; i < 50; ++i) loop.schedule(200ms, note(100 + i));
  loop.schedule(50ms, note(1));
  loop.schedule(0ms, note(0));
  loop.schedule(100ms, note(2));
  CHECK(order.empty());
  REQUIRE(wait_for_calls(53));
  std::vector<int> expected{0, 1, 2};
  for (int i = 0; i < 50; ++i) expected.push_back(100 + i);
  CHECK(order == expected);
}

TEST_CASE_FIXTURE(AsioLoopFixture, "No call runs before its moment") {
  std::vector<Milliseconds> early;
  for (int i = 0; i < 60; ++i) {
    const Milliseconds due = loop.now() + Milliseconds{i};
    loop.schedule(Milliseconds{i}, [&, due] {
      if (loop.now() < due) early.push_back(due - loop.now());
      order.push_back(0);
    });
  }
  REQUIRE(wait_for_calls(60));
  CHECK(early.empty());
}

TEST_CASE_FIXTURE(AsioLoopFixture, "A negative delay is none, and an endless one never comes") {
  loop.schedule(Milliseconds::max(), note(2));
  loop.schedule(-5ms, note(1));
  loop.run_pending();
  CHECK(order == std::vector<int>{1});
}

TEST_CASE_FIXTURE(AsioLoopFixture, "A cancelled call doesn't run, and may be cancelled again") {
  const auto kept = loop.schedule(0ms, note(1));
  const auto dropped = loop.schedule(0ms, note(2));
  EventLoop::CallId dropped_later = 0;
  loop.schedule(0ms, [&] { loop.cancel(dropped_later); });
  dropped_later = loop.schedule(0ms, note(3));
  loop.cancel(dropped);
  loop.cancel(dropped);
  loop.schedule(1ms, note(4));
  REQUIRE(wait_for_calls(2));
  loop.cancel(kept);
  loop.cancel(987654321);
  CHECK(order == std::vector<int>{1, 4});
}

TEST_CASE_FIXTURE(AsioLoopFixture,
                  "run_pending doesn't wait, nor follow a call that posts itself") {
  loop.run_pending();
  std::function<void()> again = [&] {
    order.push_back(1);
    loop.schedule(0ms, again);
  };
  loop.schedule(0ms, again);
  loop.schedule(1h, note(2));
  for (int i = 0; i < 100; ++i) loop.run_pending();
  CHECK(order.size() == 100);
}

TEST_CASE_FIXTURE(AsioLoopFixture, "A call that schedules itself lets what is posted run") {
  std::function<void()> again = [&] { loop.schedule(0ms, again); };
  again();
  loop.post(note(1));
  CHECK(wait_for_calls(1));
}

TEST_CASE_FIXTURE(AsioLoopFixture, "Posted calls that post themselves let what is due run") {
  std::function<void()> again = [&] { loop.post(again); };
  again();
  loop.schedule(1ms, note(1));
  CHECK(wait_for_calls(1));
}

TEST_CASE_FIXTURE(AsioLoopFixture, "yield comes back after a bounded time when nothing comes") {
  const auto begin = loop.now();
  loop.yield();
  CHECK(loop.now() - begin >= AsioLoop::longest_wait);
}

TEST_CASE_FIXTURE(AsioLoopFixture, "What other threads post runs on the loop in their order") {
  const auto here = std::this_thread::get_id();
  std::thread other([&] {
    for (int i = 0; i < 1000; ++i) {
      loop.post([&, i] {
        CHECK(std::this_thread::get_id() == here);
        order.push_back(i);
      });
    }
  });
  CHECK(wait_for_calls(1000));
  other.join();
  CHECK(std::ranges::is_sorted(order));
}

TEST_CASE_FIXTURE(AsioLoopFixture, "A post wakes a loop that waits for something far away") {
  loop.schedule(1h, note(2));
  std::thread other([&] { loop.post([&] { loop.stop(); }); });
  loop.run();
  other.join();
  CHECK(order.empty());
}

TEST_CASE_FIXTURE(AsioLoopFixture, "A call that waits lets the others run") {
  bool answered = false;
  loop.schedule(0ms, [&] {
    order.push_back(1);
    CHECK(wait_until(loop, [&] { return answered; }));
    order.push_back(4);
  });
  loop.schedule(0ms, note(2));
  loop.schedule(20ms, [&] {
    order.push_back(3);
    loop.post([&] { answered = true; });
  });
  REQUIRE(wait_for_calls(4));
  CHECK(order == std::vector<int>{1, 2, 3, 4});
}

TEST_CASE_FIXTURE(AsioLoopFixture, "What a cancelled call holds may cancel calls as it goes") {
  struct Canceller {
    AsioLoop& loop;
    EventLoop::CallId other;
    ~Canceller() { loop.cancel(other); }
  };
  const auto second = loop.schedule(1ms, note(1));
  const auto first =
      loop.schedule(0ms, [held = std::make_shared<Canceller>(loop, second)] { CHECK(held); });
  loop.cancel(first);
  loop.schedule(5ms, note(2));
  REQUIRE(wait_for_calls(1));
  CHECK(order == std::vector<int>{2});
}

TEST_CASE_FIXTURE(AsioLoopFixture, "Waiting uses no processor") {
  std::function<void()> tick = [&] { loop.schedule(100ms, tick); };
  tick();
  const auto before = processor_time();
  run_for(loop, 1s);
  CHECK(processor_time() - before < 20ms);
}

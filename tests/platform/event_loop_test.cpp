#include <doctest/doctest.h>

#include <QCoreApplication>
#include <QEventLoop>
#include <vector>

#include "platform/qt/qt_event_loop.h"
#include "processor_time.h"
#include "waiting.h"

using namespace lineweir;
using namespace lineweir::platform;
using namespace std::chrono_literals;

namespace {

struct LoopFixture {
  QtEventLoop loop;
  std::vector<int> order;

  std::function<void()> note(int number) {
    return [this, number] { order.push_back(number); };
  }
  bool wait_for_calls(std::size_t count) {
    return wait_until(loop, [&] { return order.size() >= count; });
  }
};

}  // namespace

TEST_CASE_FIXTURE(LoopFixture, "Calls run by their moment, and of one moment as scheduled") {
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

TEST_CASE_FIXTURE(LoopFixture, "No call runs before its moment") {
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

TEST_CASE_FIXTURE(LoopFixture, "A negative delay is none") {
  loop.schedule(-5ms, note(1));
  loop.run_pending();
  CHECK(order == std::vector<int>{1});
}

TEST_CASE_FIXTURE(LoopFixture, "A cancelled call doesn't run, and may be cancelled again") {
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

TEST_CASE_FIXTURE(LoopFixture, "run_pending doesn't wait, nor follow a call that posts itself") {
  loop.run_pending();
  std::function<void()> again = [&] {
    order.push_back(1);
    loop.schedule(0ms, again);
  };
  loop.schedule(0ms, again);
  loop.schedule(1h, note(2));
  const auto begin = loop.now();
  for (int i = 0; i < 100; ++i) loop.run_pending();
  CHECK(loop.now() - begin < 1s);
  CHECK(order.size() >= 100);
  CHECK(order.size() <= 300);
}

TEST_CASE_FIXTURE(LoopFixture, "yield comes back after a bounded time when nothing comes") {
  loop.run_pending();
  const auto begin = loop.now();
  loop.yield();
  CHECK(loop.now() - begin < QtEventLoop::longest_wait + 1s);
}

TEST_CASE_FIXTURE(LoopFixture, "yield does what was posted and doesn't wait behind it") {
  QObject receiver;
  loop.schedule(0ms, note(1));
  loop.yield();
  CHECK(order == std::vector<int>{1});
  QMetaObject::invokeMethod(&receiver, note(2), Qt::QueuedConnection);
  const auto begin = loop.now();
  loop.yield();
  CHECK(order == std::vector<int>{1, 2});
  CHECK(loop.now() - begin < QtEventLoop::longest_wait);
}

TEST_CASE_FIXTURE(LoopFixture, "A call that waits lets the others run") {
  bool answered = false;
  loop.schedule(0ms, [&] {
    order.push_back(1);
    CHECK(wait_until(loop, [&] { return answered; }));
    order.push_back(4);
  });
  loop.schedule(0ms, note(2));
  loop.schedule(20ms, [&] {
    order.push_back(3);
    answered = true;
  });
  REQUIRE(wait_for_calls(4));
  CHECK(order == std::vector<int>{1, 2, 3, 4});
}

TEST_CASE_FIXTURE(LoopFixture, "Calls run on in another loop of Qt that a call has begun") {
  loop.schedule(0ms, [&] {
    order.push_back(1);
    QEventLoop dialog;
    loop.schedule(10ms, [&] {
      order.push_back(3);
      dialog.quit();
    });
    dialog.exec();
    order.push_back(4);
  });
  loop.schedule(0ms, note(2));
  REQUIRE(wait_for_calls(4));
  CHECK(order == std::vector<int>{1, 2, 3, 4});
}

TEST_CASE_FIXTURE(LoopFixture, "Waits within waits end at a depth, and all calls run in the end") {
  constexpr int calls = 500;
  int depth = 0;
  int deepest = 0;
  bool released = false;
  for (int i = 0; i < calls; ++i) {
    loop.schedule(0ms, [&] {
      deepest = std::max(deepest, ++depth);
      for (int round = 0; round < 3 && !released; ++round) loop.yield();
      released = true;
      --depth;
      order.push_back(0);
    });
  }
  REQUIRE(wait_for_calls(calls));
  CHECK(deepest > 1);
  CHECK(deepest <= QtEventLoop::deepest_nesting);
}

TEST_CASE_FIXTURE(LoopFixture, "Waiting uses no processor") {
  // A timer of the console's usual kind goes on meanwhile.
  std::function<void()> tick = [&] { loop.schedule(100ms, tick); };
  tick();
  const auto before = processor_time();
  run_for(loop, 1s);
  CHECK(processor_time() - before < 20ms);
}

TEST_CASE_FIXTURE(LoopFixture, "Waiting at the deepest level uses no processor either") {
  std::chrono::microseconds used{};
  int levels = 0;
  std::function<void()> descend = [&] {
    bool went_deeper = false;
    ++levels;
    const auto deeper = loop.schedule(0ms, [&] {
      went_deeper = true;
      descend();
    });
    loop.run_pending();
    if (went_deeper) return;
    const auto before = processor_time();
    run_for(loop, 500ms);
    used = processor_time() - before;
    loop.cancel(deeper);
  };
  descend();
  CHECK(levels > 10);
  CHECK(levels <= QtEventLoop::deepest_nesting);
  CHECK(used > 0ms);
  CHECK(used < 20ms);

  loop.schedule(0ms, note(1));
  loop.run_pending();
  CHECK(order == std::vector<int>{1});
}

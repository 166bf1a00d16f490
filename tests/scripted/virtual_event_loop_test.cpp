#include "platform/scripted/virtual_event_loop.h"

#include <doctest/doctest.h>

#include <string>

#include "base/failure.h"

namespace lineweir::platform {
namespace {

struct LoopFixture {
  VirtualEventLoop loop;
  std::string ran;

  std::function<void()> note(char name) {
    return [this, name] { ran += name; };
  }
  void after(int milliseconds, std::function<void()> call) {
    loop.schedule(Milliseconds(milliseconds), std::move(call));
  }
};

TEST_CASE_FIXTURE(LoopFixture, "Time stands still until it is moved") {
  after(1, note('a'));
  loop.run_pending();
  CHECK(ran.empty());
  CHECK(loop.now() == Milliseconds(0));
}

TEST_CASE_FIXTURE(LoopFixture, "What falls due runs by its time, and at one time as scheduled") {
  after(20, note('c'));
  after(10, note('a'));
  after(10, note('b'));
  loop.advance(Milliseconds(15));
  CHECK(ran == "ab");
  CHECK(loop.now() == Milliseconds(15));
  loop.advance(Milliseconds(5));
  CHECK(ran == "abc");
}

TEST_CASE_FIXTURE(LoopFixture, "A call sees the time at which it is due") {
  after(10, [this] { CHECK(loop.now() == Milliseconds(10)); });
  loop.advance(Milliseconds(100));
  CHECK(loop.now() == Milliseconds(100));
}

TEST_CASE_FIXTURE(LoopFixture, "What calls schedule within the span runs in it") {
  after(10, [this] { after(10, note('b')); });
  loop.advance(Milliseconds(20));
  CHECK(ran == "b");
}

TEST_CASE_FIXTURE(LoopFixture, "A cancelled call doesn't run, and may be cancelled again") {
  const auto id = loop.schedule(Milliseconds(0), note('a'));
  loop.cancel(id);
  loop.cancel(id);
  loop.run_pending();
  CHECK(ran.empty());
  CHECK(loop.scheduled() == 0);
}

TEST_CASE_FIXTURE(LoopFixture, "A call that has run may be cancelled") {
  const auto id = loop.schedule(Milliseconds(0), note('a'));
  loop.run_pending();
  loop.cancel(id);
  CHECK(ran == "a");
}

TEST_CASE_FIXTURE(LoopFixture, "run_pending doesn't follow a call that posts itself") {
  std::function<void()> again = [&] {
    ran += 'a';
    after(0, again);
  };
  after(0, again);
  loop.run_pending();
  CHECK(ran == "a");
}

TEST_CASE_FIXTURE(LoopFixture, "A negative delay is none") {
  after(-5, note('a'));
  loop.run_pending();
  CHECK(ran == "a");
}

TEST_CASE_FIXTURE(LoopFixture, "yield moves on to the next thing due and runs it") {
  after(0, note('a'));
  after(40, note('b'));
  after(41, note('c'));
  loop.yield();
  CHECK(ran == "ab");
  CHECK(loop.now() == Milliseconds(40));
}

TEST_CASE_FIXTURE(LoopFixture, "yield takes a millisecond when nothing is due") {
  loop.yield();
  CHECK(loop.now() == Milliseconds(1));
}

TEST_CASE_FIXTURE(LoopFixture, "A handler that waits sees others run, and the time pass") {
  bool answered = false;
  after(100, [&] {
    ran += '(';
    while (!answered) loop.yield();
    CHECK(loop.now() == Milliseconds(130));
    ran += ')';
  });
  after(110, note('x'));
  after(130, [&] { answered = true; });
  after(140, note('y'));
  loop.advance(Milliseconds(100));
  CHECK(ran == "(x)");
  // The wait went beyond the end.
  CHECK(loop.now() == Milliseconds(130));
  loop.advance(Milliseconds(10));
  CHECK(ran == "(x)y");
}

TEST_CASE_FIXTURE(LoopFixture, "Waits nest") {
  bool inner_done = false;
  bool outer_done = false;
  after(0, [&] {
    while (!outer_done) loop.yield();
    ran += 'o';
  });
  after(5, [&] {
    while (!inner_done) loop.yield();
    ran += 'i';
    outer_done = true;
  });
  after(9, [&] { inner_done = true; });
  loop.run_pending();
  CHECK(ran == "io");
  CHECK(loop.now() == Milliseconds(9));
}

TEST_CASE_FIXTURE(LoopFixture, "A wait without an end is a failure, and the next wait is not") {
  const auto wait_for = [this](Milliseconds span) {
    const Milliseconds end = loop.now() + span;
    while (loop.now() < end) loop.yield();
  };
  CHECK_THROWS_AS(loop.run([&] { wait_for(VirtualEventLoop::longest_wait * 2); }), Failure);
  loop.run([&] { wait_for(Milliseconds(3000)); });
}

TEST_CASE_FIXTURE(LoopFixture, "A wait that each arrival deepens ends") {
  int depth = 0;
  std::function<void()> wait = [&] {
    if (++depth > 1000) return;
    after(1, wait);
    for (int pass = 0; pass < 3; ++pass) loop.yield();
  };
  after(0, wait);
  loop.advance(Milliseconds(10000));
  CHECK(depth > 1000);
}

TEST_CASE_FIXTURE(LoopFixture, "A call that fails is told, and the loop goes on") {
  after(1, [] { throw Failure(1, "no"); });
  after(2, note('a'));
  CHECK_THROWS_AS(loop.advance(Milliseconds(5)), Failure);
  loop.advance(Milliseconds(5));
  CHECK(ran == "a");
}

TEST_CASE_FIXTURE(LoopFixture, "after_each runs behind each outermost call") {
  after(1, [this] {
    after(0, note('b'));
    loop.yield();
    ran += 'a';
  });
  after(2, note('c'));
  loop.advance(Milliseconds(10), note('.'));
  CHECK(ran == "bca.");
}

}  // namespace
}  // namespace lineweir::platform

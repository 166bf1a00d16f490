#include <doctest/doctest.h>
#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <utility>

#include "platform/asio/asio_descriptor_watch.h"
#include "platform/waiting.h"

using namespace lineweir;
using namespace lineweir::platform;

namespace {

struct WatchedPipe {
  WatchedPipe() { REQUIRE(::pipe2(ends.data(), O_NONBLOCK) == 0); }
  ~WatchedPipe() {
    ::close(ends[0]);
    if (ends[1] >= 0) ::close(ends[1]);
  }
  void write() { REQUIRE(::write(ends[1], "a", 1) == 1); }
  std::function<void()> count() {
    return [this] { ++times; };
  }

  std::array<int, 2> ends{};
  AsioLoop loop;
  AsioDescriptorWatch watch{loop};
  int times = 0;
};

}  // namespace

TEST_SUITE("a watched descriptor") {
  TEST_CASE_FIXTURE(WatchedPipe, "it is told once a wait, for what comes and for what was there") {
    watch.wait(ends[0], false, count());
    run_for(loop, Milliseconds{20});
    CHECK(times == 0);
    write();
    CHECK(wait_until(loop, [&] { return times == 1; }));
    write();
    run_for(loop, Milliseconds{20});
    CHECK(times == 1);
    watch.wait(ends[0], false, count());
    CHECK(wait_until(loop, [&] { return times == 2; }));
  }

  TEST_CASE_FIXTURE(WatchedPipe, "the room to write is told where it is asked for") {
    watch.wait(ends[1], false, count());
    run_for(loop, Milliseconds{20});
    CHECK(times == 0);
    watch.wait(ends[1], true, count());
    CHECK(wait_until(loop, [&] { return times == 1; }));
    run_for(loop, Milliseconds{20});
    CHECK(times == 1);
  }

  TEST_CASE_FIXTURE(WatchedPipe, "an end that has gone is told") {
    watch.wait(ends[0], false, count());
    ::close(std::exchange(ends[1], -1));
    CHECK(wait_until(loop, [&] { return times == 1; }));
  }

  TEST_CASE_FIXTURE(WatchedPipe, "a wait that is replaced or stopped tells nothing") {
    int first = 0;
    watch.wait(ends[0], false, [&] { ++first; });
    watch.wait(ends[0], false, count());
    write();
    CHECK(wait_until(loop, [&] { return times == 1; }));
    CHECK(first == 0);
    watch.wait(ends[0], false, count());
    watch.stop();
    run_for(loop, Milliseconds{20});
    CHECK(times == 1);
    const WatchedPipe another;
    watch.wait(another.ends[0], false, count());
    run_for(loop, Milliseconds{20});
    CHECK(times == 1);
  }

  TEST_CASE_FIXTURE(WatchedPipe, "the wait may be renewed from within, and end with its owner") {
    std::function<void()> renew = [&] {
      if (++times < 100) watch.wait(ends[0], times % 2 == 0, renew);
    };
    watch.wait(ends[0], false, renew);
    write();
    CHECK(wait_until(loop, [&] { return times == 100; }));
    {
      AsioDescriptorWatch gone(loop);
      gone.wait(ends[0], false, count());
    }
    run_for(loop, Milliseconds{20});
    CHECK(times == 100);
  }
}

#include <doctest/doctest.h>

#include <chrono>
#include <random>
#include <thread>

#include "other_process.h"
#include "store_desk.h"

using namespace lineweir;
using namespace lineweir::platform;

namespace {

// Writes a call and an event at a time and tells the number of each that it was told of, until
// somebody kills it.
void write_for_ever(const std::filesystem::path& file, int first,
                    const lineweir::test::OtherProcess::Tell& tell) {
  PumpedPoster poster;
  SqliteStore store(file, poster);
  constexpr int at_once = 8;
  int next = first;
  int waiting = 0;
  for (;;) {
    while (waiting < at_once) {
      ++waiting;
      store.write({full_call(next), event(next)}, [&, number = next](bool written) {
        --waiting;
        if (written) tell(number);
      });
      ++next;
    }
    if (!poster.run_until([&] { return waiting < at_once; })) return;
  }
}

}  // namespace

TEST_CASE("What was told to be written is there after the writer was killed at any moment") {
  constexpr int rounds = 40;
  SqliteDesk desk;
  REQUIRE(desk.load());
  std::mt19937 engine(1);
  int first = 1;
  for (int round = 0; round < rounds; ++round) {
    desk.end();
    lineweir::test::OtherProcess writer(
        [&](const auto& tell, const auto&) { write_for_ever(desk.path(), first, tell); });
    int last = 0;
    const int acknowledged = std::uniform_int_distribution<int>(0, 60)(engine);
    for (int i = 0; i < acknowledged; ++i) last = writer.next();
    writer.kill();
    // What it had told before the kill came.
    for (int number = writer.next(); number > 0; number = writer.next()) last = number;
    writer.wait();

    desk.begin_again();
    const auto calls = desk.calls();
    REQUIRE(calls);
    const auto verdict = desk.verify();
    REQUIRE(verdict);
    CAPTURE(round);
    CHECK(verdict->first_wrong == 0);
    // Each call has its event, and none that was told is missing.
    CHECK(static_cast<std::size_t>(verdict->entries) == calls->size());
    REQUIRE(static_cast<int>(calls->size()) >= last);
    for (std::size_t i = 0; i < calls->size(); ++i) {
      CHECK((*calls)[i] == full_call(static_cast<std::int64_t>(i) + 1));
    }
    first = static_cast<int>(calls->size()) + 1;
  }
  CHECK(first > rounds);
}

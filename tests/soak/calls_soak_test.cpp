#define DOCTEST_CONFIG_IMPLEMENT_WITH_MAIN
#include <doctest/doctest.h>
#include <malloc.h>

#include <string>

#include "soak/crew.h"

namespace lineweir::test {
namespace {

using namespace std::chrono_literals;

// Callers who ring often and lose their patience soon.
studio::BoxedExchangeOptions busy_lines() {
  studio::BoxedExchangeOptions options;
  options.seed = 11;
  options.callers = {200ms, 3000ms, 4000ms};
  return options;
}

TEST_CASE("a hundred thousand calls: each that was noted is logged once, and memory stays") {
  constexpr std::size_t callers = 100'000;
  StudioDesk desk(busy_lines());
  Crew crew(desk);
  std::size_t memory_at_first = 0;
  while (crew.noted_callers() < callers) {
    desk.pass(100ms);
    crew.work();
    if (crew.noted_callers() == callers / 10) memory_at_first = mallinfo2().uordblks;
  }
  const std::size_t memory_at_last = mallinfo2().uordblks;
  CHECK(desk.console.decoder.serial_buffer.text().size() < 10);

  // The list of noted callers is the test's own.
  constexpr std::size_t allowance = 2 * callers + 64 * 1024;
  CHECK(memory_at_last < memory_at_first + allowance);

  for (int i = 0; i < 100; ++i) {
    crew.drop_all();
    desk.pass(100ms);
  }
  crew.take_log();
  CHECK(crew.logged_otherwise_than_once() == 0);
}

}  // namespace
}  // namespace lineweir::test

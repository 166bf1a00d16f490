#include "base/event.h"

#include <doctest/doctest.h>

#include <memory>

namespace lineweir {
namespace {

const auto no_guard = [](const auto& body) { body(); };

// Counts how often what a handler holds is copied.
class CountedCopies {
 public:
  explicit CountedCopies(int& copies) : copies_(&copies) {}
  CountedCopies(const CountedCopies& other) : copies_(other.copies_) { ++*copies_; }
  CountedCopies(CountedCopies&&) = default;
  CountedCopies& operator=(const CountedCopies&) = delete;
  CountedCopies& operator=(CountedCopies&&) = delete;
  ~CountedCopies() = default;

 private:
  int* copies_;
};

TEST_SUITE("base/event") {
  TEST_CASE("an event runs its one handler with the arguments, inside of the guard") {
    Event<void(int&, int)> event;
    CHECK_FALSE(event);
    int guarded = 0;
    event.handle([](const auto& body) { body(); }, [](int& sum, int more) { sum += more; });
    event.handle(
        [&guarded](const auto& body) {
          ++guarded;
          body();
        },
        [](int& sum, int more) { sum -= more; });
    int sum = 10;
    event(sum, 3);
    CHECK(sum == 7);
    CHECK(guarded == 1);
    event.forget_handler();
    event(sum, 3);
    CHECK(sum == 7);
  }

  TEST_CASE("a handler may destroy what the event belongs to, and set another") {
    auto event = std::make_unique<Event<void()>>();
    const auto kept = std::make_shared<int>(5);
    int seen = 0;
    event->handle(no_guard, [&event, kept, &seen] {
      event.reset();
      seen = *kept;
    });
    (*event)();
    CHECK(seen == 5);
    CHECK(kept.use_count() == 1);

    Event<void()> other;
    other.handle(no_guard, [&] { other.handle(no_guard, [&] { seen = 7; }); });
    other();
    CHECK(seen == 5);
    other();
    CHECK(seen == 7);
  }

  TEST_CASE("what happens each tenth of a second copies nothing that its handler holds") {
    int copies = 0;
    int runs = 0;
    Event<void()> event;
    event.handle(no_guard, [counted = CountedCopies(copies), &runs] { ++runs; });
    const int before = copies;
    for (int tick = 0; tick < 10; ++tick) event();
    CHECK(runs == 10);
    CHECK(copies == before);
  }
}

}  // namespace
}  // namespace lineweir

#include "exchange/simulated_exchange.h"

#include <doctest/doctest.h>

#include <memory>
#include <vector>

#include "platform/scripted/virtual_event_loop.h"

using namespace lineweir;
using namespace lineweir::exchange;
using namespace std::chrono_literals;

namespace {

struct Noted {
  LineChange change;
  std::string number;

  bool operator==(const Noted&) const = default;
};
using Told = std::vector<Noted>;

SimulatedExchangeOptions quiet(int lines = 10) {
  SimulatedExchangeOptions options;
  options.line_count = lines;
  options.callers = {0ms, 0ms, 0ms};
  return options;
}

SimulatedExchangeOptions busy(std::uint64_t seed) {
  SimulatedExchangeOptions options;
  options.callers = {10s, 30s, 60s};
  options.seed = seed;
  return options;
}

struct Desk {
  explicit Desk(const SimulatedExchangeOptions& options)
      : exchange(std::make_unique<SimulatedExchange>(loop, options)) {
    exchange->on_change = [this](LineChange change, const std::string& number) {
      told.push_back({change, number});
    };
  }

  Told take_told() { return std::exchange(told, {}); }

  platform::VirtualEventLoop loop;
  Told told;
  std::unique_ptr<SimulatedExchange> exchange;
};

}  // namespace

TEST_SUITE("exchange/simulated_exchange") {
  TEST_CASE("a caller arrives on a free line with his number, and leaves") {
    Desk desk(quiet());
    CHECK(desk.exchange->is_reached());
    CHECK(desk.exchange->arrive(3, "555 0100"));
    CHECK(desk.take_told() == Told{{{3, 'R'}, "555 0100"}});
    CHECK_FALSE(desk.exchange->arrive(3, "555 0101"));
    CHECK_FALSE(desk.exchange->arrive(10, {}));
    CHECK_FALSE(desk.exchange->arrive(-1, {}));
    CHECK_FALSE(desk.exchange->leave(4));
    CHECK_FALSE(desk.exchange->leave(10));
    CHECK(desk.take_told().empty());
    CHECK(desk.exchange->leave(3));
    CHECK(desk.take_told() == Told{{{3, 'F'}, {}}});
  }

  TEST_CASE("words are obeyed at once, others and those of other lines not at all") {
    Desk desk(quiet());
    desk.exchange->arrive(3, {});
    desk.take_told();
    for (const char* word :
         {"", "N", "N3", "n03", "N10", "N19", "N99", "Q03", "M", "T03", "X", "hello", "N03N04"}) {
      desk.exchange->obey(word);
    }
    CHECK(desk.take_told().empty());
    desk.exchange->obey("N03");
    CHECK(desk.take_told() == Told{{{3, 'N'}, {}}});
    CHECK(desk.exchange->letter(3) == 'N');
  }

  TEST_CASE("who is displaced from a numbered position goes on hold, and is told first") {
    Desk desk(quiet());
    desk.exchange->arrive(3, {});
    desk.exchange->arrive(4, {});
    desk.exchange->take_to_position(3, 5);
    desk.take_told();
    desk.exchange->take_to_position(4, 5);
    CHECK(desk.take_told() == Told{{{3, 'H'}, {}}, {{4, '\x85'}, {}}});
  }

  TEST_CASE("without callers nothing happens and nothing is waited for") {
    Desk desk(quiet());
    CHECK(desk.loop.scheduled() == 0);
    desk.exchange->arrive(3, {});
    desk.loop.advance(24h);
    CHECK(desk.take_told().size() == 1);
  }

  TEST_CASE("callers come about as often as they are said to, and give up") {
    Desk desk(busy(7));
    desk.loop.advance(4h);
    int rings = 0;
    int ends = 0;
    for (const Noted& noted : desk.take_told()) {
      if (noted.change.letter == 'R') {
        ++rings;
        CHECK(noted.number.size() == 8);
        CHECK(noted.number.starts_with("555 "));
      } else {
        CHECK(noted.change.letter == 'F');
        ++ends;
      }
    }
    // One in ten seconds are 1440, less those who find no free line.
    CHECK(rings > 1000);
    CHECK(rings < 1700);
    CHECK(ends <= rings);
    CHECK(ends >= rings - 10);
  }

  TEST_CASE("the same seed gives the same callers, another one others") {
    const auto show = [](std::uint64_t seed) {
      Desk desk(busy(seed));
      desk.loop.advance(1h);
      return desk.take_told();
    };
    const Told first = show(7);
    CHECK(!first.empty());
    CHECK(show(7) == first);
    CHECK(show(8) != first);
  }

  TEST_CASE("callers who are talked to stay") {
    Desk desk(busy(7));
    for (int line = 0; line < 10; ++line) {
      desk.exchange->arrive(line, {});
      desk.exchange->obey("N0" + std::to_string(line));
    }
    desk.take_told();
    desk.loop.advance(4h);
    CHECK(desk.take_told().empty());
  }

  TEST_CASE("one that was quietened has no more callers of its own") {
    Desk desk(busy(7));
    desk.loop.advance(1min);
    desk.take_told();
    desk.exchange->quieten();
    desk.loop.advance(4h);
    CHECK(desk.take_told().empty());
    CHECK(desk.loop.scheduled() == 0);
  }

  TEST_CASE("an exchange that ends leaves nothing on the loop, also one that nobody watches") {
    Desk desk(busy(7));
    desk.exchange->on_change = nullptr;
    desk.loop.advance(1h);
    desk.exchange.reset();
    CHECK(desk.loop.scheduled() == 0);
  }
}

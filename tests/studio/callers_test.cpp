#include <doctest/doctest.h>

#include <set>

#include "exchange_fixture.h"
#include "studio/boxed_exchange.h"

using namespace lineweir::studio;
using namespace std::chrono_literals;

namespace {

int count(const std::vector<Record>& records, std::string_view beginning) {
  int found = 0;
  for (const Record& record : records) {
    if (record.kind == Record::Kind::Event && record.text.starts_with(beginning)) ++found;
  }
  return found;
}

}  // namespace

TEST_CASE("calls come in at the rate asked for") {
  BoxedExchangeOptions options;
  options.line_count = 20;
  options.callers = {10s, 5s, 0s};
  BoxedExchange exchange(options);
  exchange.advance(100'000s);
  const auto records = exchange.take_records();
  CHECK(count(records, "call ") > 9'500);
  CHECK(count(records, "call ") < 10'500);
}

TEST_CASE("calls are spread over the lines") {
  BoxedExchangeOptions options;
  options.callers = {10s, 5s, 0s};
  BoxedExchange exchange(options);
  exchange.advance(5000s);
  std::set<std::string> calls;
  for (const Record& record : exchange.take_records()) {
    if (record.text.starts_with("call ")) calls.insert(record.text);
  }
  CHECK(calls.size() == 10);
}

TEST_CASE("a ringing caller gives up, sooner with less patience") {
  BoxedExchangeOptions options = quiet_exchange();
  options.callers.ring_patience = 40s;
  Moment sum{0};
  const int tries = 400;
  for (int seed = 0; seed < tries; ++seed) {
    options.seed = static_cast<std::uint64_t>(seed);
    options.script = {{Moment(0), {StudioEvent::Kind::Call, 3}}};
    BoxedExchange exchange(options);
    exchange.advance(1000s);
    const auto records = exchange.take_records();
    REQUIRE(records.size() == 4);
    CHECK(records[2].text == "hangup 3");
    sum += records[2].at;
  }
  CHECK(sum / tries > 34s);
  CHECK(sum / tries < 46s);
}

TEST_CASE("callers on hold and ready give up, callers somebody talks to don't") {
  for (const char letter : status_letters) {
    CAPTURE(letter);
    BoxedExchangeOptions options = quiet_exchange();
    options.callers.ring_patience = 10s;
    options.callers.hold_patience = 10s;
    options.script = {{Moment(0), {StudioEvent::Kind::Set, 3, letter}}};
    BoxedExchange exchange(options);
    exchange.advance(1000s);
    const bool waits = letter == 'R' || letter == 'H' || letter == 'S';
    CHECK(exchange.letter(3) == (waits ? idle_letter : letter));
  }
}

TEST_CASE("an answered caller's impatience is forgotten") {
  BoxedExchangeOptions options = quiet_exchange();
  options.callers.ring_patience = 40s;
  options.script = {{Moment(0), {StudioEvent::Kind::Call, 3}},
                    {Moment(1), {StudioEvent::Kind::Word, 0, ' ', "P03"}}};
  BoxedExchange exchange(options);
  exchange.advance(10'000s);
  CHECK(exchange.letter(3) == 'P');
}

TEST_CASE("patience of nought has no end, and a rate of nought no calls") {
  BoxedExchangeOptions options = quiet_exchange();
  options.script = {{Moment(0), {StudioEvent::Kind::Call, 3}}};
  BoxedExchange exchange(options);
  exchange.advance(1'000'000s);
  CHECK(letters(exchange) == "FFFRFFFFFF");
}

TEST_CASE("a caller who finds no idle line is turned away") {
  BoxedExchangeOptions options;
  options.callers = {10s, 0s, 0s};
  BoxedExchange exchange(options);
  exchange.advance(1000s);
  CHECK(letters(exchange) == "RRRRRRRRRR");
  CHECK(exchange.take_records().back().text == "a call finds no idle line");
}

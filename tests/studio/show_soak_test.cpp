#include <doctest/doctest.h>

#include <algorithm>
#include <set>

#include "exchange_fixture.h"
#include "studio/boxed_exchange.h"

using namespace lineweir::studio;
using namespace std::chrono_literals;

namespace {

BoxedExchangeOptions show(int line_count, std::uint64_t seed) {
  BoxedExchangeOptions options;
  options.line_count = line_count;
  options.seed = seed;
  options.auto_operator.emplace();
  return options;
}

void check_invariants(const BoxedExchange& exchange) {
  const std::string now = letters(exchange);
  REQUIRE(std::count(now.begin(), now.end(), 'P') <= 1);
  REQUIRE(std::count(now.begin(), now.end(), 'O') <= 1);
  REQUIRE(now.find_first_not_of(status_letters) == std::string::npos);
}

}  // namespace

TEST_CASE("a day and more of the show keeps its rules and shows all that it has") {
  for (const int line_count : {10, 20}) {
    BoxedExchange exchange(show(line_count, 7));
    std::set<char> seen;
    std::set<std::string> lines_on_air;
    std::string sent;
    std::string reported;
    bool both_hybrids = false;
    bool two_on_one = false;
    for (Moment now = exchange.next_due(); now < 100'000s; now = exchange.next_due()) {
      exchange.advance(now);
      check_invariants(exchange);
      const std::string shown = letters(exchange);
      both_hybrids |= shown.find('N') != std::string::npos && shown.find('C') != std::string::npos;
      two_on_one |= std::count(shown.begin(), shown.end(), 'N') > 1;
      sent += exchange.take_output();
      for (const Record& record : exchange.take_records()) {
        if (record.kind != Record::Kind::Item) continue;
        seen.insert(record.text[0]);
        reported += record.text;
        if (record.text[0] == 'N') lines_on_air.insert(record.text);
      }
    }
    CHECK(seen == std::set<char>{'B', 'C', 'F', 'H', 'K', 'L', 'N', 'O', 'P', 'R', 'S'});
    CHECK(both_hybrids);
    CHECK(two_on_one);
    CHECK(lines_on_air.size() == static_cast<std::size_t>(line_count));
    CHECK(reported.substr(0, sent.size()) == sent);
    CHECK(reported.size() - sent.size() < 60);
  }
}

TEST_CASE("every state comes up early enough to be looked at") {
  BoxedExchange exchange(show(10, 1));
  exchange.advance(600s);
  std::set<char> seen;
  for (const Record& record : exchange.take_records()) {
    if (record.kind == Record::Kind::Item) seen.insert(record.text[0]);
  }
  for (const char letter : {'R', 'P', 'O', 'H', 'S', 'N', 'C', 'F', 'B'}) {
    CAPTURE(letter);
    CHECK(seen.count(letter) == 1);
  }
}

TEST_CASE("a seed gives the same transcript, however often the exchange is called") {
  BoxedExchange often(show(10, 42));
  BoxedExchange seldom(show(10, 42));
  for (Moment now{0}; now <= 2000s; now += 7ms) often.advance(now);
  often.advance(2000s);
  seldom.advance(2000s);
  const std::string whole = transcript(often);
  CHECK(whole.size() > 10'000);
  CHECK(whole == transcript(seldom));
  CHECK(often.take_output() == seldom.take_output());

  BoxedExchange other(show(10, 43));
  other.advance(2000s);
  CHECK(whole != transcript(other));
}

TEST_CASE("a console that works beside the studio's people breaks nothing") {
  BoxedExchangeOptions options = show(20, 3);
  BoxedExchange exchange(options);
  Dice dice(99);
  const std::string words = "FHSNCLPO";
  for (Moment now{0}; now < 20'000s; now += dice.exponential(2s)) {
    std::string word(1, words[static_cast<std::size_t>(dice.below(8))]);
    const int line = dice.below(20);
    word += static_cast<char>('0' + line / 10);
    word += static_cast<char>('0' + line % 10);
    exchange.receive(word, now);
    check_invariants(exchange);
    exchange.take_records();
    exchange.take_output();
  }
}

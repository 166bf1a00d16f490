#include "studio/pacer.h"

#include <doctest/doctest.h>

using namespace lineweir::studio;

TEST_CASE("a character takes the time of ten bits at 1200 bits a second") {
  Pacer pacer;
  CHECK(pacer.next_due() == never);
  REQUIRE(pacer.send("N05", Moment(1000)));
  CHECK(pacer.next_due() == Moment(1009));
  pacer.advance(Moment(1008));
  CHECK(pacer.take_ready() == "");
  pacer.advance(Moment(1009));
  CHECK(pacer.take_ready() == "N");
  CHECK(pacer.next_due() == Moment(1017));
  pacer.advance(Moment(1017));
  CHECK(pacer.take_ready() == "0");
  CHECK(pacer.next_due() == Moment(1025));
  pacer.advance(Moment(1025));
  CHECK(pacer.take_ready() == "5");
  CHECK(pacer.next_due() == never);
}

TEST_CASE("a second of a full line is 120 characters, without drift") {
  Pacer pacer;
  REQUIRE(pacer.send(std::string(1200, 'x'), Moment(0)));
  pacer.advance(Moment(1000));
  CHECK(pacer.take_ready().size() == 120);
  pacer.advance(Moment(9999));
  CHECK(pacer.take_ready().size() == 1079);
  pacer.advance(Moment(10'000));
  CHECK(pacer.take_ready().size() == 1);
}

TEST_CASE("what comes while the line is sending waits its turn") {
  Pacer pacer;
  REQUIRE(pacer.send("abc", Moment(0)));
  REQUIRE(pacer.send("d", Moment(10)));
  pacer.advance(Moment(33));
  CHECK(pacer.take_ready() == "abc");
  pacer.advance(Moment(34));
  CHECK(pacer.take_ready() == "d");
}

TEST_CASE("the line rests between texts and saves nothing up") {
  Pacer pacer;
  REQUIRE(pacer.send("a", Moment(0)));
  REQUIRE(pacer.send("b", Moment(5000)));
  CHECK(pacer.take_ready() == "a");
  CHECK(pacer.next_due() == Moment(5009));
}

TEST_CASE("a full box takes no half items") {
  Pacer pacer;
  REQUIRE(pacer.send(std::string(Pacer::capacity - 2, 'x'), Moment(0)));
  CHECK_FALSE(pacer.send("N05", Moment(0)));
  CHECK(pacer.send("ab", Moment(0)));
  CHECK_FALSE(pacer.send("c", Moment(8)));
  CHECK(pacer.send("c", Moment(9)));
}

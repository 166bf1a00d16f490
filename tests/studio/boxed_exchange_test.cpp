#include "studio/boxed_exchange.h"

#include <doctest/doctest.h>

#include "exchange_fixture.h"

using namespace lineweir::studio;
using Kind = StudioEvent::Kind;

namespace {

// What the box sends for these characters once its line is quiet again.
std::string reply(BoxedExchange& exchange, std::string_view bytes, Moment now) {
  exchange.receive(bytes, now);
  exchange.advance(now + Moment(5000));
  return exchange.take_output();
}

}  // namespace

TEST_CASE("the probe of a console is answered") {
  BoxedExchange exchange(quiet_exchange());
  CHECK(reply(exchange, "M", Moment(0)) == "Line monitor ON");
  CHECK(reply(exchange, "Q00Q01Q02Q03Q04Q05Q06Q07Q08Q09", Moment(6000)) ==
        "F00F01F02F03F04F05F06F07F08F09");
}

TEST_CASE("a query gives the line's item") {
  BoxedExchange exchange(quiet_exchange(20));
  reply(exchange, "N05C12", Moment(0));
  CHECK(reply(exchange, "Q05Q06Q010Q012Q01", Moment(6000)) == "N05F06F10C12F01");
}

TEST_CASE("every box reports a change, and the one that is asked answers") {
  BoxedExchangeOptions options = quiet_exchange();
  options.boxes = 2;
  BoxedExchange exchange(options);
  exchange.receive("N05", Moment(0), 0);
  // A word in two pieces is not broken by what another box hears between them.
  exchange.receive("Q0", Moment(100), 0);
  exchange.receive("C03", Moment(110), 1);
  exchange.receive("5", Moment(120), 0);
  CHECK_FALSE(exchange.is_silent(0));
  exchange.advance(Moment(5000));
  CHECK(exchange.take_output(0) == "N05C03N05");
  CHECK(exchange.take_output(1) == "N05C03");
  CHECK(exchange.is_silent(0));
}

TEST_CASE("a query that another digit could lengthen waits for the next character or for silence") {
  BoxedExchange exchange(quiet_exchange(20));
  exchange.receive("Q01", Moment(0));
  CHECK(exchange.next_due() == BoxedExchange::word_gap);
  exchange.advance(Moment(49));
  CHECK(exchange.take_records().empty());
  exchange.advance(Moment(50));
  CHECK(transcript(exchange) == "0.050 word Q01\n0.050 item F01\n");

  exchange.receive("Q01", Moment(1000));
  exchange.receive("3", Moment(1049));
  CHECK(transcript(exchange) == "1.049 word Q013\n1.049 item F13\n");

  exchange.receive("Q01", Moment(2000));
  exchange.receive("M", Moment(2001));
  CHECK(transcript(exchange) ==
        "2.001 word Q01\n2.001 item F01\n2.001 word M\n2.001 text Line monitor ON\n");

  exchange.receive("Q01", Moment(3000));
  exchange.receive("3", Moment(3050));
  CHECK(transcript(exchange) == "3.050 word Q01\n3.050 item F01\n");
  CHECK(exchange.next_due() == Moment(3059));
}

TEST_CASE("with ten lines a query is three characters at once") {
  BoxedExchange exchange(quiet_exchange());
  exchange.receive("Q01", Moment(0));
  CHECK(transcript(exchange) == "0.000 word Q01\n0.000 item F01\n");
}

TEST_CASE("every change is reported, at the pace of the serial line") {
  BoxedExchange exchange(quiet_exchange());
  exchange.receive("P03P04", Moment(1000));
  CHECK(transcript(exchange) ==
        "1.000 word P03\n1.000 item P03\n1.000 word P04\n1.000 item H03\n1.000 item P04\n");
  exchange.advance(Moment(1008));
  CHECK(exchange.take_output() == "");
  exchange.advance(Moment(1025));
  CHECK(exchange.take_output() == "P03");
  exchange.advance(Moment(1074));
  CHECK(exchange.take_output() == "H03P0");
  exchange.advance(Moment(1075));
  CHECK(exchange.take_output() == "4");
  CHECK(exchange.next_due() == never);
}

TEST_CASE("words without effect are logged and answered with nothing") {
  BoxedExchange exchange(quiet_exchange());
  CHECK(reply(exchange, "XRT05P20O31F03H03S03L03V02Z05P15", Moment(0)) == "");
  CHECK(transcript(exchange) ==
        "0.000 word X\n0.000 word R\n0.000 word T05\n0.000 word P20\n0.000 word O31\n"
        "0.000 word F03\n0.000 word H03\n0.000 word S03\n0.000 word L03\n0.000 word V02\n"
        "0.000 word Z05\n0.000 word P15\n");
}

TEST_CASE("a word for a line that isn't there, and one that isn't in the vocabulary, is noted") {
  BoxedExchange exchange(quiet_exchange());
  CHECK(reply(exchange, "N12P30", Moment(0)) == "");
  CHECK(transcript(exchange) ==
        "0.000 word N12\n0.000 note N12: no such line\n"
        "0.000 word P30\n0.000 note P30: no such word\n");
}

TEST_CASE("noise is logged readably") {
  BoxedExchange exchange(quiet_exchange());
  exchange.receive(std::string_view("a\\\0N05", 6), Moment(0));
  CHECK(transcript(exchange) == "0.000 noise a\\x5c\\x00\n0.000 word N05\n0.000 item N05\n");
  exchange.receive("zz", Moment(100));
  exchange.advance(Moment(1000));
  CHECK(transcript(exchange) == "0.150 noise zz\n");
}

TEST_CASE("a script is played at its times, however seldom the exchange is called") {
  BoxedExchangeOptions options = quiet_exchange();
  options.script = {
      {Moment(2'500), {Kind::Call, 3}},   {Moment(3'000), {Kind::Set, 9, 'E'}},
      {Moment(4'000), {Kind::Busy, 4}},   {Moment(5'000), {Kind::Idle, 4}},
      {Moment(6'000), {Kind::HangUp, 4}}, {Moment(20'000), {Kind::Word, 0, ' ', "N03"}},
      {Moment(30'000), {Kind::Quit}},     {Moment(31'000), {Kind::Call, 5}}};
  BoxedExchange exchange(options);
  CHECK(exchange.next_due() == Moment(2'500));
  exchange.advance(Moment(100'000));
  CHECK(transcript(exchange) ==
        "2.500 call 3\n2.500 item R03\n"
        "3.000 set 9 E\n3.000 item E09\n"
        "4.000 busy 4\n4.000 item B04\n"
        "5.000 idle 4\n5.000 item F04\n"
        "6.000 hangup 4\n6.000 note hangup 4: doesn't fit the line, ignored\n"
        "20.000 seat N03\n20.000 item N03\n"
        "30.000 quit\n");
  CHECK(exchange.is_over());
  CHECK(exchange.take_output() == "R03E09B04F04N03");
  CHECK(exchange.next_due() == never);
}

TEST_CASE("another seat's probe is not answered to this console") {
  BoxedExchangeOptions options = quiet_exchange();
  options.script = {{Moment(0), {Kind::Word, 0, ' ', "M"}},
                    {Moment(0), {Kind::Word, 0, ' ', "Q03"}}};
  BoxedExchange exchange(options);
  exchange.advance(Moment(1000));
  CHECK(exchange.take_output() == "");
}

TEST_CASE("what was due before a word happens before it") {
  BoxedExchangeOptions options = quiet_exchange();
  options.script = {{Moment(1000), {Kind::Call, 3}}};
  BoxedExchange exchange(options);
  exchange.receive("H03", Moment(1500));
  CHECK(transcript(exchange) == "1.000 call 3\n1.000 item R03\n1.500 word H03\n1.500 item H03\n");
}

TEST_CASE("a clock that goes back stands still") {
  BoxedExchange exchange(quiet_exchange());
  exchange.receive("N00", Moment(5000));
  exchange.receive("N01", Moment(1000));
  CHECK(transcript(exchange) == "5.000 word N00\n5.000 item N00\n5.000 word N01\n5.000 item N01\n");
}

TEST_CASE("a flood of queries fills the box, which tells of what it lost, and then goes on") {
  BoxedExchange exchange(quiet_exchange());
  for (int i = 0; i < 2000; ++i) exchange.receive("Q00", Moment(0));
  std::size_t lost = 0;
  for (const Record& record : exchange.take_records()) {
    if (record.kind == Record::Kind::Note) {
      CHECK(record.text == "F00: lost, the box is full");
      ++lost;
    }
  }
  exchange.advance(Moment(60'000));
  CHECK(exchange.take_output().size() == 3 * (2000 - lost));
  CHECK(lost == 2000 - Pacer::capacity / 3);
  CHECK(reply(exchange, "N00", Moment(60'000)) == "N00");
}

TEST_CASE("a closed studio takes no more words") {
  BoxedExchangeOptions options = quiet_exchange();
  options.script = {{Moment(10), {Kind::Quit}}};
  BoxedExchange exchange(options);
  exchange.receive("N00", Moment(20));
  CHECK(exchange.letter(0) == idle_letter);
}

#include <doctest/doctest.h>
#include <rapidcheck.h>

#include <string>
#include <vector>

#include "exchange_fixture.h"
#include "studio/boxed_exchange.h"
#include "studio/word_cutter.h"

using namespace lineweir::studio;

namespace {

// Bytes of all kinds, mostly those of which words are made, so that words do come about.
rc::Gen<std::string> streams() {
  const auto byte =
      rc::gen::weightedOneOf<char>({{6, rc::gen::elementOf(std::string("MXRFHNCLSPOTZVQ"))},
                                    {8, rc::gen::elementOf(std::string("0123456789"))},
                                    {6, rc::gen::elementOf(std::string("01"))},
                                    {1, rc::gen::arbitrary<char>()}});
  const auto piece = rc::gen::oneOf(rc::gen::container<std::string>(byte),
                                    rc::gen::elementOf(std::vector<std::string>{
                                        "Q01", "Q012", "Q00", "P15", "O15", "N05", "L05"}));
  return rc::gen::map(rc::gen::container<std::vector<std::string>>(piece), [](const auto& pieces) {
    std::string whole;
    for (const std::string& text : pieces) whole += text;
    return whole;
  });
}

// The stream in pieces of random lengths.
std::vector<std::string> cut_anywhere(const std::string& stream) {
  std::vector<std::string> pieces;
  for (std::size_t begin = 0; begin < stream.size();) {
    const auto length = static_cast<std::size_t>(*rc::gen::inRange(1, 7));
    pieces.push_back(stream.substr(begin, length));
    begin += length;
  }
  return pieces;
}

}  // namespace

TEST_CASE("random bytes cut at random places give the same words as in one piece") {
  CHECK(rc::check([] {
    const int line_count = *rc::gen::element(10, 20);
    const std::string stream = *streams();
    WordCutter whole(line_count);
    WordCutter pieces(line_count);
    auto expected = whole.feed(stream);
    std::vector<Token> got;
    for (const std::string& piece : cut_anywhere(stream)) {
      for (const Token& token : pieces.feed(piece)) got.push_back(token);
    }
    RC_ASSERT(got == expected);
    RC_ASSERT(pieces.idle() == whole.idle());
  }));
}

TEST_CASE("no character is lost or made up by the cutting") {
  CHECK(rc::check([] {
    const std::string stream = *streams();
    WordCutter cutter(20);
    std::string together;
    for (const Token& token : cutter.feed(stream)) together += token.text;
    for (const Token& token : cutter.idle()) together += token.text;
    RC_ASSERT(stream.starts_with(together));
    RC_ASSERT(stream.size() - together.size() <= 3U);
  }));
}

TEST_CASE("random bytes cut at random places leave the same letters and give the same answers") {
  CHECK(rc::check([] {
    const BoxedExchangeOptions options = quiet_exchange(*rc::gen::element(10, 20));
    const std::string stream = *streams();
    BoxedExchange whole(options);
    BoxedExchange pieces(options);
    whole.receive(stream, Moment(0));
    for (const std::string& piece : cut_anywhere(stream)) pieces.receive(piece, Moment(0));
    whole.advance(Moment(60'000));
    pieces.advance(Moment(60'000));
    RC_ASSERT(letters(pieces) == letters(whole));
    RC_ASSERT(transcript(pieces) == transcript(whole));
    RC_ASSERT(pieces.take_output() == whole.take_output());
  }));
}

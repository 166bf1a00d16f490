#include "studio/word_cutter.h"

#include <doctest/doctest.h>

#include <string>

using namespace lineweir::studio;

namespace {

// Words bare, noise in brackets, parted by blanks.
std::string text_of(const std::vector<Token>& tokens) {
  std::string text;
  for (const Token& token : tokens) {
    if (!text.empty()) text += ' ';
    const bool is_word = token.kind == Token::Kind::Word;
    text.append(is_word ? "" : "[").append(token.text).append(is_word ? "" : "]");
  }
  return text;
}

// The whole in one piece, with silence behind it.
std::string cut(std::string_view bytes, int line_count = 10) {
  WordCutter cutter(line_count);
  auto tokens = cutter.feed(bytes);
  for (auto& token : cutter.idle()) tokens.push_back(token);
  return text_of(tokens);
}

std::string cut_singly(std::string_view bytes, int line_count) {
  WordCutter cutter(line_count);
  std::vector<Token> tokens;
  for (const char character : bytes) {
    for (auto& token : cutter.feed({&character, 1})) tokens.push_back(token);
  }
  for (auto& token : cutter.idle()) tokens.push_back(token);
  return text_of(tokens);
}

}  // namespace

TEST_CASE("words without separators are cut by their grammar") {
  CHECK(cut("MXR") == "M X R");
  CHECK(cut("F00H01N02C03L04S05P06O07T08Z09V10") == "F00 H01 N02 C03 L04 S05 P06 O07 T08 Z09 V10");
  CHECK(cut("MQ00Q01Q02Q09") == "M Q00 Q01 Q02 Q09");
  CHECK(cut("P15O15P20P31T12XN05R") == "P15 O15 P20 P31 T12 X N05 R");
}

TEST_CASE("the wire can cut a word anywhere") {
  for (const int line_count : {10, 20}) {
    const std::string words = "MQ00Q01Q010Q019Q05N05P15zzC1xS07";
    CHECK(cut_singly(words, line_count) == cut(words, line_count));
  }
}

TEST_CASE("a query has two digits behind its zero only with twenty lines and only for 10 to 19") {
  CHECK(cut("Q010Q019", 20) == "Q010 Q019");
  CHECK(cut("Q01Q02", 20) == "Q01 Q02");
  CHECK(cut("Q01M", 20) == "Q01 M");
  CHECK(cut("Q01x", 20) == "Q01 [x]");
  CHECK(cut("Q005", 20) == "Q00 [5]");
  CHECK(cut("Q010", 10) == "Q01 [0]");
}

TEST_CASE("silence decides whether a query is complete") {
  WordCutter cutter(20);
  CHECK(cutter.feed("Q01").empty());
  CHECK(cutter.idle_matters());
  CHECK(text_of(cutter.idle()) == "Q01");
  CHECK_FALSE(cutter.idle_matters());
  CHECK(text_of(cutter.feed("2")) == "");
  CHECK(text_of(cutter.idle()) == "[2]");
}

TEST_CASE("silence doesn't break a word that is on its way") {
  WordCutter cutter(10);
  CHECK(cutter.feed("N0").empty());
  CHECK_FALSE(cutter.idle_matters());
  CHECK(cutter.idle().empty());
  CHECK(text_of(cutter.feed("5")) == "N05");
}

TEST_CASE("garbage is skipped and told, and never hides the word behind it") {
  CHECK(cut("hello N05") == "[hello ] N05");
  CHECK(cut("NN05") == "[N] N05");
  CHECK(cut("N0N05") == "[N0] N05");
  CHECK(cut("QQ05") == "[Q] Q05");
  CHECK(cut("Q15") == "[Q15]");
  CHECK(cut("Q0M") == "[Q0] M");
  CHECK(cut("F1M") == "[F1] M");
  CHECK(cut("05\r\nM") == "[05\r\n] M");
  CHECK(cut(std::string_view("\0\xff\x80M", 4)) == std::string("[\0\xff\x80] M", 7));
}

TEST_CASE("endless garbage takes no memory") {
  WordCutter cutter(10);
  std::size_t told = 0;
  for (int i = 0; i < 1000; ++i) {
    for (const Token& token : cutter.feed("zzzzzzzzzz")) {
      CHECK(token.kind == Token::Kind::Noise);
      CHECK(token.text.size() <= WordCutter::longest_noise);
      told += token.text.size();
    }
  }
  for (const Token& token : cutter.idle()) told += token.text.size();
  CHECK(told == 10'000);
}

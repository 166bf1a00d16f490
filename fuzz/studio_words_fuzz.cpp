// The words of a console, and the exchange behind them, under bytes of any kind. The first byte
// chooses ten or twenty lines and a number from which the cuts of the stream follow; the rest is
// the stream. However it is cut, the words, the letters and the answers must be the same, and the
// exchange must keep its rules.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

#include "studio/boxed_exchange.h"

using namespace lineweir::studio;

namespace {

void require(bool holds) {
  if (!holds) std::abort();
}

BoxedExchangeOptions quiet(int line_count) {
  BoxedExchangeOptions options;
  options.line_count = line_count;
  options.callers = {Moment{0}, Moment{0}, Moment{0}};
  return options;
}

std::string letters(const BoxedExchange& exchange) {
  std::string text;
  for (int line = 0; line < exchange.lines().line_count(); ++line) text += exchange.letter(line);
  return text;
}

void check_rules(const std::string& shown) {
  require(std::count(shown.begin(), shown.end(), 'P') <= 1);
  require(std::count(shown.begin(), shown.end(), 'O') <= 1);
  require(shown.find_first_not_of(status_letters) == std::string::npos);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  const int line_count = (data[0] & 1U) != 0 ? 20 : 10;
  std::size_t cut = data[0] >> 1U;
  const std::string_view stream(reinterpret_cast<const char*>(data + 1), size - 1);

  BoxedExchange whole(quiet(line_count));
  BoxedExchange pieces(quiet(line_count));
  whole.receive(stream, Moment{0});
  for (std::size_t begin = 0; begin < stream.size();) {
    const std::size_t length = 1 + cut % 7;
    cut = cut * 5 + 3;
    pieces.receive(stream.substr(begin, length), Moment{0});
    check_rules(letters(pieces));
    begin += length;
  }
  whole.advance(Moment{60'000});
  pieces.advance(Moment{60'000});
  require(letters(whole) == letters(pieces));
  require(whole.take_records() == pieces.take_records());
  require(whole.take_output() == pieces.take_output());
  return 0;
}

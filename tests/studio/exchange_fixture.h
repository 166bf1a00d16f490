#pragma once

#include <string>

#include "studio/boxed_exchange.h"

// An exchange at which nothing happens of its own.
inline lineweir::studio::BoxedExchangeOptions quiet_exchange(int line_count = 10) {
  lineweir::studio::BoxedExchangeOptions options;
  options.line_count = line_count;
  options.callers = {lineweir::exchange::Moment{0}, lineweir::exchange::Moment{0},
                     lineweir::exchange::Moment{0}};
  return options;
}

// The whole transcript since the last look, one record a line.
inline std::string transcript(lineweir::studio::BoxedExchange& exchange) {
  std::string text;
  for (const auto& record : exchange.take_records()) {
    text += lineweir::studio::format_record(record) + '\n';
  }
  return text;
}

// Every line's letter in order.
inline std::string letters(const lineweir::studio::BoxedExchange& exchange) {
  std::string text;
  for (int line = 0; line < exchange.lines().line_count(); ++line) text += exchange.letter(line);
  return text;
}

#pragma once

#include <cstdint>
#include <iosfwd>
#include <optional>

#include "seat/seat_entrance.h"

namespace lineweir::seat {

enum class Work { Screener, Host };

struct Options {
  SeatLogin login;
  Work work = Work::Screener;
  std::uint64_t seed = 1;
};

// Nothing where the command line asks for help or is wrong; that has been told then, and the status
// to end with is set. The password is the first line of `input`.
std::optional<Options> parse_options(int argc, const char* const* argv, std::istream& input,
                                     std::ostream& output, std::ostream& errors, int& status);

}  // namespace lineweir::seat

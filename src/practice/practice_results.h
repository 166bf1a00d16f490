#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>

#include "practice/practice_score.h"

namespace lineweir::practice {

inline constexpr std::string_view results_file = "Results.csv";
// More of it isn't read.
inline constexpr std::size_t longest_results = 64 * 1024;

// A show that was played. Times are whole seconds, as they are kept and shown.
struct Result {
  // As in the table of levels, and as "m/d/yyyy h:mm:ss AM/PM".
  std::string level;
  std::string date;
  int played = 0;
  int calls = 0;
  int answered = 0;
  int on_air = 0;
  int longest_wait = 0;
  int dead_air = 0;
  int dropped = 0;
  int gave_up = 0;

  bool operator==(const Result&) const = default;
};

Result result_of(const Score& score, std::string_view level, std::string_view date, Moment played);

// The last show of the level in the file's text. Lines that aren't understood are passed over.
std::optional<Result> last_result(std::string_view text, std::string_view level);

// The file's text with one more show; the oldest go where there are too many.
std::string with_result(std::string_view text, const Result& result);

// A line of the page. `verdict` compares with the last time where there is one.
struct PageRow {
  std::string name;
  std::string now;
  std::string before;
  std::string verdict;

  bool operator==(const PageRow&) const = default;
};
inline constexpr int page_row_count = 7;

std::array<PageRow, page_row_count> page_rows(const Result& now,
                                              const std::optional<Result>& before);

// "2:05".
std::string minutes_text(int seconds);

}  // namespace lineweir::practice

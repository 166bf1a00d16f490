#include "callcontrol/longest_wait.h"

#include <doctest/doctest.h>

#include <string>
#include <vector>

#include "base/time_text.h"
#include "lines/line_table.h"
#include "support/property_check.h"

namespace lineweir::test {
namespace {

int choose(const std::vector<LineWait>& lines, char letter = 'S') {
  return longest_wait(lines, letter);
}

TEST_SUITE("callcontrol/longest_wait") {
  TEST_CASE("the longest wait wins, whatever its place") {
    CHECK(choose({{'S', "0:01:00"}, {'S', "0:02:00"}, {'S', "0:00:30"}}) == 1);
    CHECK(choose({{'S', "0:03:00"}, {'S', "0:02:00"}}) == 0);
    CHECK(choose({{'S', "0:59:59"}, {'S', "1:00:00"}}) == 1);
  }

  TEST_CASE("of equal waits the lowest line") {
    CHECK(choose({{'R', "0:05:00"}, {'S', "0:01:00"}, {'S', "0:01:00"}}) == 1);
  }

  TEST_CASE("only lines of the letter count") {
    CHECK(choose({{'R', "0:05:00"}, {'H', "0:04:00"}, {'S', "0:00:01"}, {' ', "0:09:00"}}) == 2);
    CHECK(choose({{'R', "0:05:00"}, {'S', "0:06:00"}, {'R', "0:05:01"}}, 'R') == 2);
  }

  TEST_CASE("a line that hasn't waited, or whose wait can't be read, is never chosen") {
    CHECK(choose({{'S', "0:00:00"}}) == no_line);
    CHECK(choose({{'S', ""}, {'S', "soon"}, {'S', "99:99:99"}}) == no_line);
    CHECK(choose({{'S', "soon"}, {'S', "0:00:01"}}) == 1);
    CHECK(choose({}) == no_line);
  }

  TEST_CASE("the choice is a maximum and the first of its kind") {
    check_property([](const std::vector<std::pair<bool, std::uint16_t>>& lines) {
      std::vector<std::string> texts;
      for (const auto& [ready, wait] : lines) texts.push_back(short_hms_text(wait));
      std::vector<LineWait> waits;
      for (std::size_t i = 0; i < lines.size(); ++i) {
        waits.push_back({lines[i].first ? 'S' : 'R', texts[i]});
      }
      const int chosen = choose(waits);
      for (std::size_t i = 0; i < lines.size(); ++i) {
        if (!lines[i].first || lines[i].second == 0) continue;
        RC_ASSERT(chosen != no_line);
        const int best = lines[static_cast<std::size_t>(chosen)].second;
        RC_ASSERT(lines[i].second <= best);
        if (static_cast<int>(i) < chosen) RC_ASSERT(lines[i].second < best);
      }
      if (chosen != no_line) RC_ASSERT(lines[static_cast<std::size_t>(chosen)].first);
    });
  }
}

}  // namespace
}  // namespace lineweir::test

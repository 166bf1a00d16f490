// What the levels and the people of a practice show are like, as one who plays it finds them.

#include "practice/practice_levels.h"

#include <doctest/doctest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "practice/practice_callers.h"
#include "practice/practice_forms.h"
#include "practice/practice_plan.h"
#include "practice/practice_score.h"

namespace lineweir::practice {
namespace {

using exchange::StudioEvent;

// All who call within the hours, for the first time, of whom nobody is answered.
std::vector<Caller> callers_of(std::size_t level, int hours) {
  constexpr int line_count = 60;
  exchange::Switchboard lines(line_count);
  Callers callers(levels[level], line_count, 7);
  std::vector<Caller> all;
  while (callers.next_due() < std::chrono::hours(hours)) {
    const Moment now = callers.next_due();
    const auto event = callers.step(lines);
    if (!event) continue;
    const bool calls = event->kind == StudioEvent::Kind::Call;
    if (calls) all.push_back(*callers.on_line(event->line));
    const auto changes = calls ? lines.ring(event->line) : lines.hang_up(event->line);
    for (const auto& change : changes) callers.line_changed(change.line, change.letter, now);
  }
  // Who comes back has fewer calls left than at first.
  std::erase_if(all, [](const Caller& caller) {
    return caller.nature == Nature::Returner && caller.more_calls < 3;
  });
  return all;
}

// Whether the times of all lie between these seconds, and come near to both.
bool lie_between(const std::vector<Caller>& callers, Moment Caller::*time, int least, int most) {
  const auto [first, last] = std::ranges::minmax(callers, {}, time);
  const Moment low = std::chrono::seconds(least);
  const Moment high = std::chrono::seconds(most);
  const Moment near = (high - low) / 20;
  return first.*time >= low && first.*time <= low + near && last.*time <= high &&
         last.*time >= high - near;
}

TEST_SUITE("practice/levels") {
  TEST_CASE("people ring, wait and talk as long as their nature lets them") {
    struct Times {
      int least;
      int most;
    };
    struct Expected {
      Nature nature;
      Times rings;
      Times waits;
      Times talks;
      Times stays_at_handset;
      Times pause;
      int more_calls;
    };
    const auto all = callers_of(1, 100);
    for (const Expected& expected : {
             Expected{Nature::Patient, {45, 90}, {120, 300}, {25, 50}, {0, 0}, {15, 30}, 1},
             Expected{Nature::Hasty, {12, 25}, {25, 50}, {20, 40}, {0, 0}, {15, 30}, 0},
             Expected{Nature::Talker, {30, 60}, {90, 180}, {150, 240}, {0, 0}, {15, 30}, 1},
             Expected{Nature::Returner, {12, 20}, {40, 80}, {25, 45}, {0, 0}, {8, 20}, 3},
             Expected{Nature::WrongNumber, {20, 40}, {5, 12}, {3, 6}, {5, 9}, {10, 20}, 0},
         }) {
      CAPTURE(static_cast<int>(expected.nature));
      std::vector<Caller> such = all;
      std::erase_if(such, [&](const Caller& caller) { return caller.nature != expected.nature; });
      REQUIRE(such.size() > 500);
      const auto lie = [&](Moment Caller::*time, const Times& times) {
        return lie_between(such, time, times.least, times.most);
      };
      CHECK(lie(&Caller::rings, expected.rings));
      CHECK(lie(&Caller::waits, expected.waits));
      CHECK(lie(&Caller::talks, expected.talks));
      CHECK(lie(&Caller::stays_at_handset, expected.stays_at_handset));
      CHECK(lie(&Caller::pause, expected.pause));
      CHECK(std::ranges::count(such, expected.more_calls, &Caller::more_calls) ==
            static_cast<std::ptrdiff_t>(such.size()));
    }
  }

  TEST_CASE("only one kind of people calls again when nobody has heard them") {
    for (int nature = 0; nature < nature_count; ++nature) {
      CHECK(rule_of(Nature{nature}).returns == (Nature{nature} == Nature::Returner));
    }
  }

  TEST_CASE("each level has callers as often as the manual says, and people of all kinds") {
    struct Expected {
      int seconds_between;
      std::vector<int> of_hundred;
    };
    const std::vector<Expected> levels_expected = {
        {25, {55, 15, 10, 10, 10}}, {18, {40, 22, 14, 12, 12}}, {11, {22, 32, 18, 14, 14}}};
    constexpr int hours = 200;
    for (std::size_t level = 0; level < levels_expected.size(); ++level) {
      CAPTURE(level);
      const auto all = callers_of(level, hours);
      const double count = static_cast<double>(all.size());
      CHECK(hours * 3600 / count ==
            doctest::Approx(levels_expected[level].seconds_between).epsilon(0.02));
      for (int nature = 0; nature < nature_count; ++nature) {
        CAPTURE(nature);
        const auto such = std::ranges::count(all, Nature{nature}, &Caller::nature);
        const int expected = levels_expected[level].of_hundred[static_cast<std::size_t>(nature)];
        CHECK(std::abs(100.0 * static_cast<double>(such) / count - expected) < 0.8);
      }
    }
  }

  TEST_CASE("each level is chosen by its name and letter, and has its plan") {
    LevelForm form;
    CHECK(form.EasyLevel.caption == "&Easy: 5 minutes, callers with time");
    CHECK(form.NormalLevel.caption == "&Normal: 8 minutes, all sorts of callers");
    CHECK(form.HardLevel.caption == "&Hard: 10 minutes, a rush of callers with little patience");
    const std::vector<std::string> names = {"Easy", "Normal", "Hard"};
    const std::vector<std::vector<std::string>> times = {
        {"10:00:00", "10:05:00", "10:01:30", "10:01:50", "10:03:20", "10:03:40", "10:05:00"},
        {"10:00:00", "10:08:00", "10:02:30", "10:02:50", "10:05:10", "10:05:30", "10:08:00"},
        {"10:00:00", "10:10:00", "10:03:00", "10:03:30", "10:06:30", "10:07:00", "10:10:00"}};
    const std::vector<std::string> texts = {"Segment 1", "Break 1", "Segment 2", "Break 2",
                                            "Segment 3"};
    for (std::size_t level = 0; level < names.size(); ++level) {
      CAPTURE(level);
      CHECK(levels[level].name == names[level]);
      const ShowPlan plan = plan_of(levels[level], 10 * 3600);
      for (int entry = 0; entry < 7; ++entry) {
        CHECK(plan.ShowTimes(show_start_entry + entry).trimmed() ==
              times[level][static_cast<std::size_t>(entry)]);
      }
      for (int entry = 0; entry < 5; ++entry) {
        CHECK(plan.ShowTexts(first_event_entry + entry).trimmed() ==
              texts[static_cast<std::size_t>(entry)]);
      }
    }
  }

  TEST_CASE("in each level's breaks nobody has to be on air") {
    struct Breaks {
      int first_begins;
      int first_ends;
      int second_begins;
      int second_ends;
    };
    const std::vector<Breaks> of_levels = {
        {90, 110, 200, 220}, {150, 170, 310, 330}, {180, 210, 390, 420}};
    for (std::size_t level = 0; level < of_levels.size(); ++level) {
      CAPTURE(level);
      const Breaks& breaks = of_levels[level];
      const auto at = [](int second, char letter) {
        return LetterChange{std::chrono::seconds(second), 0, letter, Mover::Console};
      };
      const std::vector<LetterChange> silent_in_breaks = {at(0, 'R'),
                                                          at(0, 'N'),
                                                          at(breaks.first_begins, 'H'),
                                                          at(breaks.first_ends, 'N'),
                                                          at(breaks.second_begins, 'H'),
                                                          at(breaks.second_ends, 'N')};
      const auto dead_air = [&](const std::vector<LetterChange>& history) {
        return score_of(history, levels[level].parts, std::chrono::minutes(10)).dead_air;
      };
      CHECK(dead_air(silent_in_breaks) == Moment{0});
      CHECK(dead_air({at(0, 'R'), at(0, 'N'), at(10, 'H'), at(breaks.second_ends, 'N')}) ==
            std::chrono::seconds(breaks.first_begins - 10 + breaks.second_begins -
                                 breaks.first_ends));
    }
  }
}

}  // namespace
}  // namespace lineweir::practice

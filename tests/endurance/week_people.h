#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "endurance/week_exchange.h"
#include "endurance/week_studio.h"

namespace lineweir::endurance {

// Who calls a studio, 600 times an hour, and who works at its console: a screener and a host by
// turns, by keys and mouse. Every caller who is answered is typed in, and is to be logged once.
class WeekPeople {
 public:
  // The studio outlives the people.
  explicit WeekPeople(WeekStudio& studio) : studio_(studio) {}

  // Half a second of their work, and a call where one is due.
  void act();
  // Nobody rings any more; those who are on a line hang up.
  void end_all_calls();

  std::int64_t calls() const { return calls_; }
  std::int64_t without_line() const { return without_line_; }
  // The names that were typed in since the last time.
  std::vector<std::string> take_noted() { return std::exchange(noted_, {}); }

 private:
  static constexpr int turns_a_call = 12;
  static constexpr int turns_in_a_role = 24;

  void let_call();
  void let_lose_patience();
  void change_role();
  void screen();
  void type_caller(int line);
  void be_host();
  int line_with(char letter) const;

  WeekStudio& studio_;
  std::int64_t turn_ = 0;
  std::int64_t calls_ = 0;
  std::int64_t without_line_ = 0;
  std::array<std::int64_t, week_lines> call_on_{};
  std::array<std::int64_t, week_lines> noted_call_{};
  std::vector<std::string> noted_;
};

}  // namespace lineweir::endurance

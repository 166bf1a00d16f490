#pragma once

#include <array>
#include <cstdint>
#include <random>
#include <string>

#include "endurance/worked_console.h"

namespace lineweir::endurance {

// What a user does at a console whose files matter, by chance: calls that come, are typed in and
// end; settings, plans and hot lists that are changed; data that are typed and not saved. Before
// something is written it is said on the standard output what will be there, and afterwards that it
// is: lines of JSON, for whoever kills the program meanwhile.
class KillWork {
 public:
  // Numbers that this run gives begin behind that one.
  KillWork(WorkedConsole& desk, std::uint32_t seed, int first_number);

  // What the console found when it started, by its own readers.
  void tell_found();
  // Forever.
  void work();
  // Until the log has taken all that waited.
  void let_wait_end();

 private:
  void change_callers();
  void save_settings();
  void save_plan();
  void change_hot_list();
  void leave_a_draft();
  void finish_draft();

  int next() { return ++number_; }
  bool one_of(int count) { return static_cast<int>(random_() % static_cast<unsigned>(count)) == 0; }

  WorkedConsole& desk_;
  std::mt19937 random_;
  int number_;
  int line_ = 0;
  // By line; 0 where there is none.
  std::array<int, 8> callers_{};
};

}  // namespace lineweir::endurance

// Plays one show and prints its transcript: simulate_show SEED [MINUTES]. Ends with 1 if anything
// was wrong; `grep witness` finds it.

#include <iostream>

#include "simulation/seed_argument.h"
#include "simulation/show.h"

int main(int argc, char* argv[]) {
  using lineweir::simulation::seed_argument;
  const auto seed = argc > 1 ? seed_argument(argv[1]) : std::nullopt;
  const auto minutes = argc > 2 ? seed_argument(argv[2]) : std::uint64_t{60};
  if (!seed || !minutes || argc > 3) {
    std::cerr << "usage: simulate_show SEED [MINUTES]\n";
    return 2;
  }
  lineweir::simulation::Show show({.seed = *seed});
  show.run(std::chrono::minutes(*minutes));
  std::cout << show.transcript();
  return show.witness().faults().empty() ? 0 : 1;
}

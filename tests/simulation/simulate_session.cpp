// Plays sessions of one console with its server: simulate_session FIRST [LAST [MINUTES]]. A single
// seed prints its transcript, several print only what was wrong. Ends with 1 if anything was.

#include <iostream>

#include "simulation/seed_argument.h"
#include "simulation/session_run.h"

int main(int argc, char* argv[]) {
  using lineweir::simulation::seed_argument;
  const auto first = argc > 1 ? seed_argument(argv[1]) : std::nullopt;
  const auto last = argc > 2 ? seed_argument(argv[2]) : first;
  const auto minutes = argc > 3 ? seed_argument(argv[3]) : std::uint64_t{3};
  if (!first || !last || !minutes || argc > 4) {
    std::cerr << "usage: simulate_session FIRST [LAST [MINUTES]]\n";
    return 2;
  }
  bool wrong = false;
  long comparisons = 0;
  for (std::uint64_t seed = *first; seed <= *last; ++seed) {
    lineweir::simulation::SessionRun session(seed);
    session.run(static_cast<int>(*minutes));
    comparisons += session.comparisons();
    wrong = wrong || !session.faults().empty();
    if (*first == *last) std::cout << session.transcript();
    for (const std::string& fault : session.faults()) {
      std::cout << "seed " << seed << ": " << fault << '\n';
    }
  }
  std::cout << "looked " << comparisons << " times\n";
  return wrong ? 1 : 0;
}

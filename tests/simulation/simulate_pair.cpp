// Plays studios of two servers and tells what was wrong: simulate_pair FIRST LAST. With one seed
// alone it prints the transcript; `grep fault` finds it. Ends with 1 if anything was wrong.

#include <iostream>

#include "simulation/pair_run.h"
#include "simulation/seed_argument.h"

int main(int argc, char* argv[]) {
  using lineweir::simulation::seed_argument;
  const auto first = argc == 2 || argc == 3 ? seed_argument(argv[1]) : std::nullopt;
  const auto last = argc == 3 ? seed_argument(argv[2]) : first;
  if (!first || !last) {
    std::cerr << "usage: simulate_pair SEED | FIRST LAST\n";
    return 2;
  }
  long wrong = 0;
  long leads = 0;
  long compared = 0;
  for (std::uint64_t seed = *first; seed <= *last; ++seed) {
    lineweir::simulation::PairRun run({.seed = seed});
    run.run();
    if (argc == 2) std::cout << run.transcript();
    for (const std::string& fault : run.faults()) std::cerr << seed << ": " << fault << '\n';
    wrong += run.faults().empty() ? 0 : 1;
    leads += run.leads();
    compared += run.compared();
  }
  std::cerr << *last - *first + 1 << " seeds, " << wrong << " wrong, " << leads << " leads, "
            << compared << " comparisons\n";
  return wrong == 0 ? 0 : 1;
}

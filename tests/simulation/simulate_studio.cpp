// Plays one studio with its server and prints its transcript: simulate_studio SEED. Ends with 1 if
// anything was wrong; `grep fault` finds it.

#include <iostream>

#include "simulation/seed_argument.h"
#include "simulation/studio_run.h"

int main(int argc, char* argv[]) {
  using lineweir::simulation::seed_argument;
  const auto seed = argc == 2 ? seed_argument(argv[1]) : std::nullopt;
  if (!seed) {
    std::cerr << "usage: simulate_studio SEED\n";
    return 2;
  }
  lineweir::simulation::StudioRun run({.seed = *seed});
  run.run();
  std::cout << run.transcript();
  return run.faults().empty() ? 0 : 1;
}

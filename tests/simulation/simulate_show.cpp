// Plays one show and prints its transcript: simulate_show SEED [MINUTES]. Ends with 1 if anything
// was wrong; `grep witness` finds it.

#include <charconv>
#include <iostream>
#include <optional>
#include <string_view>

#include "simulation/show.h"

namespace {

std::optional<std::uint64_t> number(std::string_view text) {
  std::uint64_t value = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
  return value;
}

}  // namespace

int main(int argc, char* argv[]) {
  const auto seed = argc > 1 ? number(argv[1]) : std::nullopt;
  const auto minutes = argc > 2 ? number(argv[2]) : std::uint64_t{60};
  if (!seed || !minutes || argc > 3) {
    std::cerr << "usage: simulate_show SEED [MINUTES]\n";
    return 2;
  }
  lineweir::simulation::Show show({.seed = *seed});
  show.run(std::chrono::minutes(*minutes));
  std::cout << show.transcript();
  return show.witness().faults().empty() ? 0 : 1;
}

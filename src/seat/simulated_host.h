#pragma once

#include <array>
#include <cstdint>
#include <set>

#include "seat/simulated_person.h"

namespace lineweir::seat {

// Keeps both hybrids in use: takes the next caller when one has been free for a while, and lets go
// who has talked for long. Callers that somebody else has taken are left to him, who is quicker
// once the show has begun.
class SimulatedHost final : public SimulatedPerson {
 public:
  // The console outlives this object.
  SimulatedHost(Console& console, std::uint64_t seed);

  void sit_down() override;
  void look(Milliseconds now) override;

 private:
  struct Hybrid {
    std::string_view letters;
    Milliseconds free_since{0};
    // -1 while nobody is there whom this person has taken.
    int own_line = -1;
    Milliseconds drop_at{0};
    bool was_used = false;
  };

  void look_at(Hybrid& hybrid, Milliseconds now);
  int line_on(const Hybrid& hybrid) const;
  bool somebody_is_ready() const;

  Console& console_;
  exchange::Dice dice_;
  std::array<Hybrid, 2> hybrids_;
  Milliseconds next_act_{0};
};

}  // namespace lineweir::seat

#pragma once

#include <cstdint>
#include <vector>

#include "seat/people.h"
#include "seat/simulated_person.h"

namespace lineweir::seat {

// Answers who has rung longest, asks name, town and topic, types them field by field, and makes the
// caller ready. Writes to the host now and then.
class SimulatedScreener final : public SimulatedPerson {
 public:
  // The console outlives this object.
  SimulatedScreener(Console& console, std::uint64_t seed);

  void sit_down() override;
  void look(Milliseconds now) override;

 private:
  struct Entry {
    int entry;
    std::string_view text;
  };

  bool somebody_rings() const;
  void answer(Milliseconds now);
  void type_next(Milliseconds now);
  bool keeps_up_messages(Milliseconds now);

  Console& console_;
  exchange::Dice dice_;
  std::size_t story_;
  std::size_t message_ = 0;
  std::vector<Entry> to_type_;
  bool is_asking_ = false;
  Milliseconds next_act_{0};
  Milliseconds next_message_{0};
  int answered_ = 0;
};

}  // namespace lineweir::seat

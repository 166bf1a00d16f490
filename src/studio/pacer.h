#pragma once

#include <cstdint>
#include <deque>
#include <ratio>
#include <string>
#include <string_view>

#include "exchange/moment.h"
#include "studio/exchange_names.h"

namespace lineweir::studio {

// Lets characters out at the speed of the box's serial line, 1200 bits a second with ten bits a
// character, because a pseudo-terminal takes them at any speed.
class Pacer {
 public:
  // What the box can hold while its line is sending.
  static constexpr std::size_t capacity = 4096;

  // Queues a text behind what is still waiting. False when there is no room for all of it; then
  // nothing of it is taken, since half an item is worse than none.
  bool send(std::string_view text, Moment now);

  // Characters whose last bit is out by now become ready.
  void advance(Moment now);

  std::string take_ready();

  // When the next character is ready.
  Moment next_due() const;

 private:
  // In thirds of a millisecond both a millisecond and a character are whole numbers.
  using Tick = std::chrono::duration<std::int64_t, std::ratio<1, 3000>>;
  static constexpr Tick character_time{25};

  std::deque<char> waiting_;
  Tick first_is_out_{0};  // meaningful while anything waits
  std::string ready_;
};

}  // namespace lineweir::studio

#pragma once

#include <memory>

#include "platform/event_loop.h"
#include "seat/options.h"
#include "seat/seat_entrance.h"
#include "seat/simulated_person.h"

namespace lineweir::seat {

// Starts the console and works at it for as long as this object lives, by calls of the loop.
class SeatWork {
 public:
  // Console and loop outlive this object.
  SeatWork(Console& console, platform::EventLoop& loop, const Options& options);
  ~SeatWork();
  SeatWork(const SeatWork&) = delete;
  SeatWork& operator=(const SeatWork&) = delete;

  bool is_refused() const { return entrance_.is_refused(); }

 private:
  void look();

  platform::EventLoop& loop_;
  SeatEntrance entrance_;
  std::unique_ptr<SimulatedPerson> person_;
  bool sits_ = false;
  bool is_looking_ = false;
  platform::EventLoop::CallId next_look_ = 0;
};

}  // namespace lineweir::seat

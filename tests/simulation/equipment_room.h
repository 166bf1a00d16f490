#pragma once

#include <vector>

#include "platform/scripted/scripted_serial_port.h"
#include "platform/scripted/virtual_event_loop.h"
#include "simulation/transcript.h"
#include "studio/boxed_exchange.h"

namespace lineweir::simulation {

using platform::Milliseconds;

// The studio's exchange with an interface box for each console, on the simulation's loop. Both
// directions of a serial line take the time of 1200 bits a second.
class EquipmentRoom {
 public:
  // All that is given outlives the room.
  EquipmentRoom(platform::VirtualEventLoop& loop, Transcript& transcript,
                const studio::BoxedExchangeOptions& options);
  EquipmentRoom(const EquipmentRoom&) = delete;
  EquipmentRoom& operator=(const EquipmentRoom&) = delete;

  // From now on the port, where it is number 1, is at the other end of the box's line.
  void plug_in(int box, platform::ScriptedSerialPort& port);

  // How long nothing has been on the way between the box and its console; 0 while anything is.
  Milliseconds silence(int box) const;

  const studio::BoxedExchange& exchange() const { return exchange_; }

  // The letter that a console must hold of a line: a free and a busy one are blanks to it.
  char expected_letter(int line) const;

 private:
  struct SerialLine {
    platform::ScriptedSerialPort* port = nullptr;
    // When the last character in either direction is through.
    Milliseconds busy_until{0};
  };

  SerialLine& line_at(int box) { return lines_[static_cast<std::size_t>(box)]; }
  void carry_to_box(int box);
  void serve();

  platform::VirtualEventLoop& loop_;
  Transcript& transcript_;
  studio::BoxedExchange exchange_;
  std::vector<SerialLine> lines_;
  platform::EventLoop::CallId next_serving_ = 0;
};

}  // namespace lineweir::simulation

#pragma once

#include <string>
#include <string_view>

#include "base/event.h"

namespace lineweir::platform {

inline constexpr int comm_event_receive = 2;

// A serial port whose line settings (speed, 8 data bits, no parity, 1 stop bit) were given when it
// was made. A read takes all that is buffered, and each arrival of characters raises a data event.
//
// Opening fails with a Failure whose number tells the reason: 68 the device can't be used, 8002 the
// number names no port, 8005 somebody has it open, 8010 there is no such device.
class SerialPort {
 public:
  virtual ~SerialPort() = default;

  // 1 to 4.
  virtual int comm_port() const = 0;
  // The port must be closed; otherwise a Failure of number 8005.
  virtual void set_comm_port(int number) = 0;

  virtual bool is_open() const = 0;
  virtual void open() = 0;
  // Closing a closed port does nothing.
  virtual void close() = 0;

  // Takes all received characters. Empty while the port is closed.
  virtual std::string input() = 0;
  virtual void discard_input() = 0;

  // Queues the characters for sending. A Failure of number 8012 while the port is closed.
  virtual void output(std::string_view characters) = 0;

  // Told of each event by its number; comm_event_receive is received data. Called from the loop,
  // never from within another call of this port.
  Event<void(int comm_event)> on_comm;

  // Told when an open port has vanished and was closed: what happened, in one sentence.
  Event<void(const std::string& description)> on_lost;
};

}  // namespace lineweir::platform

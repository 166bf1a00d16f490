#pragma once

#include "boxlink/serial_buffer.h"
#include "platform/system_clock.h"

namespace lineweir {

struct Console;

// Turns the characters of the interface box into changes of the line table, of the rows and of the
// call log.
class StatusDecoder {
 public:
  explicit StatusDecoder(Console& console);

  // Set by the port's probe when it has asked for the line monitor; cleared here by the answer or
  // when none has come in time.
  bool LineMonitorWait = false;

  SerialBuffer serial_buffer;

  // Each event of the serial port; only received data is acted on.
  void Comm1_OnComm(int comm_event);

 private:
  void await_line_monitor();
  void decode();

  // The report's letter differs from the stored one.
  void process_change(int line, char letter);
  void line_freed(int line);
  void line_on_air(int line, char letter);
  void line_ready(int line);
  void line_ringing(int line);
  void line_elsewhere(int line);
  void line_at_handset_or_held(int line, char letter);
  void line_busy(int line);

  void clear_next_call_pin(int line);
  void start_clock(int line);
  void finish(int line, char letter);
  platform::DateTime now() const;

  Console& console_;
  // Data events that arrive while the handler waits for the line monitor leave their characters
  // to that wait.
  bool waiting_ = false;
};

}  // namespace lineweir

#pragma once

#include "boxlink/serial_buffer.h"

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

  Console& console_;
  // Data events that arrive while the handler waits for the line monitor leave their characters
  // to that wait.
  bool waiting_ = false;
};

}  // namespace lineweir

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

  // Whether the box itself was heard, its answer or a status report, since the port was opened:
  // what is no more than noise on the line clears LineMonitorWait in the end, but is no box.
  bool box_heard() const { return box_heard_; }

  // The port is opened: nothing was heard on it yet.
  void begin_hearing() { box_heard_ = false; }
  // The port was closed: a wait for the line monitor ends at once, as if it had never been.
  void end_wait();

  // Each event of the serial port; only received data is acted on.
  void Comm1_OnComm(int comm_event);

 private:
  class Wait;

  // Whether the box's answer has come, in time and on the port that was asked.
  bool await_line_monitor();
  void decode();
  void hear_box();

  // The report's letter differs from the stored one.
  void process_change(int line, char letter);

  Console& console_;
  bool box_heard_ = false;
  // Data events that arrive while the handler waits for the line monitor leave their characters
  // to that wait.
  bool waiting_ = false;
  // Tells a wait from one that was ended, when the handler that waits in it is reached again.
  unsigned wait_number_ = 0;
};

}  // namespace lineweir

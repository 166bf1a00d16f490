#pragma once

#include <functional>
#include "wire/serial_buffer.h"

namespace lineweir {

class CallerDataEntry;
class LineSteps;
class LinkWatch;
class SerialLink;
struct ConsoleState;

// Turns the characters of the interface box into changes of the line table, of the rows and of the
// call log.
class StatusDecoder {
 public:
  StatusDecoder(ConsoleState& state, SerialLink& serial_link, LinkWatch& link,
                CallerDataEntry& caller_data, LineSteps& line_steps);

  // Set by the port's probe when it has asked for the line monitor; cleared here by the answer or
  // when none has come in time.
  bool LineMonitorWait = false;

  SerialBuffer serial_buffer;

  // The box has said that its line monitor is on, in time and on the port that was asked.
  std::function<void()> on_line_monitor;

  // The box has reported lines, and nothing was heard of it before.
  std::function<void()> on_first_report;

  // The port was closed: a wait for the line monitor ends at once, as if it had never been.
  void end_wait();

 private:
  // Each event of the serial port; only received data is acted on.
  void Comm1_OnComm(int comm_event);
  class Wait;

  // What came of a wait for the line monitor: nothing in time, or on another port by then; the
  // answer; or lines' reports alone, which the wait passes over.
  enum class Heard { Nothing, Answer, Report };
  Heard await_line_monitor();
  bool holds_report(const std::string& received) const;
  void decode();
  void hear_box();

  // The report's letter differs from the stored one.
  void process_change(int line, char letter);

  ConsoleState& state_;
  SerialLink& serial_link_;
  LinkWatch& link_;
  CallerDataEntry& caller_data_;
  LineSteps& line_steps_;
  // Data events that arrive while the handler waits for the line monitor leave their characters
  // to that wait.
  bool waiting_ = false;
  // Tells a wait from one that was ended, when the handler that waits in it is reached again.
  unsigned wait_number_ = 0;
};

}  // namespace lineweir

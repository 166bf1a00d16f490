#pragma once

#include "link/studio_link.h"

namespace lineweir {

struct ConsoleState;

// The way over the serial port: only command words go out, and what the user enters stays at this
// seat.
class SerialLink : public StudioLink {
 public:
  explicit SerialLink(ConsoleState& state) : state_(state) {}

  void command(std::string_view handler, std::string_view word, int bank) override;
  std::string_view trouble() const override;

  // The port is opened: nothing was heard on it yet.
  void begin_hearing() { box_heard_ = false; }

  // The box itself was heard, its answer or a status report: a device that only makes noise is no
  // box.
  void hear_box() { box_heard_ = true; }
  bool box_heard() const { return box_heard_; }

 private:
  ConsoleState& state_;
  bool box_heard_ = false;
};

}  // namespace lineweir

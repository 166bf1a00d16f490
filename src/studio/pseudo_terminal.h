#pragma once

#include <string>
#include <string_view>

#include "studio/descriptor.h"

namespace lineweir::studio {

// The box's end of a pseudo-terminal, which stands for its serial port. Programs open the other end
// as a serial device. It is raw from the start, and it outlives any number of openings and closings
// there, because this side holds the other end open as well.
class PseudoTerminal {
 public:
  // Unread characters above which nobody can be reading: more than eight seconds of a full line.
  static constexpr int longest_unread = 1024;

  // Throws std::system_error if the system gives none.
  PseudoTerminal();

  const std::string& device() const { return device_; }

  // To be polled for input. Never blocks.
  int descriptor() const { return box_end_.number(); }

  // What has come, up to 4096 characters; empty if nothing has.
  std::string read();

  // Writes without ever waiting and gives the number of characters lost. With nobody reading, those
  // lost are the old ones, as with a cable that hangs in the air, so that whoever opens the device
  // later doesn't get the news of an hour ago.
  std::size_t write(std::string_view text);

 private:
  std::size_t discard_unread();

  Descriptor box_end_;
  Descriptor device_end_;
  std::string device_;
};

}  // namespace lineweir::studio

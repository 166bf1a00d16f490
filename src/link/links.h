#pragma once

#include "elements/menu_item.h"
#include "link/studio_link.h"

namespace lineweir {

struct ConsoleState;

// The ways to the studio. Which one is in use the menu "Port" says, and only this class reads it
// there: remote objects come before the socket, and without either it is the serial port.
class Links {
 public:
  Links(ConsoleState& state, StudioLink& serial, StudioLink& socket, StudioLink& remote);

  StudioLink& in_use() const;

  // The way to a server that decides the next call. Only the socket has one; it tells the user
  // where no server is connected.
  StudioLink& deciding_server() const { return socket_; }

  // The number of the way in use in the settings. Where that is the serial port it is the number
  // that is wanted: a port's, or that of another way which has come to nothing.
  int settings_code(int wanted) const;

  // The serial port was chosen: the other ways let go.
  void give_way_to_serial() const;

 private:
  ConsoleState& state_;
  StudioLink& serial_;
  StudioLink& socket_;
  StudioLink& remote_;
};

}  // namespace lineweir

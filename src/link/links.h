#pragma once

#include <vector>

#include "elements/menu_item.h"
#include "link/studio_link.h"

namespace lineweir {

struct ConsoleState;

// A way to the studio beside the serial port: the item of the menu "Port" that is checked while it
// is in use, and its number in the settings, which isn't below lowest_way_code.
struct Way {
  MenuItem& item;
  int settings_code;
  StudioLink& link;
};

// The ways to the studio. Which one is in use the menu "Port" says, and only this class reads it
// there to choose: the first of the ways whose item is checked, and without any the serial port.
class Links {
 public:
  Links(ConsoleState& state, StudioLink& serial, StudioLink& deciding_server,
        std::vector<Way> ways);

  StudioLink& in_use() const;
  bool serial_is_in_use() const { return way_in_use() == nullptr; }

  // The way to a server that decides the next call. Only the socket has one; it tells the user
  // where no server is connected.
  StudioLink& deciding_server() const { return deciding_server_; }

  // The number of the way in use in the settings. Where that is the serial port it is the number
  // that is wanted: a port's, or that of another way which has come to nothing.
  int settings_code(int wanted) const;

  // The menu's item of the way with that number in the settings; null where there is none.
  MenuItem* item_of(int settings_code) const;

  // The serial port was chosen: the other ways let go.
  void give_way_to_serial() const;

  // Another server was chosen: what the other ways hold is let go.
  void let_go_but(const MenuItem& chosen) const;

  // The menu shows none of the ways but the serial port, or but this one, as it is.
  void uncheck_ways(const MenuItem* but = nullptr) const;

 private:
  const Way* way_in_use() const;

  ConsoleState& state_;
  StudioLink& serial_;
  StudioLink& deciding_server_;
  std::vector<Way> ways_;
};

}  // namespace lineweir

#pragma once

#include <string_view>

#include "platform/client_socket.h"

namespace lineweir {

// The ways to the telephone equipment, as the menu "Port" offers them.
enum class LinkWay { None, SerialPort, Socket, RemoteObjects };

// What is known of them.
struct LinkFacts {
  LinkWay way = LinkWay::None;
  bool port_open = false;
  // The interface box has been heard since the port was opened.
  bool box_heard = false;
  int socket_state = platform::socket_closed;
  bool objects_held = false;
};

enum class LinkState { Stands, NoWayChosen, PortClosed, BoxSilent, NotConnected, NoObjects };

// Whether there is a link, and what is missing if there is none.
constexpr LinkState link_state(const LinkFacts& facts) {
  using enum LinkState;
  switch (facts.way) {
    case LinkWay::SerialPort:
      if (!facts.port_open) return PortClosed;
      return facts.box_heard ? Stands : BoxSilent;
    case LinkWay::Socket:
      return facts.socket_state == platform::socket_connected ? Stands : NotConnected;
    case LinkWay::RemoteObjects:
      return facts.objects_held ? Stands : NoObjects;
    case LinkWay::None:
      break;
  }
  return NoWayChosen;
}

// Why nothing that is pressed comes of it, in one sentence; empty for a link that stands.
constexpr std::string_view trouble_of(LinkState state) {
  switch (state) {
    case LinkState::Stands:
      return {};
    case LinkState::NoWayChosen:
      return "There is no link: choose one in the menu Port.";
    case LinkState::PortClosed:
      return "There is no link: the port is off, switch it on in the menu Port.";
    case LinkState::BoxSilent:
      // It may hear all the same.
      return "There is no link: the interface box hasn't answered. What you press is sent, and "
             "nobody knows what comes of it; check cables and settings and choose its port again.";
    case LinkState::NotConnected:
      return "There is no link: the server isn't connected.";
    case LinkState::NoObjects:
      return "There is no link: the server's objects are gone, choose Network in the menu Port.";
  }
  return {};
}

}  // namespace lineweir

#pragma once

#include <array>
#include <string>
#include <vector>

#include "platform/store.h"

namespace lineweir::server {

// A studio's lines and what is there to work them. Texts are UTF-8.
struct GroupOptions {
  // 1 to 250; no two groups have one number.
  int number = 1;
  std::string name = {};
  // 10 or 20.
  int lines = 10;
  // The kind of telephone equipment as the consoles see it, 1 to 4.
  int kind = 1;
  // "simulated", or "box:" and the device of the serial port.
  std::string exchange = "simulated";
  // Callers who come by themselves to a simulated exchange.
  double calls_per_minute = 0;
  // At most 10 characters each; lines behind the last one have their numbers, from 1.
  std::vector<std::string> line_names = {};
  // Lines that don't exist, from 1.
  std::vector<int> missing_lines = {};
  std::array<bool, 2> hybrids{true, true};
  std::array<bool, 2> positions{true, true};
  // The telephones of equipment of kind 4, by console number.
  std::vector<std::string> phone_names = {};

  bool operator==(const GroupOptions&) const = default;
};

// Who connects from the address is let in as the user without a password.
struct FixedSeat {
  std::string address;
  std::string user;

  bool operator==(const FixedSeat&) const = default;
};

// For how long the store knows who called.
struct RetentionOptions {
  // 0: for ever.
  int days = 0;
  platform::Store::Forgetting what = platform::Store::Forgetting::Callers;

  bool operator==(const RetentionOptions&) const = default;
};

struct ServerOptions {
  // Where consoles reach this server, "host:port" or "tls:host:port"; empty where other servers of
  // the store needn't know.
  std::string address = {};
  // In the order of their numbers; at least one.
  std::vector<GroupOptions> groups = {};
  std::vector<FixedSeat> fixed_seats = {};
  // Connections of seats that may be there at once, and of those from one address.
  int seats = 2000;
  int seats_of_address = 2000;
  RetentionOptions retention = {};

  bool operator==(const ServerOptions&) const = default;
};

}  // namespace lineweir::server

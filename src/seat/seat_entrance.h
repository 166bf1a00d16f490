#pragma once

#include <string>

namespace lineweir {
struct Console;
}  // namespace lineweir

namespace lineweir::seat {

// Where a seat connects to and as whom.
struct SeatLogin {
  std::string host;
  int port = 0;
  std::string user;
  std::string password;
};

// What a person does to be connected, a step at a time: opens the connection, types name and
// password, connects again after a cut, and closes notices that are in the way.
class SeatEntrance {
 public:
  // The console outlives this object.
  SeatEntrance(Console& console, SeatLogin login) : console_(console), login_(std::move(login)) {}

  // Whether there was something to do; then nothing else can be done yet.
  bool step();
  bool is_in() const;
  // The server doesn't take name and password. There is nothing more to try then: each further try
  // would keep the user locked.
  bool is_refused() const;

 private:
  void type_login();
  void choose_server();

  Console& console_;
  SeatLogin login_;
};

}  // namespace lineweir::seat

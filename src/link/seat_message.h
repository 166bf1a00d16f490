#pragma once

#include <string>

namespace lineweir {

// A message to the other seats of the studio group.
struct SeatMessage {
  // The colours in which it shows, red in the low byte.
  int back_color = 0;
  int fore_color = 0;
  std::string sender;
  std::string text;
};

// Parts a sender's name from what he wrote, on every way between the seats.
inline constexpr char sender_end = '\x03';

// Sender and text as they pass between the seats.
inline std::string with_sender(const SeatMessage& message) {
  return message.sender + sender_end + message.text;
}

}  // namespace lineweir

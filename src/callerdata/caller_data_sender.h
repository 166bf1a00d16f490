#pragma once

#include <string>

namespace lineweir {

struct Console;

// Sends callers' details to the other consoles, by whatever road the console has to the server;
// nothing goes out on the serial link. Fails as that road does.
class CallerDataSender {
 public:
  explicit CallerDataSender(Console& console) : console_(console) {}

  // The name that stamps what is sent: the operator's, without blanks and code 0 at its ends;
  // ClientId while it is blank.
  std::string sender_name() const;

  // The line's record as one text. What is trimmed of its fixed fields for it is trimmed in the
  // record too.
  std::string caller_data_text(int line);

  void send(int line, const std::string& text);

  // Tells that the line has no caller's data any more.
  void tell_data_cleared(int line) { send(line, ""); }

 private:
  Console& console_;
};

}  // namespace lineweir

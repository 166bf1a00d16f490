#pragma once

#include <functional>
#include <string>
#include <string_view>

namespace lineweir {

class Links;
struct ConsoleState;

// Sends callers' details to the other consoles, on the way that is in use. Failures are reported
// under the name of the handler that sends.
class CallerDataSender {
 public:
  CallerDataSender(ConsoleState& state, const Links& links) : state_(state), links_(links) {}

  // The name that stamps what is sent: the operator's, without blanks and code 0 at its ends;
  // ClientId while it is blank.
  std::string sender_name() const;

  // The line's record as one text. What is trimmed of its fixed fields for it is trimmed in the
  // record too.
  std::string caller_data_text(int line);

  // What the user has saved. Returns whether the text went out, which is true where nobody is to be
  // told; while nothing comes of keys the user is told why instead.
  bool send(std::string_view handler, int line, const std::string& text,
            const std::function<bool()>& still_wanted);

  // Tells that the line has no caller's data any more.
  void tell_data_cleared(std::string_view handler, int line);

 private:
  ConsoleState& state_;
  const Links& links_;
};

}  // namespace lineweir

#pragma once

#include <string>

namespace lineweir {

class CallLog;
class DisplayOptions;
struct ConsoleState;

// The user names the last column, which is a field of the call log too.
class UserFieldTitle {
 public:
  UserFieldTitle(ConsoleState& state, DisplayOptions& display, CallLog& call_log);

 private:
  void UserRename_Click();

  // False, with a message, where the log's column can't be renamed.
  bool rename_in_log(const std::string& title);

  ConsoleState& state_;
  DisplayOptions& display_;
  CallLog& call_log_;
};

}  // namespace lineweir

#pragma once

#include <string>
#include <vector>

#include "platform/remote_objects.h"

namespace lineweir {

class LineEvents;
class MessageDisplay;
class NextCaller;
class PhoneCommands;
class ReceivedData;
struct ConsoleState;

// CBClientClass: the object that the server of the remote objects calls. Calls come from the loop,
// between events, as any other event. A method that it doesn't have is passed over.
class ClientCallback {
 public:
  ClientCallback(ConsoleState& state, PhoneCommands& phone, ReceivedData& received_data,
                 LineEvents& line_events, NextCaller& next_caller, MessageDisplay& display);

 private:
  using Arguments = std::vector<platform::RemoteValue>;

  struct Method {
    std::string_view name;
    void (ClientCallback::*run)(const Arguments& arguments);
  };
  static const Method methods[];

  void called(const std::string& method, const Arguments& arguments);

  // A caller's details, or that a line has none any more.
  void ReturnCallerData(const Arguments& arguments);
  // A word of the equipment, or the status text of all lines.
  void ReturnCommand(const Arguments& arguments);
  void ReturnMessageData(const Arguments& arguments);
  void ReturnNextCall(const Arguments& arguments);

  ConsoleState& state_;
  PhoneCommands& phone_;
  ReceivedData& received_data_;
  LineEvents& line_events_;
  NextCaller& next_caller_;
  MessageDisplay& display_;
};

}  // namespace lineweir

#pragma once

#include <string_view>

namespace lineweir {

class KnownCallers;
class LineEvents;
class LineSteps;
class NextCaller;
class PhoneCommands;
class ReceivedData;
class ServerLink;
struct ConsoleState;
struct ServerPacket;

// What the server tells of the lines: their states, the callers' details, the next call. A line
// that this console doesn't have is passed over.
class ReceivedLines {
 public:
  ReceivedLines(ConsoleState& state, ServerLink& server, PhoneCommands& phone,
                ReceivedData& received_data, NextCaller& next_caller, LineSteps& line_steps,
                LineEvents& line_events, KnownCallers& known_callers);

 private:
  void SrvFullStatus(const ServerPacket& packet);
  void SrvLineStatus(const ServerPacket& packet);
  void SrvCallerData(const ServerPacket& packet);
  void SrvNextCall(const ServerPacket& packet);

  // With equipment of kind 2 details of a held caller come from the screener, who has done with
  // him.
  void count_as_screened(int line);
  // As soon as the report comes, since what is told behind it may be of the next caller.
  void forget_known_where_free(std::string_view status_text);
  bool has_line(const ServerPacket& packet) const;

  ConsoleState& state_;
  PhoneCommands& phone_;
  ReceivedData& received_data_;
  NextCaller& next_caller_;
  LineSteps& line_steps_;
  LineEvents& line_events_;
  KnownCallers& known_callers_;
};

// The letter of one line's report: a position's code, 128 and its number, in place of "P" where the
// server tells which position picked up; "C" in place of "N" on the conference hybrid.
char reported_letter_of(const ServerPacket& packet, bool server_decides);

}  // namespace lineweir

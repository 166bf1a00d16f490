#pragma once

#include <string>
#include <string_view>

#include "wire/server_packet_codec.h"

namespace lineweir {

class CallerDataEntry;
class ServerLink;
struct ConsoleState;

// What a login exchange comes to.
enum class LoginResult { Accepted = 0, Rejected = 1, NoAnswer = 2 };

// The check of the console's name and password by the server.
class LoginExchange {
 public:
  LoginExchange(ConsoleState& state, ServerLink& server, CallerDataEntry& caller_data);

  // What the last received command left; an exchange clears it and waits for its own.
  int LastReplyCode = 0;

  // The text scrambled with the seconds of the present time; empty, and reported, where a
  // character can't be scrambled.
  std::string TextWrit_PassEncode(std::string_view text) const;

  // The check without a dialog, with the name and password that the console holds, or with none
  // if Skip: then the server decides by the connection alone. Lets events run until the answer is
  // there, at most 20 seconds, 2000 while the trace is on; without one the user is told.
  LoginResult TextWrit_PasswordA(bool Skip);

  // Asks for the rights of the user in another group.
  void RequestAccessRights(int group);

 private:
  void receive_check_result(const ServerPacket& answer);
  LoginResult await_check_result();
  void enter_group_of_profile();
  std::string credentials() const;

  ConsoleState& state_;
  ServerLink& server_;
  CallerDataEntry& caller_data_;
};

}  // namespace lineweir

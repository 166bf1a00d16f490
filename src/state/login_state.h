#pragma once

#include <string>

#include "base/fixed_text.h"

namespace lineweir {

inline constexpr std::size_t user_name_length = 20;
inline constexpr std::size_t password_length = 15;

// Who works at this console, and where its servers are.
struct LoginState {
  FixedText<user_name_length> UserName;
  FixedText<password_length> UserPassword;
  // The name of the last login, shown on the main form.
  std::string DisplayUserName;
  // The address as the user types it, which may name several (state/server_addresses.h), and the
  // port of those that have none of their own.
  std::string ServerHost = "127.0.0.1";
  int ServerPort = 2001;
  // The address and the port of the last session's server; empty before the first one.
  std::string SessionServer;
  // Which of several servers the console is connected to, and since when.
  std::string ServerNow;

  // What the server granted at the last login: one character of flags each, and the text in which
  // it keeps the user's options.
  std::string UserRights;
  std::string ProfileBlock;
  // The next profile is passed over, as the user has just chosen a group by hand.
  bool SkipProfile = false;
  // Set while the server is heard from; the loss of the server is told only then.
  bool ServerAlive = false;
  // False from the moment in which a connection is asked for until its session begins, and from the
  // leave of a studio group until the session in the next one.
  bool SessionBegun = true;
  // Between two groups nobody knows what lines a key would act on.
  bool BetweenGroups = false;
  // The group in which the console was before the present one; 0 where it was in none.
  int GroupLeft = 0;
  // The connection is new and its server hasn't been asked for the groups' names.
  bool GroupNamesWanted = false;
  // Which answer came last (serverlink/reply_code.h).
  int LastReplyCode = 0;
  // A server was asked for its time together with the login, to see whether it lives. Its answer
  // tells nothing else.
  bool TimeAskedAtLogin = false;
  // How often the server was asked for its time since it last told it.
  int MissedPolls = 0;
  // The entry of MessageGroupSelector, from 0, that the server sends the user to.
  int ForcedGroup = 0;
};

}  // namespace lineweir

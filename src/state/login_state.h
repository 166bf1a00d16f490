#pragma once

#include <string>

#include "base/fixed_text.h"

namespace lineweir {

// Who works at this console, and where its server is.
struct LoginState {
  FixedText<20> UserName;
  FixedText<15> UserPassword;
  // The name of the last login, shown on the main form.
  std::string DisplayUserName;
  std::string ServerHost = "127.0.0.1";
  int ServerPort = 2001;

  // What the server granted at the last login: one character of flags each, and the text in which
  // it keeps the user's options.
  std::string UserRights;
  std::string ProfileBlock;
  // Set while the server is heard from; the loss of the server is told only then.
  bool ServerAlive = false;
};

}  // namespace lineweir

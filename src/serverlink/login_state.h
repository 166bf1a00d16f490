#pragma once

#include <string>

#include "core/fixed_text.h"

namespace lineweir {

// Who works at this console, and where its server is.
struct LoginState {
  FixedText<20> UserName;
  FixedText<15> UserPassword;
  // The name of the last login, shown on the main form.
  std::string DisplayUserName;
  std::string RemoteHost = "127.0.0.1";
  int RemotePort = 2001;
};

}  // namespace lineweir

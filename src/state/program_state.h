#pragma once

#include <string>

#include "base/fixed_text.h"

namespace lineweir {

// What belongs to the program as a whole and to no subsystem.
struct ProgramState {
  // The command line "D": the trace is written and F3 shows it.
  bool DebugMode = false;
  // The command line "E": lines that other equipment has taken may be commanded all the same.
  bool EmptyLineOverride = false;
  std::string StartDirectory;
  // True from the load of MyMsgbox until it is closed.
  bool MessageShown = false;
  std::string ClientId;

  // The studio group, from 1, and which console of the group this is.
  int GroupNumber = 1;
  int ConsoleNumber = 0;

  // Which hybrids exist at this console.
  bool MainHybridOn = true;
  bool ConfHybridOn = true;

  // Rights; true until a server says otherwise.
  bool CallerDataAllowed = true;
  bool MessagesAllowed = true;
  bool CallerFlagAllowed = true;
  bool RemoteNextAllowed = true;

  // Whether one may log in by hand. In practice there are no users, and a login would leave the
  // practice port for a server that can't be reached.
  bool HasUsers = true;

  // The name that stamps caller data; the user's, once a login was accepted while it was blank.
  std::string OperatorName;

  // The hot list's file.
  std::string MessageFile;

  // Rows now shown, at most LineCount.
  int VisibleLines = 10;
};

}  // namespace lineweir

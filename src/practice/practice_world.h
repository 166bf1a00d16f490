#pragma once

#include "platform/services.h"
#include "practice/closed_ways.h"
#include "practice/kept_apart.h"
#include "practice/practice_port.h"

namespace lineweir::practice {

// All that a practice console uses of the world: of the workstation its loop, its clock and its
// folder, and for the rest a port with callers behind it and ways that lead nowhere.
class PracticeWorld {
 public:
  // What the real services stand for outlives this object. The folder is the one to which the paths
  // of their files are relative.
  PracticeWorld(const platform::Services& real, const std::filesystem::path& folder);

  platform::Services services();
  PracticePort& port() { return port_; }

 private:
  platform::Services real_;
  OwnFolder folder_;
  KeptFiles files_;
  KeptUserFiles user_files_;
  KeptDatabases databases_;
  ReadClock clock_;
  PracticePort port_;
  ClosedPort switch_console_;
  ClosedSocket socket_;
  NoRemoteObjects remote_objects_;
};

}  // namespace lineweir::practice

#pragma once

#include <string>
#include <vector>

namespace lineweir {

enum class FindingState { Good, Note, Trouble };

// One thing that was looked at, in sentences for the user.
struct Finding {
  FindingState state;
  std::string subject;
  std::string seen;
  // What to do; empty where nothing is to be done.
  std::string advice = {};
};

// What a serial port leads to by the settings.
enum class PortUse { Box, SwitchConsole, None };

// A serial port as the system shows it.
struct PortSeen {
  std::string device;
  bool exists = false;
  bool may_be_used = false;
  PortUse use = PortUse::Box;
  // The console's port of which it is the device.
  int number = 1;
};

// What a connection to a server in the settings came to.
struct ServerSeen {
  // As the settings have it, with "tls:" in front where it is so.
  std::string host;
  int port = 0;
  // Empty where somebody listens there, and until that is known.
  std::string failure = {};
};

struct FileSeen {
  std::string path;
  bool exists = false;
  bool may_be_written = false;
};

// Everything that a diagnosis looks at, as it was found.
struct Surroundings {
  std::string program_version;
  std::string qt_version;
  std::string system;
  std::string user;
  std::string character_set;
  // Each with its size and scale; empty where there is no display.
  std::vector<std::string> screens;
  FileSeen folder;
  FileSeen settings;
  // The log that the settings name; no path where they name none.
  FileSeen log;
  // Those that the settings choose, by the names that the console opens, and then whatever else is
  // there.
  std::vector<PortSeen> ports;
  // None where there are no settings.
  std::vector<ServerSeen> servers;
  bool session_bus = false;
  bool system_bus = false;
};

std::vector<Finding> findings_of(const Surroundings& seen);

// As a text of lines; the advice stands below what it is for.
std::string text_of(const std::vector<Finding>& findings);

}  // namespace lineweir

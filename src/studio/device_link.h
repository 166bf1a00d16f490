#pragma once

#include <string>

namespace lineweir::studio {

// A symbolic link to the device under a name that stays the same from run to run. Removed at the
// end, unless it has come to point elsewhere.
class DeviceLink {
 public:
  // Replaces a link that a studio which didn't end well has left: one that points nowhere, or to
  // the very device, whose number the system has given out again. Throws std::runtime_error,
  // with the path in the message, on anything else in the way, and if it can't be made.
  DeviceLink(std::string path, std::string device);
  ~DeviceLink();

  DeviceLink(const DeviceLink&) = delete;
  DeviceLink& operator=(const DeviceLink&) = delete;

 private:
  std::string path_;
  std::string device_;
};

}  // namespace lineweir::studio

#pragma once

#include <map>
#include <string>

#include "platform/files.h"

namespace lineweir {

// The certificates that the user has trusted, by the server and the port: lines
// "TrustedServer HOST:PORT=FINGERPRINT" of the file beside the settings, whose other lines stay.
class TrustedServers {
 public:
  // The files outlive this object.
  explicit TrustedServers(platform::Files& files);

  // The fingerprint that is trusted, or an empty one.
  std::string fingerprint(const std::string& host, int port) const;

  // Both hold for this run of the program at least; where the file can't be written they are a
  // Failure.
  void trust(const std::string& host, int port, const std::string& fingerprint);
  void forget(const std::string& host, int port);

 private:
  void keep(const std::string& server, const std::string& fingerprint);

  platform::Files& files_;
  // By names in small letters.
  std::map<std::string, std::string> trusted_;
};

}  // namespace lineweir

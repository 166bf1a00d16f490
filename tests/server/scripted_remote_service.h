#pragma once

#include <string>
#include <vector>

#include "platform/remote_service.h"

namespace lineweir::server {

// A bus without callers: the test calls, and notes what is called of its objects.
class ScriptedRemoteService final : public platform::RemoteService {
 public:
  struct Told {
    std::string caller;
    std::string object;
    std::string member;
    platform::RemoteArguments arguments;

    bool operator==(const Told&) const = default;
  };

  void tell(const std::string& caller, const std::string& object, const std::string& member,
            const platform::RemoteArguments& arguments) override {
    told.push_back({caller, object, member, arguments});
  }

  // Nothing where the call was refused, or nobody publishes anything.
  std::optional<platform::RemoteArgument> call(const std::string& caller, const std::string& member,
                                               const platform::RemoteArguments& arguments) {
    if (!on_call) return std::nullopt;
    return on_call(caller, member, arguments);
  }

  std::vector<Told> told;
};

}  // namespace lineweir::server

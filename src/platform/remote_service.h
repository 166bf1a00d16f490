#pragma once

#include <functional>
#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace lineweir::platform {

// A value of a remote call. Texts are those of the frames: one byte a character.
using RemoteArgument = std::variant<int, bool, std::string>;
using RemoteArguments = std::vector<RemoteArgument>;

// Objects that a program publishes for others to call, and what it calls of theirs. Members are
// those that docs/protocol.md tells under "Remote objects".
class RemoteService {
 public:
  virtual ~RemoteService() = default;

  // Somebody calls a member of a published object. `caller` is his unique name, which holds as long
  // as he is there. The result is the member's, a plain `true` where it has none; nothing refuses
  // the call. The arguments have the member's types. A client's object is its path.
  std::function<std::optional<RemoteArgument>(const std::string& caller, const std::string& member,
                                              const RemoteArguments& arguments)>
      on_call;

  // A caller has left.
  std::function<void(const std::string& caller)> on_gone;

  // Calls a member of `object` of a caller, and waits for nothing. Calls to one caller come in
  // their order.
  virtual void tell(const std::string& caller, const std::string& object, const std::string& member,
                    const RemoteArguments& arguments) = 0;
};

}  // namespace lineweir::platform

#include "platform/scripted/scripted_remote_objects.h"

#include <utility>

#include "base/failure.h"

namespace lineweir::platform {

class ScriptedRemoteObjects::Object final : public RemoteObject {
 public:
  Object(ScriptedRemoteObjects& owner, std::string name) : owner_(owner), name_(std::move(name)) {}

  RemoteValue call(std::string_view member, const std::vector<RemoteValue>& arguments) override {
    return owner_.use({name_, std::string(member), arguments});
  }

  void tell(std::string_view member, const std::vector<RemoteValue>& arguments,
            Failed /*failed*/) override {
    owner_.use({name_, std::string(member), arguments});
  }

 private:
  ScriptedRemoteObjects& owner_;
  std::string name_;
};

std::unique_ptr<RemoteObject> ScriptedRemoteObjects::create(const std::string& class_name) {
  require_presence();
  // The whole name where it has no dot.
  return std::make_unique<Object>(*this, class_name.substr(class_name.rfind('.') + 1));
}

void ScriptedRemoteObjects::set_result(const std::string& member, const RemoteValue& value) {
  results_[member] = value;
}

void ScriptedRemoteObjects::call_back(const std::string& method,
                                      const std::vector<RemoteValue>& arguments) {
  loop_.schedule(Milliseconds{0}, [this, method, arguments] { on_callback(method, arguments); });
}

void ScriptedRemoteObjects::tell_presence(bool answers) {
  present_ = answers;
  loop_.schedule(Milliseconds{0}, [this, answers] { on_presence(answers); });
}

std::vector<RemoteCall> ScriptedRemoteObjects::take_calls() { return std::exchange(calls_, {}); }

void ScriptedRemoteObjects::require_presence() const {
  if (!present_) {
    throw Failure(failure_number::no_such_class, "The program of the remote objects isn't there");
  }
}

RemoteValue ScriptedRemoteObjects::use(const RemoteCall& call) {
  require_presence();
  const auto result = results_.find(call.member);
  calls_.push_back(call);
  if (on_use) on_use(call.member);
  return result == results_.end() ? RemoteValue{} : result->second;
}

}  // namespace lineweir::platform

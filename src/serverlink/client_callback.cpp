#include "serverlink/client_callback.h"

#include "core/console.h"
#include "core/guard.h"
#include "core/integer16.h"

namespace lineweir {
namespace {

// An argument of a call; one that is missing or of another type is a Failure of number 13.
template <class T>
const T& argument(const std::vector<platform::RemoteValue>& arguments, std::size_t place) {
  const T* value = place < arguments.size() ? std::get_if<T>(&arguments[place]) : nullptr;
  if (value == nullptr) throw Failure(failure_number::type_mismatch, "Type mismatch");
  return *value;
}

}  // namespace

const ClientCallback::Method ClientCallback::methods[] = {
    {"ReturnCallerData", &ClientCallback::ReturnCallerData},
    {"ReturnCommand", &ClientCallback::ReturnCommand},
    {"ReturnNextCall", &ClientCallback::ReturnNextCall},
};

ClientCallback::ClientCallback(Console& console) : console_(console) {
  console.services.remote_objects.on_callback =
      [this](const std::string& method, const Arguments& arguments) { called(method, arguments); };
}

void ClientCallback::called(const std::string& name, const Arguments& arguments) {
  for (const Method& method : methods) {
    if (method.name != name) continue;
    guard(console_, "CBClientClass_" + name, [&] { (this->*method.run)(arguments); });
  }
}

void ClientCallback::ReturnCallerData(const Arguments& arguments) {
  // The group isn't looked at: the server sends only what belongs to this one.
  console_.received_data.ReturnCallerData(argument<std::string>(arguments, 0),
                                          integer16(argument<std::int64_t>(arguments, 1)));
}

void ClientCallback::ReturnCommand(const Arguments& arguments) {
  const std::string& command = argument<std::string>(arguments, 0);
  if (command.starts_with('U')) {
    console_.phone.UCommand(command);
  } else {
    console_.line_events.apply_soon(command);
  }
}

void ClientCallback::ReturnNextCall(const Arguments& arguments) {
  const int line = integer16(argument<std::int64_t>(arguments, 0));
  const int group = integer16(argument<std::int64_t>(arguments, 1));
  console_.next_caller.ReturnNextCall(line, group);
}

}  // namespace lineweir

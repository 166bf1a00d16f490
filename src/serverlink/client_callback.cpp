#include "serverlink/client_callback.h"

#include "base/integer16.h"
#include "base/integer32.h"
#include "callcontrol/next_caller.h"
#include "callcontrol/phone_command.h"
#include "callerdata/received_data.h"
#include "messages/message_display.h"
#include "serverlink/line_events.h"
#include "serverlink/remote_objects_link.h"
#include "state/console_state.h"
#include "state/guard.h"
#include "state/wire.h"

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
    {"ReturnMessageData", &ClientCallback::ReturnMessageData},
    {"ReturnNextCall", &ClientCallback::ReturnNextCall},
};

ClientCallback::ClientCallback(ConsoleState& state, PhoneCommands& phone,
                               ReceivedData& received_data, LineEvents& line_events,
                               NextCaller& next_caller, MessageDisplay& display)
    : state_(state),
      phone_(phone),
      received_data_(received_data),
      line_events_(line_events),
      next_caller_(next_caller),
      display_(display) {
  wire(
      state.services.remote_objects.on_callback, state_.trace, callback_class,
      [this](const std::string& method, const Arguments& arguments) { called(method, arguments); });
}

void ClientCallback::called(const std::string& name, const Arguments& arguments) {
  for (const Method& method : methods) {
    if (method.name != name) continue;
    guard(state_.trace, callback_class + ("_" + name), [&] { (this->*method.run)(arguments); });
  }
}

void ClientCallback::ReturnCallerData(const Arguments& arguments) {
  // The group isn't looked at: the server sends only what belongs to this one.
  const std::string& data = argument<std::string>(arguments, 0);
  const int line = integer16(argument<std::int64_t>(arguments, 1));
  // The call whose end came before is logged with what its row still shows, and the data of the
  // next one aren't cleared with it.
  line_events_.apply_change_of(line - 1);
  received_data_.ReturnCallerData(data, line);
}

void ClientCallback::ReturnCommand(const Arguments& arguments) {
  const std::string& command = argument<std::string>(arguments, 0);
  if (command.starts_with('U')) {
    phone_.UCommand(command);
  } else {
    line_events_.apply_soon(command);
  }
}

void ClientCallback::ReturnMessageData(const Arguments& arguments) {
  display_.ReturnMessageData(argument<std::string>(arguments, 0),
                             integer16(argument<std::int64_t>(arguments, 1)),
                             integer32(argument<std::int64_t>(arguments, 2)),
                             integer32(argument<std::int64_t>(arguments, 3)));
}

void ClientCallback::ReturnNextCall(const Arguments& arguments) {
  const int line = integer16(argument<std::int64_t>(arguments, 0));
  const int group = integer16(argument<std::int64_t>(arguments, 1));
  // A letter that came before the choice must not end it.
  if (group == state_.program.GroupNumber) line_events_.apply_change_of(line - 1);
  next_caller_.ReturnNextCall(line, group);
}

}  // namespace lineweir

#include "serverlink/remote_session.h"

#include "core/console.h"
#include "core/guard.h"
#include "core/integer16.h"
#include "core/text.h"
#include "core/window_caption.h"

namespace lineweir {
namespace {

using platform::RemoteValue;

constexpr auto commands_class = "Quorlink.SerialInput";
constexpr auto registration_class = "Quorlink.CBServerClass";
// The transport gives the server the console's call-back object for this name.
constexpr auto callback_class = "CBClientClass";

constexpr std::size_t digits_of_a_line = 2;

bool truth(const RemoteValue& value) {
  const bool* flag = std::get_if<bool>(&value);
  return flag != nullptr && *flag;
}

std::string text(const RemoteValue& value) {
  const std::string* characters = std::get_if<std::string>(&value);
  return characters == nullptr ? std::string() : *characters;
}

int number(const RemoteValue& value) {
  if (const auto* whole = std::get_if<std::int64_t>(&value)) return integer16(*whole);
  return leading_number(text(value));
}

}  // namespace

RemoteSession::RemoteSession(Console& console) : console_(console) {
  console.Lineweir.NetworkConnectionOption.on_click = [this] { NetworkConnectionOption_Click(); };
}

void RemoteSession::NetworkConnectionOption_Click() {
  MainForm& form = console_.Lineweir;
  const auto fail = [&](std::string_view message) {
    console_.messages.ShowMessage(message);
    form.NetworkConnectionOption.checked = false;
  };
  attempt(
      [&] {
        form.mouse_pointer = pointer_hourglass;
        console_.port.close();
        for (int number = 1; number <= 4; ++number) form.Com(number).checked = false;
        form.NetworkConnectionOption.checked = true;
        form.WinsockMenu.checked = false;
        console_.remote.SerialInputObject = console_.services.remote_objects.create(commands_class);
        console_.remote.CallbackServer =
            console_.services.remote_objects.create(registration_class);
        check_present_group(console_);
        renew_window_caption(console_);
        connected = truth(console_.remote.CallbackServer->call(
            "AddObjectReference", {callback_class, std::int64_t{console_.program.GroupNumber}}));
        if (!connected) return fail("Connect Failed");
        take_studio_state();
      },
      [&](const Failure& failure) {
        report_failure(console_, "Lineweir_NetworkConnectionOption_Click", failure);
        fail(failure.number() == failure_number::no_such_class ? "Cannot find server"
                                                               : "Connect Failed");
      });
  if (!form.NetworkConnectionOption.checked) {
    connected = false;
    console_.remote.SerialInputObject.reset();
    console_.remote.CallbackServer.reset();
    console_.port.want_other_way(connection_remote_objects);
    console_.port.show_as_way();
  }
  form.mouse_pointer = pointer_default;
  console_.link.review();
}

void RemoteSession::NetworkDisconnect() {
  console_.Lineweir.Timer4.enabled = false;
  attempt(
      [&] {
        const bool dropped = console_.remote.CallbackServer &&
                             truth(console_.remote.CallbackServer->call(
                                 "DropObjectReference",
                                 {callback_class, std::int64_t{console_.program.GroupNumber}}));
        if (dropped) {
          connected = false;
          console_.remote.CallbackServer.reset();
        } else {
          console_.messages.ShowMessage(
              "Disconnect Failed - Please inform the Network Administrator that the Patch Bay "
              "Server Software (Ostrapatch) may need to be restarted!!");
        }
      },
      [&](const Failure& failure) {
        report_failure(console_, "Lineweir_NetworkDisconnect", failure);
        console_.messages.ShowMessage("Unable to release Server reference. Retry later. ");
      });
  console_.remote.SerialInputObject.reset();
  console_.link.review();
}

void RemoteSession::take_studio_state() {
  MainForm& form = console_.Lineweir;
  platform::RemoteObject& server = console_.remote.serial_input();
  const std::vector<RemoteValue> group = {std::int64_t{console_.program.GroupNumber}};
  console_.line_events.TheStatusText = text(server.call("OutputSerialPort", group));
  console_.lines.ThePhoneFlag = number(server.call("GetDimType", group));
  console_.modes.follow_equipment();
  name_lines(text(server.call("GetLineNumbers", group)));
  console_.lines.FreshConnect = true;
  form.Timer4.enabled = true;
  form.Timer1.enabled = true;
}

void RemoteSession::name_lines(const std::string& numbers) {
  MainForm& form = console_.Lineweir;
  for (int line = 0; line < console_.lines.LineCount; ++line) {
    const std::size_t place = digits_of_a_line * static_cast<std::size_t>(line);
    const bool named = form.DimLineNumMenu.checked && place + digits_of_a_line <= numbers.size();
    form.LineNumb(line).caption =
        std::to_string(named ? leading_number(numbers.substr(place, digits_of_a_line)) : line + 1);
  }
}

}  // namespace lineweir

#include "serverlink/remote_objects_link.h"

#include <cstdint>
#include <string>

#include "link/seat_message.h"
#include "serverlink/held_objects.h"
#include "state/console_state.h"
#include "state/guard.h"

namespace lineweir {

void RemoteObjectsLink::tell(std::string_view handler, std::string_view member,
                             const std::vector<platform::RemoteValue>& arguments) {
  objects_.serial_input().tell(member, arguments,
                               [this, name = std::string(handler)](const Failure& failure) {
                                 report_failure(state_.trace, name, failure);
                               });
}

void RemoteObjectsLink::command(std::string_view handler, std::string_view word, int /*bank*/) {
  bool word_written = false;
  socket_trap(state_, handler, [&] {
    const auto write = [&](std::string_view text) {
      tell(handler, "InputSerialPort",
           {std::int64_t{state_.program.GroupNumber}, std::string(text)});
    };
    if (!word_written) write(word);
    word_written = true;
    write("");
  });
}

void RemoteObjectsLink::next_call(std::string_view handler, int line) {
  socket_trap(state_, handler, [&] {
    tell(handler, "SetNextCall",
         {std::int64_t{line + 1}, std::int64_t{state_.program.GroupNumber}});
  });
}

bool RemoteObjectsLink::caller_data(std::string_view handler, int line, std::string_view text,
                                    const std::function<bool()>& still_wanted) {
  return socket_trap(state_, handler, [&] {
    if (still_wanted && !still_wanted()) return;
    tell(handler, "CallerDataServer",
         {std::int64_t{line + 1}, std::int64_t{state_.program.GroupNumber}, std::string(text)});
  });
}

bool RemoteObjectsLink::message(std::string_view handler, const SeatMessage& message) {
  if (objects_.SerialInputObject == nullptr) {
    state_.messages.ShowMessage(trouble());
    return false;
  }
  const int group = state_.program.GroupNumber;
  bool sent = false;
  socket_trap(state_, handler, [&] {
    // Between two tries the console may have gone to another group, for which it wasn't written.
    if (state_.program.GroupNumber != group) return;
    // The sender's text is his again where this comes to nothing, so that it is waited for.
    objects_.serial_input().call("MessageGroupData",
                                 {std::int64_t{group}, std::int64_t{message.back_color},
                                  std::int64_t{message.fore_color}, with_sender(message)});
    sent = true;
  });
  return sent;
}

void RemoteObjectsLink::set_silence(std::string_view sentence) {
  silence_ = sentence.empty() ? std::string() : std::string(sentence) + ".";
  Label& banner = state_.Lineweir.ServerSilence;
  if (!sentence.empty()) banner.caption = sentence;
  banner.visible = !sentence.empty();
}

bool RemoteObjectsLink::reconnect() {
  if (!on_reconnect) return false;
  on_reconnect();
  return true;
}

std::string_view RemoteObjectsLink::trouble() const {
  if (is_silent()) return silence_;
  if (objects_.SerialInputObject != nullptr && !objects_.connected) {
    return "There is no link: the server has no reference to this console, choose Network in the "
           "menu Port.";
  }
  if (objects_.SerialInputObject != nullptr) return {};
  return "There is no link: the server's objects are gone, choose Network in the menu Port.";
}

bool RemoteObjectsLink::leave_group(std::string_view handler) {
  bool left = false;
  attempt(
      [&] {
        if (!objects_.CallbackServer) {
          throw Failure(failure_number::object_not_set, "The remote objects are not connected");
        }
        objects_.CallbackServer->call("DropObjectReference",
                                      {callback_class, std::int64_t{state_.program.GroupNumber}});
        left = true;
      },
      [&](const Failure& failure) {
        report_failure(state_.trace, handler, failure);
        state_.messages.ShowMessage("Unable to release Server reference. Retry later. ");
      });
  return left;
}

GroupEntry RemoteObjectsLink::enter_group() {
  return on_enter_group && on_enter_group() ? GroupEntry::Entered : GroupEntry::NotEntered;
}

void RemoteObjectsLink::line_names(std::string_view handler) {
  if (!on_line_names) return;
  attempt(on_line_names,
          [&](const Failure& failure) { report_failure(state_.trace, handler, failure); });
}

void RemoteObjectsLink::give_way(bool was_chosen) {
  if (was_chosen) NetworkDisconnect();
}

void RemoteObjectsLink::let_go() {
  if (objects_.CallbackServer) {
    attempt(
        [&] {
          objects_.CallbackServer->tell("DropObjectReference",
                                        {callback_class, std::int64_t{state_.program.GroupNumber}},
                                        {});
        },
        [](const Failure&) {});
  }
  if (is_silent()) set_silence({});
  objects_.release();
}

void RemoteObjectsLink::NetworkDisconnect() {
  state_.Lineweir.Timer4.enabled = false;
  // A server that is lost gives no answer, and the user knows.
  if (is_silent()) return let_go();
  attempt(
      [&] {
        const bool dropped =
            objects_.CallbackServer &&
            is_true(objects_.CallbackServer->call(
                "DropObjectReference", {callback_class, std::int64_t{state_.program.GroupNumber}}));
        if (dropped) {
          objects_.connected = false;
          objects_.CallbackServer.reset();
        } else {
          state_.messages.ShowMessage(
              "Disconnect Failed - Please inform the Network Administrator that the Patch Bay "
              "Server Software (Ostrapatch) may need to be restarted!!");
        }
      },
      [&](const Failure& failure) {
        report_failure(state_.trace, "Lineweir_NetworkDisconnect", failure);
        state_.messages.ShowMessage("Unable to release Server reference. Retry later. ");
      });
  objects_.SerialInputObject.reset();
}

}  // namespace lineweir

#pragma once

#include <functional>
#include <string>
#include <vector>

#include "link/studio_link.h"
#include "platform/remote_objects.h"

namespace lineweir {

struct ConsoleState;
class HeldObjects;

// The class of the object that the server calls: the transport gives the server the console's
// call-back object for this name.
inline constexpr auto callback_class = "CBClientClass";

// The way over the server's remote objects, in whose members lines count from 1.
class RemoteObjectsLink : public StudioLink {
 public:
  RemoteObjectsLink(ConsoleState& state, HeldObjects& objects) : state_(state), objects_(objects) {}

  // The server is taken for lost, and why in one sentence; or it is there again, with the empty
  // text. The window says so.
  void set_silence(std::string_view sentence);
  bool is_silent() const { return !silence_.empty(); }

  void command(std::string_view handler, std::string_view word, int bank) override;
  void next_call(std::string_view handler, int line) override;
  HandPick hand_pick() const override { return HandPick::PresentChoiceTold; }
  bool caller_data(std::string_view handler, int line, std::string_view text,
                   const std::function<bool()>& still_wanted) override;
  bool carries_messages() const override { return true; }
  bool message(std::string_view handler, const SeatMessage& message) override;
  bool leave_group(std::string_view handler) override;
  GroupEntry enter_group() override;
  void line_names(std::string_view handler) override;
  void give_way(bool was_chosen) override;
  void let_go() override;
  std::string_view trouble() const override;
  bool polls_server() const override { return true; }
  bool locks_keys() const override { return is_silent(); }
  bool reconnect() override;
  void leave() override { NetworkDisconnect(); }

  void NetworkDisconnect();

  // What the session does in another group, and where the names of the lines are wanted. The first
  // returns whether the server holds a reference to this console there.
  std::function<bool()> on_enter_group;
  std::function<void()> on_line_names;

  // The user wants the lost server back.
  std::function<void()> on_reconnect;

 private:
  // A member of SerialInputObject without a result; what comes of it in the end is reported under
  // the handler's name.
  void tell(std::string_view handler, std::string_view member,
            const std::vector<platform::RemoteValue>& arguments);

  ConsoleState& state_;
  HeldObjects& objects_;
  std::string silence_;
};

}  // namespace lineweir

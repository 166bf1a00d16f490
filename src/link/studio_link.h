#pragma once

#include <functional>
#include <string_view>

namespace lineweir {

struct SeatMessage;

// How the next call comes about when the user picks it by hand.
enum class HandPick {
  // Nobody else is asked: the console moves the mark itself.
  MovedHere,
  // The present choice is told again and not the line picked: the server's programs count on it.
  PresentChoiceTold,
  // The server decides: the conference button's word for the line goes out.
  RowWord,
  // The server is told of the line and moves everybody's mark, unless the line is free.
  ServerTold,
};

// What the user asks of a server that decides the next call itself.
struct NextAction {
  bool talent;
  bool conference;
};

// How the console's way into another studio group ends. A session brings the user's options along.
enum class GroupEntry { NotEntered, Entered, EnteredBySession };

// One way to the studio's equipment and the other seats: all that a console does to them goes
// through here, whichever way is in use. What a way has no words for it passes over in silence, so
// that this class alone is the way of a console that has none.
//
// Each call names the handler that it is for. A failure on the way is reported under that name, and
// the user is told where there is no connection; no call fails.
class StudioLink {
 public:
  virtual ~StudioLink() = default;

  // A command word for the telephone equipment; TheBank is bank_main, bank_conference or bank_none.
  virtual void command(std::string_view /*handler*/, std::string_view /*word*/, int /*bank*/) {}

  // This console has chosen the next call, or no_line.
  virtual void next_call(std::string_view /*handler*/, int /*line*/) {}
  virtual HandPick hand_pick() const { return HandPick::MovedHere; }
  virtual void next_action(std::string_view /*handler*/, NextAction /*action*/) {}

  // A line's caller data in the form in which they pass between seats; the empty text clears them.
  // Returns whether they went out, which is true where there is nobody to tell. A way that tries
  // again asks before each try whether they are wanted still.
  virtual bool caller_data(std::string_view /*handler*/, int /*line*/, std::string_view /*text*/,
                           const std::function<bool()>& /*still_wanted*/ = {}) {
    return true;
  }

  // Whether the server at the other end may have a memory of callers. Where it has said so it is
  // asked for a number, in silence where that fails; and a flag of a caller is to be noted, in the
  // form in which it goes over the wire. Returns whether it went out.
  virtual bool may_remember_callers() const { return false; }
  virtual void ask_caller(std::string_view /*handler*/, std::string_view /*number*/) {}
  virtual bool flag_caller(std::string_view /*handler*/, int /*flag*/, std::string_view /*text*/) {
    return false;
  }

  // Whether there is a server that carries messages between the seats.
  virtual bool carries_messages() const { return false; }
  // A message to all seats of the group, this one among them. Returns whether it went out.
  virtual bool message(std::string_view /*handler*/, const SeatMessage& /*message*/) {
    return false;
  }

  // The console went over to the producer's or the talent's mode, or to another telephone of the
  // server's.
  virtual void mode(std::string_view /*handler*/, bool /*producer*/) {}
  virtual void phone(std::string_view /*handler*/, int /*number*/) {}

  // The names of the telephones are wanted. A failure is the caller's to handle.
  virtual void phone_names() {}

  // The names of the lines are wanted.
  virtual void line_names(std::string_view /*handler*/) {}

  // A line to dial on.
  virtual void seize(std::string_view /*handler*/, int /*line*/, int /*bank*/) {}

  // The console leaves its studio group for another one; then, with the other group's number, it
  // takes its place there. The user knows why where that doesn't come about.
  virtual bool leave_group(std::string_view /*handler*/) { return true; }
  virtual GroupEntry enter_group() { return GroupEntry::Entered; }

  // Another way was chosen: what this one holds is let go. Tells whether the user had chosen this
  // one, as a connection may stand that isn't in use.
  virtual void give_way(bool /*was_chosen*/) {}

  // The user wants the lost server back. False where the way leaves that to whoever asks.
  virtual bool reconnect() { return false; }

  // The same, of a server in favour of another one: it is told, and nobody waits for its answer.
  virtual void let_go() {}

  // The program ends while this way is in use. A failure is the caller's to handle.
  virtual void leave() {}

  // Why nothing that is pressed comes of it, in one sentence; empty while the way stands.
  virtual std::string_view trouble() const {
    return "There is no link: choose one in the menu Port.";
  }

  // To which of several servers the way stands, and since when; empty where there is one alone.
  virtual std::string_view standing() const { return {}; }

  // Whether commands are not to go out now, as nobody would know what becomes of them. The user is
  // told the trouble instead.
  virtual bool locks_keys() const { return false; }

  // Whether a server at the other end is asked for its time again and again.
  virtual bool polls_server() const { return false; }

  // Whether the other end is heard to live, so that its silence means that nothing is known.
  virtual bool hears_heartbeat() const { return false; }

  // Whether a command that can't go out is told with a message of this way's own.
  virtual bool tells_lost_commands() const { return false; }

  // Whether the other end keeps the user's options, and that it does so. A failure is the caller's
  // to handle.
  virtual bool keeps_profiles() const { return false; }
  virtual void keep_profile(std::string_view /*block*/) {}
};

}  // namespace lineweir

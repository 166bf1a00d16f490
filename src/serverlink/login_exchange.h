#pragma once

#include <string_view>

#include "platform/event_loop.h"
#include "wire/server_packet_codec.h"

namespace lineweir {

class AccessRights;
class LineEvents;
class ServerConnection;
class ServerLink;
struct ConsoleState;

// What a login exchange comes to.
enum class LoginResult {
  Accepted = 0,
  Rejected = 1,
  NoAnswer = 2,
  // The user has begun another exchange, asked for another connection, or ended the program during
  // the wait.
  Superseded = 3,
  // Of several servers none was left that could be asked.
  NoServer = 4,
};

inline constexpr std::string_view password_rejected_message = "Password Rejected!";

// The check of the user's name and password by the server. Both exchanges let events run until the
// answer is there; without one in time the user is told. While the user connects to one of several
// servers, one that ends the connection or lets nothing be heard isn't there: the next one is
// asked.
class LoginExchange {
 public:
  LoginExchange(ConsoleState& state, ServerLink& server, ServerConnection& connection,
                AccessRights& rights, LineEvents& line_events)
      : state_(state),
        server_(server),
        connection_(connection),
        rights_(rights),
        line_events_(line_events) {}

  // The check without a dialog, with the name and password that the console holds, or with none if
  // Skip: then the server decides by the connection alone. At most 20 seconds, 2000 while the trace
  // is on.
  LoginResult TextWrit_PasswordA(bool Skip);

  static constexpr platform::Milliseconds answer_limit{20'000};

  // The check with what the user has typed; at most 20 seconds.
  LoginResult TextWrit_PasswordB();

  // The same for who comes back by itself and doesn't wait: asks, and tells what the server has
  // answered by now. It is the user whom the server has let in before, and the studio group stays,
  // whatever the profile names. An accepted login is to be taken from it once.
  void ask_for_password_login();
  LoginResult password_answer();

  // Whether anything was heard since the question.
  bool is_heard() const;

 private:
  // What an answer that has come means; NoAnswer for one that the exchange doesn't look at.
  using Meaning = LoginResult (*)(int reply_code);

  LoginResult exchange(const ServerPacket& question, Meaning meaning, platform::Milliseconds limit);
  void ask(ServerPacket question);
  // Why another one of several servers is to be asked; empty while the present one may answer.
  std::string_view why_go_on(platform::Milliseconds waited) const;
  ServerPacket password_login() const;
  // The server has let the user in.
  void enter();
  void welcome_user();
  void enter_group_of_profile();

  ConsoleState& state_;
  ServerLink& server_;
  ServerConnection& connection_;
  AccessRights& rights_;
  LineEvents& line_events_;
  // The name and password of the present session's user; empty before the first one.
  std::string let_in_with_;
  int exchanges_ = 0;
  int frames_at_question_ = 0;
};

}  // namespace lineweir

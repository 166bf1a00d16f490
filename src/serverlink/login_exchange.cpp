#include "serverlink/login_exchange.h"

#include <utility>

#include "base/text.h"
#include "serverlink/access_rights.h"
#include "serverlink/credentials.h"
#include "serverlink/group_leave.h"
#include "serverlink/profile_fields.h"
#include "serverlink/reply_code.h"
#include "serverlink/server_connection.h"
#include "serverlink/server_link.h"
#include "state/console_state.h"
#include "state/guard.h"

namespace lineweir {
namespace {

constexpr platform::Milliseconds answer_limit_with_trace{2'000'000};
constexpr std::size_t longest_block_without_fields = 44;

LoginResult meaning_for_check(int reply_code) {
  switch (reply_code) {
    case reply_check_accepted:
    // Answers to the other exchange pass for a yes.
    case reply_password_accepted:
    case reply_password_rejected:
      return LoginResult::Accepted;
    case reply_check_rejected:
      return LoginResult::Rejected;
    default:
      return LoginResult::NoAnswer;
  }
}

LoginResult meaning_for_password(int reply_code) {
  switch (reply_code) {
    case reply_password_accepted:
      return LoginResult::Accepted;
    case reply_password_rejected:
      return LoginResult::Rejected;
    default:
      return LoginResult::NoAnswer;
  }
}

}  // namespace

LoginResult LoginExchange::TextWrit_PasswordA(bool Skip) {
  LoginResult result = LoginResult::NoAnswer;
  guard(state_.trace, "TextWrit_PasswordA", [&] {
    ServerPacket question = server_.packet(ClientCommand::CmdLoginCheck);
    if (!Skip) question.set_buffer(credentials(state_));
    const auto limit = state_.program.DebugMode ? answer_limit_with_trace : answer_limit;
    result = exchange(question, meaning_for_check, limit);
    if (result != LoginResult::Accepted) return;
    welcome_user();
    if (Skip && rights_.answer() == reply_check_accepted) enter_group_of_profile();
  });
  return result;
}

LoginResult LoginExchange::TextWrit_PasswordB() {
  LoginResult result = LoginResult::NoAnswer;
  guard(state_.trace, "TextWrit_PasswordB", [&] {
    result = exchange(password_login(), meaning_for_password, answer_limit);
    if (result == LoginResult::Accepted) enter();
  });
  return result;
}

void LoginExchange::ask_for_password_login() {
  ServerPacket question = password_login();
  // The name that stands in the console may be half typed, for another user.
  if (!let_in_with_.empty()) question.set_buffer(let_in_with_);
  ask(std::move(question));
}

LoginResult LoginExchange::password_answer() {
  const LoginResult result = meaning_for_password(rights_.answer());
  if (result != LoginResult::Accepted) return result;
  if (let_in_with_.empty()) {
    welcome_user();
  } else {
    connection_.let_in();
  }
  return result;
}

ServerPacket LoginExchange::password_login() const {
  ServerPacket question = server_.packet(ClientCommand::CmdPasswordLogin);
  question.set_buffer(credentials(state_));
  return question;
}

void LoginExchange::ask(ServerPacket question) {
  rights_.expect_answer();
  frames_at_question_ = server_.frames();
  const auto is_cut_off = [this] {
    return connection_.several() && state_.services.winsock1.state() == platform::socket_closed;
  };
  // Another server is asked then.
  if (is_cut_off()) return;
  server_.send(std::move(question));
  if (!connection_.several() || state_.login.BetweenGroups || is_cut_off()) return;
  // Many logins at once take a server longer than the others can wait to be tried; its time takes
  // none.
  server_.send(server_.packet(ClientCommand::CmdTimeRequest));
  state_.login.TimeAskedAtLogin = true;
}

bool LoginExchange::is_heard() const { return server_.frames() != frames_at_question_; }

std::string_view LoginExchange::why_go_on(platform::Milliseconds waited) const {
  const bool is_connecting = connection_.in_hand() && !state_.login.BetweenGroups;
  if (!connection_.several() || !is_connecting) return {};
  if (state_.services.winsock1.state() == platform::socket_closed) return server_hung_up;
  const bool is_silent = !is_heard() && waited > connection_.share();
  return is_silent && !connection_.is_last() ? server_silent : std::string_view();
}

LoginResult LoginExchange::exchange(const ServerPacket& question, Meaning meaning,
                                    platform::Milliseconds limit) {
  platform::EventLoop& loop = state_.services.loop;
  int attempt = connection_.attempts();
  const int number = ++exchanges_;
  ask(question);
  loop.run_pending();
  auto start = loop.now();
  for (;;) {
    const LoginResult result = meaning(rights_.answer());
    const bool superseded = connection_.attempts() != attempt || exchanges_ != number;
    if (superseded || !state_.Lineweir.loaded()) return LoginResult::Superseded;
    if (result != LoginResult::NoAnswer) return result;
    if (const auto why = why_go_on(loop.now() - start); !why.empty()) {
      const auto outcome = connection_.await_next(why);
      if (outcome == ServerConnection::Outcome::Superseded) return LoginResult::Superseded;
      if (outcome == ServerConnection::Outcome::Failed) return LoginResult::NoServer;
      attempt = connection_.attempts();
      ask(question);
      start = loop.now();
    }
    if (loop.now() - start > limit) break;
    loop.yield();
  }
  state_.messages.ShowMessage("Password response not received!");
  return LoginResult::NoAnswer;
}

void LoginExchange::enter() {
  welcome_user();
  enter_group_of_profile();
}

void LoginExchange::welcome_user() {
  connection_.let_in();
  let_in_with_ = credentials(state_);
  const auto name = state_.login.UserName.trimmed();
  state_.login.DisplayUserName = name;
  state_.Lineweir.Label1.caption = state_.login.DisplayUserName;
  std::string& operator_name = state_.program.OperatorName;
  if (trimmed(operator_name).empty()) operator_name = name;
}

void LoginExchange::enter_group_of_profile() {
  const std::string& block = state_.login.ProfileBlock;
  if (block.size() <= longest_block_without_fields) return;
  const int group = group_of_profile(block);
  // A frame's field holds no other group.
  if (group < 0 || group > no_value || group == state_.program.GroupNumber) return;
  rights_.RequestAccessRights(group);
  clear_studio_group(state_, line_events_);
  state_.program.GroupNumber = group;
}

}  // namespace lineweir

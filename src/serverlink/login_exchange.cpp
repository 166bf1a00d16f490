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
    result = exchange(std::move(question), meaning_for_check, limit);
    if (result != LoginResult::Accepted) return;
    welcome_user();
    if (Skip && state_.login.LastReplyCode == reply_check_accepted) enter_group_of_profile();
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

void LoginExchange::ask_for_password_login() { ask(password_login()); }

LoginResult LoginExchange::password_answer() {
  const LoginResult result = meaning_for_password(state_.login.LastReplyCode);
  if (result == LoginResult::Accepted) enter();
  return result;
}

ServerPacket LoginExchange::password_login() const {
  ServerPacket question = server_.packet(ClientCommand::CmdPasswordLogin);
  question.set_buffer(credentials(state_));
  return question;
}

void LoginExchange::ask(ServerPacket question) {
  state_.login.LastReplyCode = reply_none;
  server_.send(std::move(question));
}

LoginResult LoginExchange::exchange(ServerPacket question, Meaning meaning,
                                    platform::Milliseconds limit) {
  platform::EventLoop& loop = state_.services.loop;
  const int attempt = connection_.attempts();
  const int number = ++exchanges_;
  ask(std::move(question));
  loop.run_pending();
  const auto start = loop.now();
  for (;;) {
    const LoginResult result = meaning(state_.login.LastReplyCode);
    const bool superseded = connection_.attempts() != attempt || exchanges_ != number;
    if (superseded || !state_.Lineweir.loaded()) return LoginResult::Superseded;
    if (result != LoginResult::NoAnswer) return result;
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

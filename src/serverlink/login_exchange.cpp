#include "serverlink/login_exchange.h"

#include "base/text.h"
#include "callerdata/caller_data.h"
#include "serverlink/server_link.h"
#include "serverlink/user_profile.h"
#include "state/console_state.h"
#include "state/guard.h"
#include "wire/password_scramble.h"

namespace lineweir {
namespace {

constexpr int reply_accepted = 21;
constexpr int reply_rejected = 22;
// What the other exchange's answers leave.
constexpr int reply_password_accepted = 1;
constexpr int reply_password_rejected = 20;

constexpr platform::Milliseconds answer_limit{20'000};
constexpr platform::Milliseconds answer_limit_with_trace{2'000'000};

constexpr std::size_t rights_length = 12;
constexpr std::size_t longest_block_without_fields = 44;
constexpr std::uint8_t accepted_mark = 'F';

}  // namespace

LoginExchange::LoginExchange(ConsoleState& state, ServerLink& server, CallerDataEntry& caller_data)
    : state_(state), server_(server), caller_data_(caller_data) {
  server.handle(ServerCommand::SrvLoginCheckResult,
                [this](const ServerPacket& answer) { receive_check_result(answer); });
}

std::string LoginExchange::TextWrit_PassEncode(std::string_view text) const {
  const auto scrambled = pass_encode(text, state_.services.clock.now().second);
  if (scrambled) return *scrambled;
  report_failure(state_.trace, "TextWrit_PassEncode",
                 Failure(failure_number::invalid_argument, "Invalid procedure call or argument"));
  return {};
}

LoginResult LoginExchange::TextWrit_PasswordA(bool Skip) {
  LoginResult result = LoginResult::NoAnswer;
  guard(state_.trace, "TextWrit_PasswordA", [&] {
    LastReplyCode = 0;
    ServerPacket packet = server_.packet(ClientCommand::CmdLoginCheck);
    if (!Skip) packet.set_buffer(credentials());
    server_.send(packet);
    state_.services.loop.run_pending();
    result = await_check_result();
    if (result == LoginResult::NoAnswer) {
      state_.messages.ShowMessage("Password response not received!");
    }
    if (result != LoginResult::Accepted) return;
    std::string& operator_name = state_.program.OperatorName;
    if (trimmed(operator_name).empty()) operator_name = state_.login.UserName.trimmed();
    if (LastReplyCode == reply_accepted && Skip) enter_group_of_profile();
  });
  return result;
}

void LoginExchange::RequestAccessRights(int group) {
  guard(state_.trace, "Lineweir_RequestAccessRights", [&] {
    ServerPacket packet = server_.packet(ClientCommand::CmdRequestAccessRights);
    packet.GroupNo = field_byte(group);
    packet.set_buffer(credentials());
    server_.send(packet);
  });
}

void LoginExchange::receive_check_result(const ServerPacket& answer) {
  LoginState& login = state_.login;
  login.UserRights = answer.Buffer.substr(0, rights_length);
  login.ProfileBlock =
      answer.Buffer.size() > rights_length ? answer.Buffer.substr(rights_length) : std::string();
  LastReplyCode = answer.AltInfo == accepted_mark ? reply_accepted : reply_rejected;
}

LoginResult LoginExchange::await_check_result() {
  platform::EventLoop& loop = state_.services.loop;
  const auto limit = state_.program.DebugMode ? answer_limit_with_trace : answer_limit;
  const auto start = loop.now();
  for (;;) {
    switch (LastReplyCode) {
      case reply_accepted:
      case reply_password_accepted:
      case reply_password_rejected:
        return LoginResult::Accepted;
      case reply_rejected:
        return LoginResult::Rejected;
      default:
        break;
    }
    if (loop.now() - start > limit) return LoginResult::NoAnswer;
    loop.yield();
  }
}

void LoginExchange::enter_group_of_profile() {
  const std::string& block = state_.login.ProfileBlock;
  if (block.size() <= longest_block_without_fields) return;
  const int group = group_of_profile(block);
  if (group == no_group) return;
  if (group == state_.program.GroupNumber) return;
  RequestAccessRights(group);
  caller_data_.leave_group();
  state_.program.GroupNumber = group;
}

std::string LoginExchange::credentials() const {
  return login_buffer(TextWrit_PassEncode(state_.login.UserName.trimmed()),
                      TextWrit_PassEncode(state_.login.UserPassword.trimmed()));
}

}  // namespace lineweir

#include "serverlink/login_exchange.h"

#include "core/console.h"
#include "core/guard.h"
#include "core/text.h"
#include "serverlink/password_scramble.h"
#include "serverlink/user_profile.h"

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

LoginExchange::LoginExchange(Console& console) : console_(console) {
  console.server.handle(ServerCommand::SrvLoginCheckResult,
                        [this](const ServerPacket& answer) { receive_check_result(answer); });
}

std::string LoginExchange::TextWrit_PassEncode(std::string_view text) const {
  const auto scrambled = pass_encode(text, console_.services.clock.now().second);
  if (scrambled) return *scrambled;
  report_failure(console_, "TextWrit_PassEncode",
                 Failure(failure_number::invalid_argument, "Invalid procedure call or argument"));
  return {};
}

LoginResult LoginExchange::TextWrit_PasswordA(bool Skip) {
  LoginResult result = LoginResult::NoAnswer;
  guard(console_, "TextWrit_PasswordA", [&] {
    LastReplyCode = 0;
    ServerPacket packet = console_.server.packet(ClientCommand::CmdLoginCheck);
    if (!Skip) packet.set_buffer(credentials());
    console_.server.send(packet);
    console_.services.loop.run_pending();
    result = await_check_result();
    if (result == LoginResult::NoAnswer) {
      console_.messages.ShowMessage("Password response not received!");
    }
    if (result != LoginResult::Accepted) return;
    std::string& operator_name = console_.caller_data.OperatorName;
    if (trimmed(operator_name).empty()) operator_name = console_.login.UserName.trimmed();
    if (LastReplyCode == reply_accepted && Skip) enter_group_of_profile();
  });
  return result;
}

void LoginExchange::RequestAccessRights(int group) {
  guard(console_, "Lineweir_RequestAccessRights", [&] {
    ServerPacket packet = console_.server.packet(ClientCommand::CmdRequestAccessRights);
    packet.GroupNo = field_byte(group);
    packet.set_buffer(credentials());
    console_.server.send(packet);
  });
}

void LoginExchange::receive_check_result(const ServerPacket& answer) {
  LoginState& login = console_.login;
  login.UserRights = answer.Buffer.substr(0, rights_length);
  login.ProfileBlock =
      answer.Buffer.size() > rights_length ? answer.Buffer.substr(rights_length) : std::string();
  LastReplyCode = answer.AltInfo == accepted_mark ? reply_accepted : reply_rejected;
}

LoginResult LoginExchange::await_check_result() {
  platform::EventLoop& loop = console_.services.loop;
  const auto limit = console_.program.DebugMode ? answer_limit_with_trace : answer_limit;
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
  const std::string& block = console_.login.ProfileBlock;
  if (block.size() <= longest_block_without_fields) return;
  const int group = group_of_profile(block);
  if (group == no_group) return;
  if (group == console_.program.GroupNumber) return;
  RequestAccessRights(group);
  console_.caller_data.leave_group();
  console_.program.GroupNumber = group;
}

std::string LoginExchange::credentials() const {
  return login_buffer(TextWrit_PassEncode(console_.login.UserName.trimmed()),
                      TextWrit_PassEncode(console_.login.UserPassword.trimmed()));
}

}  // namespace lineweir

#include "serverlink/access_rights.h"

#include <string>

#include "callcontrol/modes.h"
#include "messages/message_display.h"
#include "serverlink/credentials.h"
#include "serverlink/profile_fields.h"
#include "serverlink/reply_code.h"
#include "serverlink/rights_table.h"
#include "serverlink/server_link.h"
#include "state/console_state.h"
#include "state/guard.h"
#include "wire/rights_layout.h"

namespace lineweir {
namespace {

constexpr std::string_view unknown_user = "XX";
constexpr std::uint8_t check_accepted_mark = 'F';
constexpr std::uint8_t password_accepted_mark = 'T';

bool are_no_rights(std::string_view text) {
  return text == "AAAAAAAAAAAA" || text == "ZZZZZZZZZZZZ";
}

}  // namespace

AccessRights::AccessRights(ConsoleState& state, ServerLink& server, Modes& modes,
                           MessageDisplay& display)
    : state_(state), server_(server), modes_(modes), display_(display) {
  server.handle(ServerCommand::SrvLoginCheckResult,
                [this](const ServerPacket& packet) { this->SrvLoginCheckResult(packet); });
  server.handle(ServerCommand::SrvPasswordResult,
                [this](const ServerPacket& packet) { this->SrvPasswordResult(packet); });
  server.handle(ServerCommand::SrvRights,
                [this](const ServerPacket& packet) { this->SrvRights(packet); });
}

bool AccessRights::take(const ServerPacket& answer) {
  LoginState& login = state_.login;
  const std::string& text = answer.Buffer;
  login.UserRights = text.substr(0, rights_length);
  login.ProfileBlock = text.size() > rights_length ? text.substr(rights_length) : std::string();
  return !are_no_rights(login.UserRights);
}

bool AccessRights::profile_is_of_other_group() const {
  const std::string& block = state_.login.ProfileBlock;
  return !block.empty() && group_of_profile(block) != state_.program.GroupNumber;
}

void AccessRights::SrvLoginCheckResult(const ServerPacket& packet) {
  LoginState& login = state_.login;
  const bool has_rights = take(packet);
  const bool has_profile = !login.ProfileBlock.empty();
  if (login.UserRights == unknown_user) {
    login.UserRights.clear();
    if (on_unknown_user) on_unknown_user();
  }
  if (!has_rights) {
    if (!profile_is_of_other_group()) RequestFirstUnblocked();
  } else if (has_profile) {
    state_.Lineweir.UserProfileTimer.enabled = true;
  }
  login.LastReplyCode =
      packet.AltInfo == check_accepted_mark ? reply_check_accepted : reply_check_rejected;
  answer_ = login.LastReplyCode;
  if (has_rights) SetRights();
}

void AccessRights::SrvPasswordResult(const ServerPacket& packet) {
  LoginState& login = state_.login;
  const bool has_rights = take(packet);
  if (!has_rights) {
    if (!profile_is_of_other_group()) RequestFirstUnblocked();
  } else if (!login.ProfileBlock.empty()) {
    state_.Lineweir.UserProfileTimer.enabled = true;
  }
  login.LastReplyCode =
      packet.AltInfo == password_accepted_mark ? reply_password_accepted : reply_password_rejected;
  answer_ = login.LastReplyCode;
  if (has_rights && login.UserRights != unknown_user) SetRights();
}

void AccessRights::SrvRights(const ServerPacket& packet) {
  if (are_no_rights(packet.Buffer)) return RequestFirstUnblocked();
  state_.login.UserRights = packet.Buffer;
  SetRights();
  state_.Lineweir.UserProfileTimer.enabled = true;
}

void AccessRights::expect_answer() {
  state_.login.LastReplyCode = reply_none;
  answer_.reset();
}

int AccessRights::answer() const { return answer_.value_or(state_.login.LastReplyCode); }

void AccessRights::SetRights() {
  guard(state_.trace, "Lineweir_SetRights", [&] {
    apply_rights(state_, modes_);
    display_.show_hint();
  });
}

void AccessRights::RequestAccessRights(int group) {
  guard(state_.trace, "Lineweir_RequestAccessRights",
        [&] { request(ClientCommand::CmdRequestAccessRights, group); });
}

void AccessRights::RequestFirstUnblocked() {
  guard(state_.trace, "Lineweir_RequestFirstUnblocked",
        [&] { request(ClientCommand::CmdRequestFirstUnblocked, state_.program.GroupNumber); });
}

void AccessRights::request(ClientCommand command, int group) {
  ServerPacket packet = server_.packet(command);
  packet.GroupNo = field_byte(group);
  packet.set_buffer(credentials(state_));
  server_.send(packet);
}

}  // namespace lineweir

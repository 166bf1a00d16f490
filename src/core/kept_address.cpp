#include "core/kept_address.h"

#include <algorithm>
#include <vector>

#include "base/names.h"
#include "base/text.h"
#include "core/further_settings.h"
#include "state/login_state.h"
#include "state/server_addresses.h"
#include "state/settings_record.h"

namespace lineweir {
namespace {

constexpr std::string_view address_setting = "ServerAddress";
// The port of the servers that have none of their own.
constexpr std::string_view port_setting = "ServerPort";
constexpr std::size_t record_room = 20;

bool is_one_line(std::string_view text) {
  return std::ranges::none_of(text, [](char c) { return code_of(c) < ' '; });
}

bool says_more(const std::vector<StudioServer>& servers) {
  return servers.size() > 1 || servers.front().host.size() > record_room;
}

}  // namespace

void keep_first_server(const LoginState& login, SettingsRecord& record) {
  const StudioServer first = known_studio_servers(login.ServerHost, login.ServerPort).front();
  record.ServerHost = first.host;
  record.ServerPort = first.port;
}

std::string with_whole_address(const LoginState& login, std::string_view further) {
  const std::string_view address = trimmed(login.ServerHost);
  const bool is_kept =
      is_one_line(address) && says_more(known_studio_servers(login.ServerHost, login.ServerPort));
  const auto value = [&](const std::string& text) { return is_kept ? text : std::string(); };
  return with_further_setting(
      with_further_setting(further, address_setting, value(std::string(address))), port_setting,
      value(std::to_string(login.ServerPort)));
}

void take_whole_address(std::string_view further, SettingsRecord& record) {
  LoginState kept;
  kept.ServerPort = 0;
  for (const FurtherSetting& setting : further_settings_of(further)) {
    if (same_name(setting.name, address_setting)) kept.ServerHost = setting.value;
    if (same_name(setting.name, port_setting)) kept.ServerPort = leading_number(setting.value);
  }
  const auto servers = known_studio_servers(kept.ServerHost, kept.ServerPort);
  const StudioServer& first = servers.front();
  const bool is_port = kept.ServerPort >= 1 && kept.ServerPort <= highest_port;
  const bool is_of_record =
      is_port && says_more(servers) && first.port == record.ServerPort &&
      left_part(first.host, record_room) == left_part(trimmed(record.ServerHost), record_room);
  if (!is_of_record) return;
  record.ServerHost = kept.ServerHost;
  record.ServerPort = kept.ServerPort;
}

}  // namespace lineweir

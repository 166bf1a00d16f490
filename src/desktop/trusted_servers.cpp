#include "desktop/trusted_servers.h"

#include <string_view>

#include "base/failure.h"
#include "base/names.h"
#include "base/text.h"
#include "core/further_settings.h"
#include "state/settings_record.h"

namespace lineweir {
namespace {

constexpr std::string_view trusted_server = "TrustedServer ";

std::string server_name(const std::string& host, int port) {
  return folded_name(host) + ":" + std::to_string(port);
}

}  // namespace

TrustedServers::TrustedServers(platform::Files& files) : files_(files) {
  const auto text = files.read_short(std::string(further_settings_file), longest_further_settings);
  for (const FurtherSetting& setting : further_settings_of(text.value_or(std::string()))) {
    if (!same_name(setting.name.substr(0, trusted_server.size()), trusted_server)) continue;
    trusted_[folded_name(trimmed(setting.name.substr(trusted_server.size())))] = setting.value;
  }
}

std::string TrustedServers::fingerprint(const std::string& host, int port) const {
  const auto known = trusted_.find(server_name(host, port));
  return known == trusted_.end() ? std::string() : known->second;
}

void TrustedServers::trust(const std::string& host, int port, const std::string& fingerprint) {
  trusted_[server_name(host, port)] = fingerprint;
  keep(server_name(host, port), fingerprint);
}

void TrustedServers::forget(const std::string& host, int port) {
  trusted_.erase(server_name(host, port));
  keep(server_name(host, port), {});
}

void TrustedServers::keep(const std::string& server, const std::string& fingerprint) {
  const std::string file(further_settings_file);
  const auto text = files_.read_short(file, longest_further_settings);
  if (!text && files_.exists(file)) {
    throw Failure(failure_number::file_access, "Can't read " + file);
  }
  files_.replace(file, with_further_setting(text.value_or(std::string()),
                                            std::string(trusted_server) + server, fingerprint));
}

}  // namespace lineweir

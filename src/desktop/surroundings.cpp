#include "desktop/surroundings.h"

#include <pwd.h>
#include <unistd.h>

#include <QDBusConnection>
#include <QGuiApplication>
#include <QSerialPortInfo>
#include <QSysInfo>
#include <algorithm>
#include <fstream>
#include <iterator>

#include "base/text.h"
#include "base/version.h"
#include "core/kept_address.h"
#include "desktop/screens_seen.h"
#include "platform/qt/qt_serial_port.h"
#include "state/server_addresses.h"
#include "state/settings_record.h"

namespace lineweir {
namespace {

// Those of a console without settings.
constexpr int first_box_port = 1;
constexpr int first_switch_console_port = 2;

bool may_be_used(const std::filesystem::path& path) {
  return ::access(path.c_str(), R_OK | W_OK) == 0;
}

FileSeen look_at(const std::filesystem::path& path) {
  std::error_code ignored;
  return {path.string(), std::filesystem::exists(path, ignored), may_be_used(path)};
}

// What the settings have where a port is chosen; they have other numbers for other ways.
int port_or(int first, int stored) { return stored >= 1 && stored <= 4 ? stored : first; }

PortSeen look_at_port(const std::string& device, PortUse use, int number) {
  const FileSeen file = look_at(device);
  return {device, file.exists, file.may_be_written, use, number};
}

std::vector<PortSeen> ports(int box_port, int switch_console_port) {
  std::vector<PortSeen> found;
  const auto is_new = [&](const std::string& device) {
    return std::none_of(found.begin(), found.end(),
                        [&](const PortSeen& each) { return each.device == device; });
  };
  found.push_back(look_at_port(platform::device_of_comm_port(box_port), PortUse::Box, box_port));
  const std::string desk = platform::device_of_comm_port(switch_console_port);
  if (is_new(desk)) {
    found.push_back(look_at_port(desk, PortUse::SwitchConsole, switch_console_port));
  }
  for (const QSerialPortInfo& info : QSerialPortInfo::availablePorts()) {
    const std::string device = info.systemLocation().toStdString();
    // Those that a machine's board has without a plug would fill the page.
    const bool is_plugged = info.hasVendorIdentifier();
    if (is_plugged && is_new(device)) found.push_back(look_at_port(device, PortUse::None, 0));
  }
  return found;
}

std::string readable_content_of(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

}  // namespace

Surroundings look_around(const std::filesystem::path& folder, const CodePage& page) {
  Surroundings seen;
  seen.program_version = program_version;
  seen.qt_version = qVersion();
  seen.system = QSysInfo::prettyProductName().toStdString() + ", " +
                QSysInfo::currentCpuArchitecture().toStdString();
  const passwd* const user = ::getpwuid(::getuid());
  seen.user = user != nullptr ? user->pw_name : "number " + std::to_string(::getuid());
  seen.character_set = page.name;
  if (qobject_cast<QGuiApplication*>(QCoreApplication::instance()) != nullptr) {
    seen.screens = screens_in_words();
  }
  seen.folder = look_at(folder);
  seen.settings = look_at(folder / settings_file_name);
  auto settings = decode_settings(readable_content_of(folder / settings_file_name));
  seen.ports = ports(port_or(first_box_port, settings ? settings->CommPort : 0),
                     port_or(first_switch_console_port, settings ? settings->RemotePortNumber : 0));
  if (settings) {
    const std::string log(trimmed(settings->DatabasePath));
    if (!log.empty()) seen.log = look_at(folder / log);
    take_whole_address(readable_content_of(folder / further_settings_file), *settings);
    for (auto& server : known_studio_servers(settings->ServerHost, settings->ServerPort)) {
      if (!server.host.empty()) seen.servers.push_back({std::move(server.host), server.port});
    }
  }
  seen.session_bus = QDBusConnection::sessionBus().isConnected();
  seen.system_bus = QDBusConnection::systemBus().isConnected();
  return seen;
}

}  // namespace lineweir

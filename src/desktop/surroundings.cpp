#include "desktop/surroundings.h"

#include <unistd.h>

#include <QDBusConnection>
#include <QGuiApplication>
#include <QSerialPortInfo>
#include <QSysInfo>
#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <iterator>

#include "base/text.h"
#include "core/kept_address.h"
#include "desktop/screens_seen.h"
#include "platform/qt/qt_serial_port.h"
#include "state/server_addresses.h"
#include "state/settings_record.h"

namespace lineweir {
namespace {

constexpr int box_port = 1;
constexpr int switch_console_port = 2;

bool may_be_used(const std::filesystem::path& path) {
  return ::access(path.c_str(), R_OK | W_OK) == 0;
}

FileSeen look_at(const std::filesystem::path& path) {
  std::error_code ignored;
  return {path.string(), std::filesystem::exists(path, ignored), may_be_used(path)};
}

std::vector<PortSeen> ports() {
  std::vector<std::string> devices = {platform::device_of_comm_port(box_port),
                                      platform::device_of_comm_port(switch_console_port)};
  for (const QSerialPortInfo& info : QSerialPortInfo::availablePorts()) {
    const std::string device = info.systemLocation().toStdString();
    // Those that a machine's board has without a plug would fill the page.
    const bool is_plugged = info.hasVendorIdentifier();
    if (is_plugged && std::find(devices.begin(), devices.end(), device) == devices.end()) {
      devices.push_back(device);
    }
  }
  std::vector<PortSeen> found;
  for (const std::string& device : devices) {
    const FileSeen file = look_at(device);
    found.push_back({device, file.exists, file.may_be_written});
  }
  return found;
}

std::string content_of(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

}  // namespace

Surroundings look_around(const std::filesystem::path& folder, const CodePage& page) {
  Surroundings seen;
  seen.program_version = LINEWEIR_VERSION;
  seen.qt_version = qVersion();
  seen.system = QSysInfo::prettyProductName().toStdString() + ", " +
                QSysInfo::currentCpuArchitecture().toStdString();
  const char* const user = std::getenv("USER");
  seen.user = user != nullptr ? user : "number " + std::to_string(::getuid());
  seen.character_set = page.name;
  if (qobject_cast<QGuiApplication*>(QCoreApplication::instance()) != nullptr) {
    seen.screens = screens_in_words();
  }
  seen.folder = look_at(folder);
  seen.settings = look_at(folder / settings_file_name);
  seen.ports = ports();
  const std::string bytes = content_of(folder / settings_file_name);
  if (auto settings = decode_settings(bytes)) {
    const std::string log(trimmed(settings->DatabasePath));
    if (!log.empty()) seen.log = look_at(folder / log);
    take_whole_address(content_of(folder / further_settings_file), *settings);
    for (auto& server : known_studio_servers(settings->ServerHost, settings->ServerPort)) {
      if (!server.host.empty()) seen.servers.push_back({std::move(server.host), server.port});
    }
  }
  seen.session_bus = QDBusConnection::sessionBus().isConnected();
  seen.system_bus = QDBusConnection::systemBus().isConnected();
  return seen;
}

}  // namespace lineweir

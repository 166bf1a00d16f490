#include "desktop/diagnosis.h"

#include <array>

namespace lineweir {
namespace {

using enum FindingState;

// The words of the states have one length.
std::string_view word_of(FindingState state) {
  constexpr std::array<std::string_view, 3> words = {"good   ", "note   ", "TROUBLE"};
  return words[static_cast<std::size_t>(state)];
}

std::string joined(const std::vector<std::string>& parts) {
  std::string all;
  for (const std::string& part : parts) all += (all.empty() ? "" : ", ") + part;
  return all;
}

Finding display(const Surroundings& seen) {
  if (!seen.screens.empty()) return {Good, "Display", joined(seen.screens) + "."};
  return {Trouble, "Display", "There is none.",
          "Start the console in a desktop session, where DISPLAY or WAYLAND_DISPLAY is set."};
}

Finding folder(const FileSeen& folder) {
  if (folder.may_be_written) return {Good, "Folder", folder.path + ": settings and logs go there."};
  return {Trouble, "Folder", folder.path + " can't be written to.",
          "Start the console in a folder of your own, or have the rights of this one changed: "
          "nothing that you set would be kept."};
}

Finding settings(const FileSeen& settings) {
  if (!settings.exists) {
    return {Note, "Settings", "There are none yet.",
            "Choose the way to the studio in the menu Port, then Options, Save Settings."};
  }
  if (settings.may_be_written) return {Good, "Settings", settings.path + "."};
  return {Trouble, "Settings", settings.path + " can't be written to.",
          "Have its rights changed, or what you set is lost when the console ends."};
}

Finding log(const FileSeen& log) {
  if (log.path.empty()) {
    return {Note, "Call log", "None is chosen.",
            "Choose or make one by Options, Database Path, or calls are kept nowhere."};
  }
  if (!log.exists) {
    return {
        Trouble, "Call log", log.path + " isn't there.",
        "Choose another file by Options, Database Path, or bring the folder back that holds it."};
  }
  if (log.may_be_written) return {Good, "Call log", log.path + "."};
  return {Trouble, "Call log", log.path + " can't be written to.",
          "Have its rights changed; until then calls wait in the console's journal."};
}

std::string advice_to_plug_in(const PortSeen& port) {
  const std::string first = port.use == PortUse::SwitchConsole
                                ? "Only where the host's desk has a switch console: plug it in"
                                : "Plug the box in";
  // Another example than the device that isn't there.
  const std::string device = port.device == "/dev/ttyUSB0" ? "/dev/ttyUSB1" : "/dev/ttyUSB0";
  return first + ", or name its device, as in LINEWEIR_COM" + std::to_string(port.number) + "=" +
         device + " lineweir.";
}

Finding port(const PortSeen& port, const std::string& user) {
  const std::string subject = "Port " + port.device;
  if (!port.exists) return {Note, subject, "It isn't there.", advice_to_plug_in(port)};
  if (port.may_be_used) return {Good, subject, "It can be used."};
  return {Trouble, subject, user + " may not use it.",
          "Run `sudo usermod -aG dialout " + user + "`, log out and in again."};
}

Finding server(const ServerSeen& server) {
  const std::string place = server.host + ", port " + std::to_string(server.port);
  if (server.failure.empty()) return {Good, "Server", place + ": somebody listens there."};
  return {Note, "Server", place + " can't be reached: " + server.failure,
          "If you use it: see that the server runs, that its name is right in Port, Winsock, and "
          "that no firewall is between."};
}

Finding buses(const Surroundings& seen) {
  if (seen.session_bus || seen.system_bus) {
    const std::string which = seen.session_bus && seen.system_bus ? "The session's and the system's"
                              : seen.session_bus                  ? "The session's"
                                                                  : "The system's";
    return {Good, "Remote objects", which + " message bus can be reached."};
  }
  return {Note, "Remote objects", "No message bus can be reached.",
          "Only where you use Port, Network: start the console in a desktop session, or start "
          "the service dbus."};
}

}  // namespace

std::vector<Finding> findings_of(const Surroundings& seen) {
  std::vector<Finding> findings = {
      {Good, "Program", "Lineweir " + seen.program_version + ", Qt " + seen.qt_version + "."},
      {Good, "System", seen.system + ", user " + seen.user + "."},
      {Good, "Texts", seen.character_set + "."},
      display(seen),
      folder(seen.folder),
      settings(seen.settings),
      log(seen.log),
  };
  for (const PortSeen& each : seen.ports) findings.push_back(port(each, seen.user));
  if (seen.servers.empty()) findings.push_back({Note, "Server", "The settings name none."});
  for (const ServerSeen& each : seen.servers) findings.push_back(server(each));
  findings.push_back(buses(seen));
  return findings;
}

std::string text_of(const std::vector<Finding>& findings) {
  std::string text;
  for (const Finding& finding : findings) {
    text +=
        std::string(word_of(finding.state)) + "  " + finding.subject + ": " + finding.seen + '\n';
    if (!finding.advice.empty()) text += "         " + finding.advice + '\n';
  }
  return text;
}

}  // namespace lineweir

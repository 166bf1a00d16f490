#include "desktop/print_diagnosis.h"

#include <QEventLoop>
#include <algorithm>
#include <cstdio>

#include "desktop/server_probe.h"
#include "desktop/surroundings.h"

namespace lineweir {

int print_diagnosis(const CommandLine& command_line, const std::vector<std::string>& screens) {
  Surroundings seen = look_around(std::filesystem::current_path(), *command_line.code_page);
  seen.screens = screens;
  if (!seen.servers.empty()) {
    QEventLoop waiting;
    ServerProbes probes;
    probes.on_answers = [&](const std::vector<ServerSeen>& servers) {
      seen.servers = servers;
      waiting.quit();
    };
    probes.start(seen.servers);
    waiting.exec();
  }
  const std::vector<Finding> findings = findings_of(seen);
  std::fputs(text_of(findings).c_str(), stdout);
  const bool is_well = std::none_of(findings.begin(), findings.end(), [](const Finding& finding) {
    return finding.state == FindingState::Trouble;
  });
  return is_well ? 0 : 1;
}

}  // namespace lineweir

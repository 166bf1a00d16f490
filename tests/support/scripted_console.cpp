#include "support/scripted_console.h"

namespace lineweir::test {

ScriptedConsole::ScriptedConsole(std::string_view command_line) { start(command_line); }

ScriptedConsole::ScriptedConsole(std::string_view command_line, const std::string& settings_file) {
  platform.files.replace(std::string(settings_file_name), settings_file);
  start(command_line);
}

ScriptedConsole::ScriptedConsole(const CodePage& page, const Transliterator* transliterator)
    : platform(page, transliterator) {
  start("D");
}

ScriptedConsole::~ScriptedConsole() = default;

void ScriptedConsole::start(std::string_view command_line) {
  console.trace.on_line = [this](const std::string& line) { trace.push_back(line); };
  console.messages.on_shown = [this](const std::string& text) { messages.push_back(text); };
  console.startup.Main(command_line);
}

}  // namespace lineweir::test

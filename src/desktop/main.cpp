#include <QApplication>
#include <cstdio>
#include <cstdlib>

#include "base/version.h"
#include "desktop/command_line.h"
#include "desktop/print_diagnosis.h"
#include "desktop/program.h"
#include "desktop/screens_seen.h"
#include "platform/process/memory_dump.h"

namespace {

lineweir::CommandLine command_line_of(const QStringList& arguments) {
  std::vector<std::string> words;
  for (const QString& argument : arguments.mid(1)) words.push_back(argument.toStdString());
  return lineweir::parse_command_line(words, lineweir::locale_of_letters());
}

// While Qt looks for a display it ends the program by a signal where none answers.
void end_without_display(QtMsgType type, const QMessageLogContext&, const QString& text) {
  if (type == QtFatalMsg) {
    std::fputs(lineweir::dead_display_text, stderr);
    std::_Exit(1);
  }
  std::fprintf(stderr, "%s\n", qUtf8Printable(text));
}

}  // namespace

int main(int argc, char* argv[]) {
  lineweir::platform::keep_memory_out_of_dumps();
  // What needs no screen is said without one.
  const auto asked = lineweir::parse_command_line({argv + 1, argv + argc}, {});
  if (asked.version && !asked.help) {
    std::printf("lineweir %s\n", lineweir::program_version);
    return 0;
  }
  if (asked.help || !asked.problem.empty()) {
    std::fputs(asked.help ? lineweir::usage_text : asked.problem.c_str(),
               asked.help ? stdout : stderr);
    return asked.help ? 0 : 2;
  }
  if (asked.diagnose) {
    const std::vector<std::string> screens = lineweir::screens_from_aside(argc, argv);
    const QCoreApplication application(argc, argv);
    return lineweir::print_diagnosis(command_line_of(QCoreApplication::arguments()), screens);
  }
  // Without a display Qt would end the program as if it were broken.
  const auto is_set = [](const char* name) { return !qEnvironmentVariableIsEmpty(name); };
  if (!lineweir::may_have_windows({argv + 1, argv + argc}, is_set)) {
    std::fputs(lineweir::no_display_text, stderr);
    return 1;
  }
  qInstallMessageHandler(end_without_display);
  QApplication application(argc, argv);
  qInstallMessageHandler(nullptr);
  QApplication::setApplicationName(QStringLiteral("lineweir"));
  QApplication::setApplicationDisplayName(QString());
  lineweir::dress_application();
  // Qt has taken off the words that are its own.
  const auto command_line = command_line_of(QApplication::arguments());
  if (!command_line.unknown_option.empty()) {
    std::fputs(command_line.unknown_option.c_str(), stderr);
    return 2;
  }
  return lineweir::run_program(command_line);
}

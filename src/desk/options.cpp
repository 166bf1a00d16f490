#include "desk/options.h"

#include <CLI/CLI.hpp>
#include <ostream>
#include <string>
#include <utility>

#include "base/version.h"

namespace lineweir::desk {
namespace {

// Of a command line that can't be.
constexpr int status_wrong = 2;

constexpr const char* description =
    "A switch console on the host's desk, simulated on a pseudo-terminal.\n"
    "The first line on the standard output names the device, as in \"device /dev/pts/3\".";

constexpr const char* footer = R"(
Keys are typed by their names, one a line, while the program runs:
  main N, conf N    with ten lines: line N to main, or to the conference; N from 1 to 10
  line N            with twenty lines: line N to main; N from 1 to 20
  drop1, hold1      drop or hold what is on main
  drop2, hold2      with ten lines: the same for the conference
  next              the next caller
  dial DIGIT        a digit, * or # on the dial pad
  code N            any code from 0 to 255, as a fault would send it
  show              draws the console; quit: the end
A script has the same lines with a time in seconds in front.

Log, one line each, with the seconds since the start in front:
  key NAME          a key was pressed
  lamp NAME TEXT    a lamp shows something else: on, AIR, ring, hold, rdy; nothing when it is dark
  noise COUNT       so many bytes came that are no lamp message

Examples:
  lineweir-desk --link /tmp/desk
  lineweir-desk --lines 20 --link /tmp/desk --script keys.txt --log -)";

}  // namespace

ParsedOptions parse_options(int argc, const char* const* argv, std::ostream& out,
                            std::ostream& err) {
  CLI::App app(description, "lineweir-desk");
  app.footer(footer);
  app.set_version_flag("--version", std::string("lineweir-desk ") + program_version);
  DeskOptions options;
  int lines = 10;
  std::string script;
  app.add_option("--lines", lines, "Telephone lines, 10 or 20")
      ->check(CLI::IsMember({10, 20}))
      ->capture_default_str()
      ->type_name("COUNT");
  app.add_option("--link", options.link, "Make a symbolic link to the device, removed at the end")
      ->type_name("PATH");
  app.add_option("--log", options.log, "Write what happens; - for the standard output")
      ->type_name("FILE");
  app.add_option("--script", script, "Press the keys of a file at their times")->type_name("FILE");
  try {
    app.parse(argc, argv);
  } catch (const CLI::ParseError& error) {
    return {std::nullopt, app.exit(error, out, err) == 0 ? 0 : status_wrong};
  }
  options.layout = lines == 20 ? Layout::TwentyLines : Layout::TenLines;
  if (!script.empty()) {
    std::string error;
    auto actions = read_desk_script(script, options.layout, error);
    if (!actions) {
      err << error << '\n';
      return {std::nullopt, 1};
    }
    options.script = std::move(*actions);
  }
  return {std::move(options), 0};
}

}  // namespace lineweir::desk

#include "studio/options.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <ostream>
#include <string>
#include <utility>

#include "base/version.h"
#include "studio/event_script.h"

namespace lineweir::studio {
namespace {

// Of a command line that can't be.
constexpr int status_wrong = 2;

constexpr const char* description =
    "A telephone studio behind an interface box, simulated on a pseudo-terminal.\n"
    "The first line on the standard output names the device, as in \"device /dev/pts/3\".";

constexpr const char* footer = R"(
Script, one event a line; empty lines and lines that begin with # are skipped:
  SECONDS call LINE         a call comes in
  SECONDS hangup LINE       the caller goes
  SECONDS busy LINE         the line is taken out of service
  SECONDS idle LINE         and put back
  SECONDS set LINE LETTER   the line is forced to a letter of its states
  SECONDS word WORD         somebody at another seat sends the command word
  SECONDS quit              the studio closes
Lines count from 0.

Log, one line each, with the seconds since the start in front:
  word WORD    a command word from the device    item ITEM  a status item to the device
  noise TEXT   characters that are no word       text TEXT  other text to the device
  seat WORD    a word from another seat          note TEXT  what else should be known
  and the events as in a script.

Examples:
  lineweir-studio --link /tmp/box --auto --log -
  lineweir-studio --script show.txt --lines 20 --duration 60)";

// The command line as it is written; times are texts until they are read.
struct WrittenOptions {
  int lines = 10;
  std::uint64_t seed = 1;
  std::string call_every;
  std::string ring_patience;
  std::string hold_patience;
  bool auto_operator = false;
  std::string screen_time;
  std::string air_time;
  std::string script;
  std::string duration;
  std::string link;
  std::string log;
};

const CLI::Validator seconds(
    [](std::string& text) {
      return parse_seconds(text) ? std::string() : text + " is not a time in seconds";
    },
    "", "seconds");

const CLI::Validator some_seconds(
    [](std::string& text) {
      const auto moment = parse_seconds(text);
      return moment && *moment > Moment{0} ? std::string()
                                           : text + " is not a time of more than 0 seconds";
    },
    "", "some seconds");

// Every number of so many digits fits into 64 bits.
constexpr std::size_t longest_number = 19;

const CLI::Validator whole_number(
    [](std::string& text) {
      const bool is_digits = text.find_first_not_of("0123456789") == std::string::npos;
      return is_digits && !text.empty() && text.size() <= longest_number
                 ? std::string()
                 : text + " is not a whole number of at most " + std::to_string(longest_number) +
                       " digits";
    },
    "", "whole number");

void add_seconds(CLI::App& app, const char* name, std::string& text, Moment by_default,
                 const char* help, const CLI::Validator& check = seconds) {
  text = format_seconds(by_default);
  text.erase(text.find_last_not_of('0') + 1);
  if (text.back() == '.') text.pop_back();
  app.add_option(name, text, help)->check(check)->capture_default_str()->type_name("SECONDS");
}

void describe(CLI::App& app, WrittenOptions& arguments) {
  app.footer(footer);
  app.set_version_flag("--version", std::string("lineweir-studio ") + program_version);
  app.add_option("--lines", arguments.lines, "Telephone lines, 10 or 20")
      ->check(CLI::IsMember({10, 20}))
      ->capture_default_str()
      ->type_name("COUNT");
  app.add_option("--link", arguments.link, "Make a symbolic link to the device, removed at the end")
      ->type_name("PATH");
  app.add_option("--log", arguments.log, "Write the transcript; - for the standard output")
      ->type_name("FILE");
  app.add_option("--duration", arguments.duration, "Close after this time")
      ->check(seconds)
      ->type_name("SECONDS");
  app.add_option("--seed", arguments.seed, "The same seed gives the same show")
      ->check(whole_number)
      ->capture_default_str()
      ->type_name("N");
  app.add_option("--script", arguments.script,
                 "Play the timed events of a file; nobody else calls, unless --call-every is given")
      ->type_name("FILE");

  const CallerOptions callers;
  const char* const group = "Callers";
  add_seconds(app, "--call-every", arguments.call_every, callers.call_every,
              "Mean time between calls; 0: nobody calls");
  add_seconds(app, "--ring-patience", arguments.ring_patience, callers.ring_patience,
              "Mean time until a ringing caller gives up; 0: never");
  add_seconds(app, "--hold-patience", arguments.hold_patience, callers.hold_patience,
              "Mean time until a caller on hold or ready gives up; 0: never");
  for (const char* const name : {"--call-every", "--ring-patience", "--hold-patience"}) {
    app.get_option(name)->group(group);
  }

  const AutoOperatorOptions people;
  app.add_flag("--auto", arguments.auto_operator,
               "The studio's own screeners and host run the show")
      ->group("People");
  add_seconds(app, "--screen-time", arguments.screen_time, people.screen_time,
              "Mean talk of a screener with a caller, with --auto", some_seconds);
  add_seconds(app, "--air-time", arguments.air_time, people.air_time,
              "Mean stay of a caller on air, with --auto", some_seconds);
  for (const char* const name : {"--screen-time", "--air-time"}) {
    app.get_option(name)->group("People");
  }
}

Moment moment_of(const std::string& text) { return parse_seconds(text).value_or(Moment{0}); }

StudioOptions options_of(const WrittenOptions& arguments, bool calls_are_given) {
  StudioOptions options;
  options.link = arguments.link;
  options.log = arguments.log;
  BoxedExchangeOptions& exchange = options.exchange;
  exchange.line_count = arguments.lines;
  exchange.seed = arguments.seed;
  exchange.callers = {moment_of(arguments.call_every), moment_of(arguments.ring_patience),
                      moment_of(arguments.hold_patience)};
  if (!arguments.script.empty() && !calls_are_given) exchange.callers = {{}, {}, {}};
  if (arguments.auto_operator) {
    exchange.auto_operator = {moment_of(arguments.screen_time), moment_of(arguments.air_time)};
  }
  return options;
}

// An event like those of a script, behind all that happen at the same time.
void close_at(Moment moment, std::vector<TimedEvent>& script) {
  const auto later =
      std::upper_bound(script.begin(), script.end(), moment,
                       [](Moment at, const TimedEvent& event) { return at < event.at; });
  script.insert(later, {moment, {StudioEvent::Kind::Quit}});
}

}  // namespace

ParsedOptions parse_options(int argc, const char* const* argv, std::ostream& out,
                            std::ostream& err) {
  CLI::App app(description, "lineweir-studio");
  WrittenOptions arguments;
  describe(app, arguments);
  try {
    app.parse(argc, argv);
  } catch (const CLI::ParseError& error) {
    return {std::nullopt, app.exit(error, out, err) == 0 ? 0 : status_wrong};
  }

  StudioOptions options = options_of(arguments, app.count("--call-every") > 0);
  if (!arguments.script.empty()) {
    std::string error;
    auto script = read_script(arguments.script, arguments.lines, error);
    if (!script) {
      err << error << '\n';
      return {std::nullopt, 1};
    }
    options.exchange.script = std::move(*script);
  }
  if (!arguments.duration.empty()) {
    close_at(moment_of(arguments.duration), options.exchange.script);
  }
  return {std::move(options), 0};
}

}  // namespace lineweir::studio

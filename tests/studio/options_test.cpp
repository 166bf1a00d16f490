#include "studio/options.h"

#include <doctest/doctest.h>

#include <fstream>
#include <sstream>
#include <vector>

#include "temporary_folder.h"

using namespace lineweir::studio;
using namespace std::chrono_literals;

namespace {

struct Outcome {
  ParsedOptions parsed;
  std::string out;
  std::string err;
};

Outcome parse(std::vector<std::string> arguments) {
  arguments.insert(arguments.begin(), "lineweir-studio");
  std::vector<const char*> pointers;
  for (const std::string& argument : arguments) pointers.push_back(argument.c_str());
  std::ostringstream out;
  std::ostringstream err;
  auto parsed = parse_options(static_cast<int>(pointers.size()), pointers.data(), out, err);
  return {std::move(parsed), out.str(), err.str()};
}

StudioOptions options_of(std::vector<std::string> arguments) {
  auto outcome = parse(std::move(arguments));
  INFO(outcome.err);
  REQUIRE(outcome.parsed.options);
  return *outcome.parsed.options;
}

}  // namespace

TEST_CASE("without arguments there are ten lines, callers and nobody at work") {
  const StudioOptions options = options_of({});
  CHECK(options.exchange.line_count == 10);
  CHECK(options.exchange.seed == 1);
  CHECK(options.exchange.callers.call_every == 15s);
  CHECK(options.exchange.callers.ring_patience == 40s);
  CHECK(options.exchange.callers.hold_patience == 180s);
  CHECK_FALSE(options.exchange.auto_operator);
  CHECK(options.exchange.script.empty());
  CHECK(options.link.empty());
  CHECK(options.log.empty());
}

TEST_CASE("every argument has its effect") {
  const StudioOptions options = options_of({"--lines",
                                            "20",
                                            "--seed",
                                            "7",
                                            "--call-every",
                                            "3.5",
                                            "--ring-patience",
                                            "0",
                                            "--hold-patience",
                                            "60",
                                            "--auto",
                                            "--screen-time",
                                            "5",
                                            "--air-time",
                                            "0.5",
                                            "--link",
                                            "box",
                                            "--log",
                                            "-",
                                            "--duration",
                                            "90"});
  CHECK(options.exchange.line_count == 20);
  CHECK(options.exchange.seed == 7);
  CHECK(options.exchange.callers.call_every == 3500ms);
  CHECK(options.exchange.callers.ring_patience == 0s);
  CHECK(options.exchange.callers.hold_patience == 60s);
  REQUIRE(options.exchange.auto_operator);
  CHECK(options.exchange.auto_operator->screen_time == 5s);
  CHECK(options.exchange.auto_operator->air_time == 500ms);
  CHECK(options.link == "box");
  CHECK(options.log == "-");
  CHECK(options.exchange.script == std::vector<TimedEvent>{{90s, {StudioEvent::Kind::Quit}}});
}

TEST_CASE("a script quiets the callers, unless they are asked for") {
  const TemporaryFolder folder;
  const std::string script = folder.path("show.txt");
  std::ofstream(script) << "1 call 3\n60 call 4\n90 call 5\n";

  const StudioOptions quiet = options_of({"--script", script, "--duration", "60"});
  CHECK(quiet.exchange.callers.call_every == 0s);
  CHECK(quiet.exchange.callers.ring_patience == 0s);
  CHECK(quiet.exchange.callers.hold_patience == 0s);
  REQUIRE(quiet.exchange.script.size() == 4);
  CHECK(quiet.exchange.script[2] == TimedEvent{60s, {StudioEvent::Kind::Quit}});

  const StudioOptions lively = options_of({"--script", script, "--call-every", "10"});
  CHECK(lively.exchange.callers.call_every == 10s);
  CHECK(lively.exchange.callers.ring_patience == 40s);
}

TEST_CASE("a mistake in the script stops the program with its file and line") {
  const TemporaryFolder folder;
  const std::string script = folder.path("show.txt");
  std::ofstream(script) << "1 call 3\n2 cal 3\n";
  const Outcome outcome = parse({"--script", script});
  CHECK_FALSE(outcome.parsed.options);
  CHECK(outcome.parsed.exit_code == 1);
  CHECK(outcome.err == script + ":2: there is no event \"cal\"\n");
}

TEST_CASE("a mistake on the command line is told, with an exit code") {
  const std::vector<std::vector<std::string>> mistakes{{"--lines", "11"},
                                                       {"--lines", "x"},
                                                       {"--seed", "-1"},
                                                       {"--seed", "1.5"},
                                                       {"--seed", ""},
                                                       {"--call-every", "-1"},
                                                       {"--call-every", "nan"},
                                                       {"--ring-patience", "1e9"},
                                                       {"--hold-patience", ""},
                                                       {"--air-time", "0"},
                                                       {"--screen-time", "0.000"},
                                                       {"--duration", "soon"},
                                                       {"--seed", "99999999999999999999999"},
                                                       {"--nonsense"},
                                                       {"extra"}};
  for (const auto& arguments : mistakes) {
    CAPTURE(arguments[0]);
    const Outcome outcome = parse(arguments);
    CHECK_FALSE(outcome.parsed.options);
    CHECK(outcome.parsed.exit_code != 0);
    CHECK(outcome.err != "");
  }
}

TEST_CASE("the help tells of every argument and of the script") {
  const Outcome outcome = parse({"--help"});
  CHECK_FALSE(outcome.parsed.options);
  CHECK(outcome.parsed.exit_code == 0);
  for (const char* text :
       {"--lines", "--link", "--log", "--duration", "--seed", "--script", "--call-every",
        "--ring-patience", "--hold-patience", "--auto", "--screen-time", "--air-time",
        "SECONDS hangup LINE", "device /dev/pts/3"}) {
    CAPTURE(text);
    CHECK(outcome.out.find(text) != std::string::npos);
  }
}

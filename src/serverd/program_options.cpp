#include "serverd/program_options.h"

#include <CLI/CLI.hpp>
#include <ostream>
#include <string>
#include <utility>

#include "base/version.h"

namespace lineweir::serverd {
namespace {

constexpr const char* description =
    "Makes a studio out of consoles: owns the telephone lines and tells every seat the same.\n"
    "The first line on the standard output, \"ready HOST:PORT\", says that seats can connect.";

constexpr const char* footer = R"(
Signals:
  SIGTERM, SIGINT   tell the seats, then end; a second one ends at once
  SIGHUP            read certificates and groups anew, without dropping a seat

The status is 2 where the configuration or the command line is wrong, 1 for any other failure.

Examples:
  lineweir-server --config /etc/lineweir/server.toml
  lineweir-server --config server.toml --check)";

constexpr int status_wrong = 2;

const CLI::Validator loopback_address(
    [](std::string& text) {
      const auto address = read_socket_address(text);
      return address && address->is_loopback()
                 ? std::string()
                 : text + " is not an address of the loopback with a port";
    },
    "", "loopback address");

}  // namespace

ParsedOptions parse_options(int argc, const char* const* argv, std::ostream& out,
                            std::ostream& err) {
  CLI::App app(description, "lineweir-server");
  app.footer(footer);
  app.set_version_flag("--version", std::string("lineweir-server ") + program_version);
  ProgramOptions options;
  std::string metrics;
  app.add_option("--config", options.configuration_file, "The configuration, a TOML file")
      ->required()
      ->type_name("FILE");
  app.add_flag("--check", options.check, "Read the configuration, tell what it means, and end");
  app.add_flag("--plain-text-network", options.plain_text_network,
               "Listen without TLS also where other machines can connect");
  CLI::Option* const told =
      app.add_option("--metrics", metrics,
                     "Tell figures for Prometheus by HTTP, at /metrics; without an address on a "
                     "free port of 127.0.0.1")
          ->expected(0, 1)
          ->type_name("HOST:PORT");
  app.add_flag("--verbose", options.verbose, "Log more, for those who look for a fault");
  try {
    app.parse(argc, argv);
    if (told->count() > 0) {
      if (metrics.empty()) metrics = "127.0.0.1:0";
      const std::string wrong = loopback_address(metrics);
      if (!wrong.empty()) throw CLI::ValidationError("--metrics", wrong);
      options.metrics = read_socket_address(metrics);
    }
  } catch (const CLI::ParseError& error) {
    if (error.get_exit_code() == static_cast<int>(CLI::ExitCodes::Success)) {
      return {std::nullopt, app.exit(error, out, err)};
    }
    err << "lineweir-server: " << error.what() << std::endl;
    return {std::nullopt, status_wrong};
  }
  return {std::move(options), 0};
}

Configuration configuration_of(const ProgramOptions& options) {
  Configuration configuration = load_configuration(options.configuration_file);
  if (options.plain_text_network) configuration.plain_text_network = true;
  if (options.metrics) configuration.metrics = options.metrics;
  return configuration;
}

}  // namespace lineweir::serverd

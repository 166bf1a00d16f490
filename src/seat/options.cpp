#include "seat/options.h"

#include <CLI/CLI.hpp>
#include <istream>
#include <string>

#include "base/version.h"
#include "state/guard.h"
#include "state/server_addresses.h"

namespace lineweir::seat {

namespace {

// Of a command line that can't be.
constexpr int status_wrong = 2;

// Empty for an address that can be.
std::string why_not_an_address(const std::string& address) {
  std::string why;
  attempt([&] { studio_servers(address, highest_port); },
          [&](const Failure& failure) { why = failure.what(); });
  return why;
}

}  // namespace

std::optional<Options> parse_options(int argc, const char* const* argv, std::istream& input,
                                     std::ostream& output, std::ostream& errors, int& status) {
  CLI::App app(
      "A seat without a window at a lineweir-server, worked by a simulated person, so that a show "
      "is lively with nobody there. The password is read from the standard input.",
      "lineweir-seat");
  app.set_version_flag("--version", std::string("lineweir-seat ") + program_version);
  Options options;
  std::string work = "screener";
  app.add_option("--host", options.login.host, "The server's name or address; several with commas")
      ->required()
      ->check(why_not_an_address);
  app.add_option("--port", options.login.port, "Its port")->required()->check(CLI::Range(1, 65535));
  app.add_option("--user", options.login.user, "Who logs in")->required();
  app.add_option("--as", work, "The work: screener or host")
      ->check(CLI::IsMember({"screener", "host"}))
      ->capture_default_str();
  app.add_option("--seed", options.seed, "The same seed gives the same person")
      ->capture_default_str();
  try {
    app.parse(argc, argv);
  } catch (const CLI::ParseError& problem) {
    status = app.exit(problem, output, errors) == 0 ? 0 : status_wrong;
    return std::nullopt;
  }
  options.work = work == "host" ? Work::Host : Work::Screener;
  std::getline(input, options.login.password);
  return options;
}

}  // namespace lineweir::seat

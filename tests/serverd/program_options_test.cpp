#include "serverd/program_options.h"

#include <doctest/doctest.h>

#include <fstream>
#include <sstream>
#include <vector>

#include "platform/temporary_directory.h"

using namespace lineweir;
using namespace lineweir::serverd;

namespace {

struct Parsed {
  ParsedOptions parsed;
  std::string out;
  std::string err;
};

Parsed parse(std::vector<const char*> words) {
  words.insert(words.begin(), "lineweir-server");
  std::ostringstream out;
  std::ostringstream err;
  auto parsed = parse_options(static_cast<int>(words.size()), words.data(), out, err);
  return {std::move(parsed), out.str(), err.str()};
}

}  // namespace

TEST_CASE("The command line names the configuration, and may say more") {
  const Parsed least = parse({"--config", "server.toml"});
  REQUIRE(least.parsed.options);
  CHECK(least.parsed.options->configuration_file == "server.toml");
  CHECK_FALSE(least.parsed.options->check);
  CHECK_FALSE(least.parsed.options->plain_text_network);
  CHECK_FALSE(least.parsed.options->metrics);

  const Parsed all = parse({"--check", "--plain-text-network", "--verbose", "--metrics",
                            "[::1]:9100", "--config", "server.toml"});
  REQUIRE(all.parsed.options);
  CHECK(all.parsed.options->check);
  CHECK(all.parsed.options->plain_text_network);
  CHECK(all.parsed.options->verbose);
  CHECK(all.parsed.options->metrics == SocketAddress{"::1", 9100});

  const Parsed free_port = parse({"--metrics", "--config", "server.toml"});
  REQUIRE(free_port.parsed.options);
  CHECK(free_port.parsed.options->metrics == SocketAddress{"127.0.0.1", 0});
}

TEST_CASE("A wrong command line is told in one line, with the status 2") {
  for (const auto& words : std::vector<std::vector<const char*>>{
           {},
           {"--config"},
           {"--config", "server.toml", "--quick"},
           {"--config", "server.toml", "more"},
           {"--config", "server.toml", "--metrics", "0.0.0.0:9100"}}) {
    const Parsed wrong = parse(words);
    CHECK_FALSE(wrong.parsed.options);
    CHECK(wrong.parsed.exit_code == 2);
    CHECK(wrong.out.empty());
    CHECK(wrong.err.starts_with("lineweir-server: "));
    CHECK(wrong.err.find('\n') == wrong.err.size() - 1);
  }
}

TEST_CASE("Help is no mistake") {
  const Parsed help = parse({"--help"});
  CHECK_FALSE(help.parsed.options);
  CHECK(help.parsed.exit_code == 0);
  CHECK(help.out.find("--config") != std::string::npos);
  CHECK(help.err.empty());
}

TEST_CASE("What the command line says stands in place of the file's keys") {
  const TemporaryDirectory directory;
  const std::string file = directory.path() / "server.toml";
  std::ofstream(file) << "metrics = \"127.0.0.1:9100\"\n[[group]]\nnumber = 1\n";
  CHECK(configuration_of({.configuration_file = file}).metrics == SocketAddress{"127.0.0.1", 9100});
  CHECK_FALSE(configuration_of({.configuration_file = file}).plain_text_network);
  const Configuration changed = configuration_of({.configuration_file = file,
                                                  .plain_text_network = true,
                                                  .metrics = SocketAddress{"127.0.0.1", 0}});
  CHECK(changed.metrics == SocketAddress{"127.0.0.1", 0});
  CHECK(changed.plain_text_network);
}

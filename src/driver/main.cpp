#include <CLI/CLI.hpp>
#include <fstream>
#include <iostream>

#include "driver/interpreter.h"
#include "platform/sqlite/sqlite_databases.h"

namespace {

namespace driver = lineweir::driver;
namespace platform = lineweir::platform;

// Each script has a workstation of its own; only the files stay.
bool run_script(const std::string& path, platform::Files& files,
                platform::DatabaseEngine& databases) {
  std::ifstream script(path, std::ios::binary);
  if (!script) {
    std::cerr << path << ": can't be read" << std::endl;
    return false;
  }
  driver::Session session(files, databases);
  return driver::carry_out_all(session, script, path, std::cout, std::cerr);
}

}  // namespace

int main(int argc, char** argv) {
  CLI::App app("The whole console with nothing real under it, driven by commands.");
  std::string directory = ".";
  std::vector<std::string> scripts;
  app.add_option("--dir", directory, "The console's working directory")
      ->check(CLI::ExistingDirectory);
  app.add_option("SCRIPT", scripts, "Scripts to run; without any, commands are read from input");
  CLI11_PARSE(app, argc, argv);

  platform::DiskFiles files(directory);
  platform::SqliteDatabases databases(directory);
  if (scripts.empty()) {
    driver::Session session(files, databases);
    std::ostream no_complaints(nullptr);
    driver::carry_out_all(session, std::cin, "", std::cout, no_complaints);
    return 0;
  }
  bool all_well = true;
  for (const std::string& script : scripts)
    all_well = run_script(script, files, databases) && all_well;
  return all_well ? 0 : 1;
}

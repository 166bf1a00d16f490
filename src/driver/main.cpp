#include <CLI/CLI.hpp>
#include <fstream>
#include <iostream>
#include <string>

#include "base/version.h"
#include "driver/interpreter.h"
#include "letters/code_page_letters.h"
#include "platform/icu/icu_transliterator.h"
#include "platform/sqlite/sqlite_engine.h"

namespace {

namespace driver = lineweir::driver;
namespace platform = lineweir::platform;

// Each script has a workstation of its own; only the files stay.
bool run_script(const std::string& path, platform::StreamedFiles& files,
                platform::DatabaseEngine& databases, const lineweir::Letters& letters) {
  std::ifstream script(path, std::ios::binary);
  if (!script) {
    std::cerr << path << ": can't be read" << std::endl;
    return false;
  }
  driver::Session session(files, databases, letters);
  return driver::carry_out_all(session, script, path, std::cout, std::cerr);
}

// Of a command line that can't be.
constexpr int status_wrong = 2;

std::string known_charset(const std::string& name) {
  return lineweir::find_code_page(name) != nullptr ? "" : "no such character set: " + name;
}

}  // namespace

int main(int argc, char** argv) {
  CLI::App app("The whole console with nothing real under it, driven by commands.",
               "lineweir-driver");
  app.set_version_flag("--version", std::string("lineweir-driver ") + lineweir::program_version);
  std::string directory = ".";
  std::vector<std::string> scripts;
  std::string charset(lineweir::default_code_page().name);
  app.add_option("--dir", directory, "The console's working directory")
      ->check(CLI::ExistingDirectory);
  app.add_option("SCRIPT", scripts, "Scripts to run; without any, commands are read from input");
  app.add_option("--charset", charset, "The set of the console's texts, windows-1250 to -1258")
      ->check(known_charset);
  try {
    app.parse(argc, argv);
  } catch (const CLI::ParseError& error) {
    return app.exit(error) == 0 ? 0 : status_wrong;
  }

  const platform::IcuTransliterator transliterator;
  const lineweir::CodePageLetters letters(*lineweir::find_code_page(charset), &transliterator);
  platform::GuardedFiles guard;
  platform::DiskFiles files(directory, letters, &guard);
  platform::SqliteEngine databases(directory, letters, std::chrono::milliseconds::zero(), &guard,
                                   platform::BatchWork::AtOnce);
  if (scripts.empty()) {
    driver::Session session(files, databases, letters);
    std::ostream no_complaints(nullptr);
    driver::carry_out_all(session, std::cin, "", std::cout, no_complaints);
    return 0;
  }
  bool all_well = true;
  for (const std::string& script : scripts)
    all_well = run_script(script, files, databases, letters) && all_well;
  return all_well ? 0 : 1;
}

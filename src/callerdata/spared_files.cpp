#include "callerdata/spared_files.h"

#include <array>
#include <string_view>

#include "callerdata/draft_file.h"
#include "clocks/show_plan_store.h"
#include "state/console_state.h"
#include "state/settings_record.h"
#include "state/trace.h"

namespace lineweir {
namespace {

// What the console itself writes into its folder.
constexpr std::array own_files = {settings_file_name, further_settings_file, trace_file_name};

// What stands behind a log's name in those of the files that the engine keeps beside it.
constexpr std::array<std::string_view, 3> files_beside_log = {"-wal", "-shm", "-journal"};

}  // namespace

platform::SparedFiles spared_files(const ConsoleState& state, const ShowPlanStore& show_plan,
                                   const std::string& shown_name) {
  const auto refusal = [&](const std::string& reason) {
    return "The file '" + shown_name + "' " + reason +
           " and is not overwritten. Choose another name.";
  };
  platform::SparedFiles spared;
  const auto spare = [&](const std::string& path, const std::string& reason) {
    if (!path.empty()) spared.files.emplace_back(path, refusal(reason));
  };
  const std::string own = "belongs to Lineweir";
  for (const std::string_view name : own_files) spare(std::string(name), own);
  // Those of other consoles in the folder count too.
  for (int number = 1; number <= platform::most_console_files; ++number) {
    spare(platform::console_file_name(draft_file_name, number), own);
  }
  spare(show_plan.TheDataFileName, own);
  spare(state.program.MessageFile, own);
  const std::string database = "is a database";
  for (const std::string& log :
       {state.DatabaseViewer.Data1.database_name.get(), state.Lineweir.Data1.database_name.get()}) {
    if (log.empty()) continue;
    for (const std::string_view ending : files_beside_log) {
      spare(log + std::string(ending), "belongs to the call log");
    }
    spare(log, database);
  }
  spared.database = refusal(database);
  return spared;
}

}  // namespace lineweir

#include "endurance/week_studio.h"

#include "driver/hands.h"
#include "platform/services_with.h"
#include "platform/sqlite/sqlite_engine.h"

namespace lineweir::endurance {

WeekDesk::WeekDesk(platform::VirtualEventLoop& loop)
    : databases(std::make_unique<platform::SqliteEngine>(folder.path())), workstation(loop) {}

void WeekDesk::start(platform::ClientSocket* socket) {
  console = std::make_unique<Console>(platform::services_with(
      workstation.services(workstation.files, *databases), {.winsock1 = socket}));
  console->messages.on_shown = [this](const std::string& text) { messages.push_back(text); };
  console->startup.Main("");
  workstation.dialogs.answer_file(week_log);
  driver::click(*console, {console->Lineweir, console->Lineweir.DatabasePathMenuItem});
}

std::unique_ptr<WeekStudio> make_week_studio(std::string_view way,
                                             platform::VirtualEventLoop& loop) {
  if (way == "box") return week_at_box(loop);
  if (way == "socket") return week_at_socket(loop);
  if (way == "objects") return week_at_objects(loop);
  if (way == "server") return week_at_server(loop);
  return nullptr;
}

}  // namespace lineweir::endurance

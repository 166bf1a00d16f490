#include "practice/practice_world.h"

namespace lineweir::practice {

PracticeWorld::PracticeWorld(const platform::Services& real, const std::filesystem::path& folder)
    : real_(real),
      folder_(folder),
      files_(real.files, folder_),
      user_files_(real.user_files, folder_),
      databases_(real.databases, folder_),
      clock_(real.clock),
      port_(real.loop) {}

platform::Services PracticeWorld::services() {
  return {.loop = real_.loop,
          .clock = clock_,
          .random = real_.random,
          .files = files_,
          .user_files = user_files_,
          .dialogs = real_.dialogs,
          .databases = databases_,
          .journal = real_.journal,
          .printer = real_.printer,
          .attention_sound = real_.attention_sound,
          .letters = real_.letters,
          .comm1 = port_,
          .comm2 = switch_console_,
          .winsock1 = socket_,
          .remote_objects = remote_objects_,
          .process_number = real_.process_number,
          .end_program = real_.end_program};
}

}  // namespace lineweir::practice

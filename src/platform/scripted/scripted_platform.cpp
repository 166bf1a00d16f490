#include "platform/scripted/scripted_platform.h"

namespace lineweir::platform {

ScriptedPlatform::ScriptedPlatform() = default;

ScriptedPlatform::ScriptedPlatform(const CodePage& page, const Transliterator* transliterator)
    : letters(page, transliterator) {}

ScriptedPlatform::~ScriptedPlatform() = default;

Services ScriptedPlatform::services() { return services(files, databases); }

Services ScriptedPlatform::services(Files& other_files, DatabaseEngine& other_databases) {
  return services(other_files, other_databases, letters);
}

Services ScriptedPlatform::services(Files& other_files, DatabaseEngine& other_databases,
                                    const Letters& other_letters) {
  return {loop,           clock,
          random,         other_files,
          dialogs,        other_databases,
          printer,        other_letters,
          comm1,          comm2,
          winsock1,       remote_objects,
          process_number, [this] { ended = true; }};
}

void ScriptedPlatform::restart() {
  comm1.restart();
  comm2.restart();
  winsock1.restart();
  remote_objects.restart();
  random.restart();
  ended = false;
}

}  // namespace lineweir::platform

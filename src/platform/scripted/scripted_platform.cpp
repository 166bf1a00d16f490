#include "platform/scripted/scripted_platform.h"

namespace lineweir::platform {

ScriptedPlatform::ScriptedPlatform()
    : own_loop_(std::make_unique<VirtualEventLoop>()), loop(*own_loop_) {}

ScriptedPlatform::ScriptedPlatform(const CodePage& page, const Transliterator* transliterator)
    : own_loop_(std::make_unique<VirtualEventLoop>()),
      loop(*own_loop_),
      letters(page, transliterator) {}

ScriptedPlatform::ScriptedPlatform(VirtualEventLoop& shared_loop) : loop(shared_loop) {}

ScriptedPlatform::~ScriptedPlatform() = default;

Services ScriptedPlatform::services() { return services(files, databases); }

Services ScriptedPlatform::services(StreamedFiles& other_files, DatabaseEngine& other_databases) {
  return services(other_files, other_databases, letters);
}

Services ScriptedPlatform::services(StreamedFiles& other_files, DatabaseEngine& other_databases,
                                    const Letters& other_letters) {
  failing_databases.use(other_databases);
  user_files.use(other_files);
  return {
      .loop = loop,
      .clock = clock,
      .random = random,
      .files = other_files,
      .user_files = user_files,
      .dialogs = dialogs,
      .databases = failing_databases,
      .journal = journal,
      .printer = printer,
      .attention_sound = attention_sound,
      .letters = other_letters,
      .comm1 = comm1,
      .comm2 = comm2,
      .winsock1 = winsock1,
      .remote_objects = other_remote_objects != nullptr ? *other_remote_objects : remote_objects,
      .process_number = process_number,
      .end_program = [this] { ended = true; }};
}

void ScriptedPlatform::restart() {
  comm1.restart();
  comm2.restart();
  winsock1.restart();
  remote_objects.restart();
  journal.on_change.forget_handler();
  journal.on_replaced.forget_handler();
  random.restart();
  ended = false;
}

}  // namespace lineweir::platform

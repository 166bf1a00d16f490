#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/console.h"
#include "platform/disk/disk_files.h"
#include "platform/scripted/scripted_platform.h"

namespace lineweir::driver {

// A workstation on which the console is started, worked with and ended, as often as one likes.
class Session {
 public:
  // The console's files and databases are real, or in memory; all outlive the session.
  Session(platform::StreamedFiles& files, platform::DatabaseEngine& databases,
          const Letters& letters);
  // Databases in memory, which last as long as the session, and letters of the default set.
  explicit Session(platform::StreamedFiles& files);
  Session(const Session&) = delete;
  Session& operator=(const Session&) = delete;

  platform::ScriptedPlatform& platform() { return platform_; }

  // The console now running; a Refusal if none is.
  Console& console();
  bool launched() const { return console_.has_value(); }

  // Starts the program; returns when the main form is shown.
  void launch(const std::string& command_line);

  // Runs what the user or the world does, and what it makes due at once. All that touches the
  // console goes through here or through advance(): when the console has ended the program it is
  // gone behind it.
  void act(const std::function<void()>& action);
  void advance(platform::Milliseconds span);

  // Another program deletes a file, on the disk or in memory.
  void delete_file(const std::string& path);

  // What the mouse's button is down on. Compared only.
  const Control* pressed = nullptr;

  // What was shown and traced since the last call.
  std::vector<std::string> take_messages() { return std::exchange(messages_, {}); }
  std::vector<std::string> take_trace() { return std::exchange(trace_, {}); }

 private:
  void remove_ended_console();

  platform::StreamedFiles& files_;
  platform::ScriptedPlatform platform_;
  platform::DatabaseEngine& databases_;
  const Letters& letters_;
  std::vector<std::string> messages_;
  std::vector<std::string> trace_;
  std::optional<Console> console_;
};

}  // namespace lineweir::driver

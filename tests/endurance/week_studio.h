#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>

#include "core/console.h"
#include "platform/scripted/scripted_platform.h"
#include "platform/temporary_directory.h"

namespace lineweir::endurance {

inline constexpr const char* week_log = "calls.mdb";

// What a console needs beside its way to the studio: files in memory, and a log on the disk, so
// that the calls of a week aren't the test's own memory.
struct WeekDesk {
  explicit WeekDesk(platform::VirtualEventLoop& loop);

  // Makes the console with another socket where one is given, starts it and chooses the log.
  void start(platform::ClientSocket* socket = nullptr);

  TemporaryDirectory folder;
  // Below those who use them.
  std::unique_ptr<platform::DatabaseEngine> databases;
  platform::ScriptedPlatform workstation;
  std::unique_ptr<Console> console;
  // What the user was told since it was last asked.
  std::vector<std::string> messages;
};

// A studio in virtual time with one console, which is connected by one of its ways.
class WeekStudio {
 public:
  virtual ~WeekStudio() = default;

  virtual WeekDesk& desk() = 0;
  // The studio's own truth of a line.
  virtual char letter(int line) const = 0;
  // A caller rings on a free line, or hangs up; whether that is so.
  virtual bool ring(int line, const std::string& number) = 0;
  virtual bool leave(int line) = 0;
  // Calls that the studio has written down since the last time; nothing where it writes down none.
  // What it keeps of them in the test's own memory goes.
  virtual std::size_t take_written_calls() { return 0; }
  virtual bool writes_calls_down() const { return false; }
};

// The ways: "box", "socket", "objects" and "server"; null for another word. The loop outlives it.
std::unique_ptr<WeekStudio> make_week_studio(std::string_view way,
                                             platform::VirtualEventLoop& loop);

std::unique_ptr<WeekStudio> week_at_box(platform::VirtualEventLoop& loop);
std::unique_ptr<WeekStudio> week_at_socket(platform::VirtualEventLoop& loop);
std::unique_ptr<WeekStudio> week_at_objects(platform::VirtualEventLoop& loop);
std::unique_ptr<WeekStudio> week_at_server(platform::VirtualEventLoop& loop);

}  // namespace lineweir::endurance

#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "core/console.h"
#include "letters/code_page_letters.h"
#include "platform/disk/disk_files.h"
#include "platform/disk_journal/disk_call_journal.h"
#include "platform/qt/qt_event_loop.h"
#include "platform/qt/qt_system_clock.h"
#include "platform/scripted/scripted_platform.h"
#include "platform/sqlite/sqlite_engine.h"
#include "platform/threaded/threaded_user_files.h"

namespace lineweir::endurance {

inline constexpr const char* log_name = "calls.mdb";
inline constexpr const char* hot_list_name = "hot.lwb";

// A console without a window whose time, files, log and journal are real: those of the folder in
// which the program was started. Its box is a script's, and so are its dialogs.
class WorkedConsole {
 public:
  WorkedConsole();
  ~WorkedConsole();
  WorkedConsole(const WorkedConsole&) = delete;
  WorkedConsole& operator=(const WorkedConsole&) = delete;

  // Lets the loop run until that is so, for five seconds at most; whether it is.
  template <class Condition>
  bool wait(Condition condition) {
    const platform::Milliseconds latest = loop_.now() + std::chrono::seconds(5);
    while (!condition()) {
      if (loop_.now() > latest) return false;
      loop_.yield();
    }
    return true;
  }
  void pass(platform::Milliseconds span);

  // What the box reports of a line, until the console holds it.
  bool report(int line, char letter);
  // By keys and mouse, as a user does. Texts go into the fields of Form4.
  void type_caller(int line, const std::string& name, const std::string& number);
  void save_caller();
  void choose_log();
  void choose_hot_list();
  void answer_file(const std::string& name) { workstation_.dialogs.answer_file(name); }

  platform::Milliseconds now() const { return loop_.now(); }
  Console& console() { return console_; }
  // What the user was told since the start.
  const std::vector<std::string>& messages() const { return messages_; }
  bool log_takes_all() const { return journal_.state().waiting == 0; }

 private:
  platform::Services services();

  CodePageLetters letters_;
  platform::GuardedFiles guard_;
  const std::filesystem::path folder_ = std::filesystem::current_path();
  std::shared_ptr<platform::DiskFiles> files_;
  platform::QtEventLoop loop_;
  platform::QtSystemClock clock_;
  platform::SqliteEngine databases_;
  platform::DiskCallJournal journal_;
  platform::ThreadedUserFiles user_files_;
  platform::ScriptedPlatform workstation_;
  std::vector<std::string> messages_;
  Console console_;
};

}  // namespace lineweir::endurance

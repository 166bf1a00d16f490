#pragma once

#include <sys/types.h>
#include <string>
#include <vector>

#include "platform/temporary_directory.h"

namespace lineweir::test {

// The program lineweir-server in a process of its own, in a folder of its own, which outlasts it.
// Whatever it is waited for has to come within 20 seconds.
class StartedServer {
 public:
  enum class Log { Read, Closed };

  // Runs with a configuration of this text, and more words on the command line.
  StartedServer(const TemporaryDirectory& folder, const std::string& configuration,
                std::vector<std::string> words = {}, Log log = Log::Read);
  // Ends it, in whatever way.
  ~StartedServer();
  StartedServer(const StartedServer&) = delete;
  StartedServer& operator=(const StartedServer&) = delete;

  // What it has printed until its end, or until the text is in it; empty where that doesn't come.
  const std::string& wait_for_output(const std::string& text = {});
  // What stands before `from` is passed over.
  const std::string& wait_for_log(const std::string& text = {}, std::size_t from = 0);

  // The port of its line "ready", or -1.
  int wait_until_ready();

  void signal(int number) const;
  // Its status; -1 where a signal has ended it or it doesn't end.
  int wait_for_end();
  pid_t process() const { return process_; }

 private:
  struct Stream {
    int descriptor = -1;
    std::string text;
    bool ended = false;
  };
  // Reads both, so that neither holds the program up.
  void wait(const Stream& stream, const std::string& text, std::size_t from = 0);

  pid_t process_ = -1;
  Stream output_;
  Stream log_;
};

// Writes the configuration server.toml into the folder.
void write_configuration(const TemporaryDirectory& folder, const std::string& text);

}  // namespace lineweir::test

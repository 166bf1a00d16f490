#pragma once

#include <functional>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include "platform/disk/file_descriptor.h"
#include "platform/temporary_directory.h"

// A server of the test's own behind a socket, which answers each line by a function.
class LineServer {
 public:
  using Answer = std::function<std::string(const std::string& line)>;

  // The answer is a line without its end; an empty one ends the connection.
  explicit LineServer(Answer answer);
  ~LineServer();
  LineServer(const LineServer&) = delete;
  LineServer& operator=(const LineServer&) = delete;

  std::string path() const { return (directory_.path() / "admin.sock").string(); }
  // What was asked so far.
  std::vector<std::string> lines() const;

 private:
  void serve();
  void serve(int connection);

  lineweir::TemporaryDirectory directory_;
  Answer answer_;
  lineweir::platform::FileDescriptor listener_{-1};
  mutable std::mutex mutex_;
  std::vector<std::string> lines_;
  std::thread thread_;
};

struct ProgramRun {
  int status = -1;
  std::string out;
  std::string errors;
};

// Runs the real program to its end.
ProgramRun run_admin(std::vector<std::string> words, const std::string& input = "");

// Runs it on a terminal of its own, on which a person types each of the lines once the program has
// asked for something. `out` holds all that the terminal shows.
ProgramRun run_admin_on_terminal(std::vector<std::string> words,
                                 const std::vector<std::string>& typed);

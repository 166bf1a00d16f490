#include "admin/admin_desk.h"

#include <fcntl.h>
#include <poll.h>
#include <pty.h>
#include <signal.h>
#include <spawn.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <stdexcept>
#include <utility>

using lineweir::platform::FileDescriptor;

namespace {

constexpr int limit_ms = 20'000;

std::vector<char*> pointers_to(std::vector<std::string>& words) {
  std::vector<char*> pointers;
  for (std::string& word : words) pointers.push_back(word.data());
  pointers.push_back(nullptr);
  return pointers;
}

std::pair<FileDescriptor, FileDescriptor> make_pipe() {
  std::array<int, 2> ends{};
  if (::pipe2(ends.data(), O_CLOEXEC) != 0) throw std::runtime_error("no pipe");
  return {FileDescriptor(ends[0]), FileDescriptor(ends[1])};
}

// Appends what comes; false at the end.
bool read_some(int descriptor, std::string& text) {
  pollfd waiting{descriptor, POLLIN, 0};
  std::array<char, 4096> buffer;
  if (::poll(&waiting, 1, limit_ms) != 1) return false;
  const ssize_t count = ::read(descriptor, buffer.data(), buffer.size());
  if (count <= 0) return false;
  text.append(buffer.data(), static_cast<std::size_t>(count));
  return true;
}

int status_of(pid_t process) {
  int status = 0;
  ::waitpid(process, &status, 0);
  return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

}  // namespace

LineServer::LineServer(Answer answer) : answer_(std::move(answer)) {
  listener_ = FileDescriptor(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0));
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  const std::string name = path();
  std::memcpy(address.sun_path, name.data(), name.size());
  if (::bind(listener_.get(), reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0 ||
      ::listen(listener_.get(), 5) != 0) {
    throw std::runtime_error("no socket");
  }
  thread_ = std::thread([this] { serve(); });
}

LineServer::~LineServer() {
  ::shutdown(listener_.get(), SHUT_RDWR);
  thread_.join();
}

std::vector<std::string> LineServer::lines() const {
  const std::lock_guard lock(mutex_);
  return lines_;
}

void LineServer::serve() {
  for (;;) {
    const FileDescriptor connection(::accept(listener_.get(), nullptr, nullptr));
    if (!connection.is_open()) return;
    serve(connection.get());
  }
}

void LineServer::serve(int connection) {
  std::string text;
  while (read_some(connection, text)) {
    for (auto end = text.find('\n'); end != std::string::npos; end = text.find('\n')) {
      const std::string line = text.substr(0, end);
      text.erase(0, end + 1);
      {
        const std::lock_guard lock(mutex_);
        lines_.push_back(line);
      }
      std::string answer = answer_(line);
      if (answer.empty()) return;
      // A test may write its answer over several lines.
      std::ranges::replace(answer, '\n', ' ');
      // In two pieces, as a socket may hand it over.
      const std::string whole = answer + '\n';
      const auto half = whole.size() / 2;
      static_cast<void>(!::write(connection, whole.data(), half));
      static_cast<void>(!::write(connection, whole.data() + half, whole.size() - half));
    }
  }
}

ProgramRun run_admin(std::vector<std::string> words, const std::string& input) {
  auto [input_end, typing_end] = make_pipe();
  auto [out_end, program_out] = make_pipe();
  auto [errors_end, program_errors] = make_pipe();
  words.insert(words.begin(), LINEWEIR_ADMIN_PROGRAM);
  const auto pointers = pointers_to(words);

  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_adddup2(&actions, input_end.get(), STDIN_FILENO);
  posix_spawn_file_actions_adddup2(&actions, program_out.get(), STDOUT_FILENO);
  posix_spawn_file_actions_adddup2(&actions, program_errors.get(), STDERR_FILENO);
  pid_t process = -1;
  const int failure =
      posix_spawn(&process, pointers[0], &actions, nullptr, pointers.data(), environ);
  posix_spawn_file_actions_destroy(&actions);
  if (failure != 0) throw std::runtime_error("the program doesn't start");
  program_out.close();
  program_errors.close();
  static_cast<void>(!::write(typing_end.get(), input.data(), input.size()));
  typing_end.close();

  ProgramRun run;
  while (read_some(out_end.get(), run.out)) {
  }
  while (read_some(errors_end.get(), run.errors)) {
  }
  run.status = status_of(process);
  return run;
}

ProgramRun run_admin_on_terminal(std::vector<std::string> words,
                                 const std::vector<std::string>& typed) {
  words.insert(words.begin(), LINEWEIR_ADMIN_PROGRAM);
  const auto pointers = pointers_to(words);
  int terminal = -1;
  const pid_t process = ::forkpty(&terminal, nullptr, nullptr, nullptr);
  if (process == 0) {
    ::execv(pointers[0], pointers.data());
    ::_exit(127);
  }
  const FileDescriptor screen(terminal);
  ProgramRun run;
  std::size_t asked = 0;
  for (const std::string& line : typed) {
    // What is asked ends with a colon and a blank.
    while (run.out.find(": ", asked) == std::string::npos && read_some(screen.get(), run.out)) {
    }
    asked = run.out.size();
    static_cast<void>(!::write(screen.get(), line.data(), line.size()));
  }
  while (read_some(screen.get(), run.out)) {
  }
  run.status = status_of(process);
  return run;
}

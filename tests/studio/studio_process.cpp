#include "studio_process.h"

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <stdexcept>

using lineweir::studio::Descriptor;

namespace {

constexpr int limit_ms = 10'000;

}  // namespace

StudioProcess::StudioProcess(std::vector<std::string> arguments) {
  std::array<int, 2> ends{};
  if (pipe2(ends.data(), O_CLOEXEC) != 0) throw std::runtime_error("no pipe");
  output_ = Descriptor(ends[0]);
  const Descriptor write_end(ends[1]);

  arguments.insert(arguments.begin(), LINEWEIR_STUDIO_PROGRAM);
  std::vector<char*> pointers;
  for (std::string& argument : arguments) pointers.push_back(argument.data());
  pointers.push_back(nullptr);

  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_adddup2(&actions, write_end.number(), STDOUT_FILENO);
  const int failure =
      posix_spawn(&process_, pointers[0], &actions, nullptr, pointers.data(), environ);
  posix_spawn_file_actions_destroy(&actions);
  if (failure != 0) throw std::runtime_error("the studio doesn't start");
}

StudioProcess::~StudioProcess() {
  if (process_ < 0) return;
  kill(process_, SIGKILL);
  waitpid(process_, nullptr, 0);
}

std::optional<std::string> StudioProcess::line() {
  std::size_t end = unread_.find('\n');
  while (end == std::string::npos) {
    pollfd waiting{output_.number(), POLLIN, 0};
    std::array<char, 1024> buffer;
    if (poll(&waiting, 1, limit_ms) != 1) return std::nullopt;
    const ssize_t count = read(output_.number(), buffer.data(), buffer.size());
    if (count <= 0) return std::nullopt;
    unread_.append(buffer.data(), static_cast<std::size_t>(count));
    end = unread_.find('\n');
  }
  std::string text = unread_.substr(0, end);
  unread_.erase(0, end + 1);
  return text;
}

std::string StudioProcess::device() {
  const std::string beginning = "device ";
  const auto first = line();
  if (!first || !first->starts_with(beginning)) throw std::runtime_error("no device is named");
  return first->substr(beginning.size());
}

void StudioProcess::signal(int number) { kill(process_, number); }

int StudioProcess::wait() {
  while (line()) {
  }
  int status = 0;
  waitpid(process_, &status, 0);
  process_ = -1;
  return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

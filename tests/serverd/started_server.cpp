#include "serverd/started_server.h"

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <fstream>
#include <stdexcept>

namespace lineweir::test {

namespace {

using Clock = std::chrono::steady_clock;

constexpr std::chrono::seconds longest_wait{20};

int left_until(Clock::time_point limit) {
  const auto left = std::chrono::ceil<std::chrono::milliseconds>(limit - Clock::now());
  return static_cast<int>(std::max(left, std::chrono::milliseconds(0)).count());
}

}  // namespace

StartedServer::StartedServer(const TemporaryDirectory& folder, const std::string& configuration,
                             std::vector<std::string> words, Log log_use) {
  write_configuration(folder, configuration);
  words.insert(words.begin(),
               {LINEWEIR_SERVER, "--config", (folder.path() / "server.toml").string()});
  std::vector<char*> arguments;
  for (std::string& word : words) arguments.push_back(word.data());
  arguments.push_back(nullptr);

  std::array<int, 2> output{};
  std::array<int, 2> log{};
  if (::pipe2(output.data(), O_CLOEXEC) != 0 || ::pipe2(log.data(), O_CLOEXEC) != 0) {
    throw std::runtime_error("no pipe");
  }
  process_ = ::fork();
  if (process_ == 0) {
    ::dup2(output[1], STDOUT_FILENO);
    ::dup2(log[1], STDERR_FILENO);
    if (log_use == Log::Closed) ::close(STDERR_FILENO);
    ::execv(arguments[0], arguments.data());
    ::_exit(127);
  }
  ::close(output[1]);
  ::close(log[1]);
  output_.descriptor = output[0];
  log_.descriptor = log[0];
}

StartedServer::~StartedServer() {
  if (process_ > 0) {
    ::kill(process_, SIGKILL);
    ::waitpid(process_, nullptr, 0);
  }
  ::close(output_.descriptor);
  ::close(log_.descriptor);
}

const std::string& StartedServer::wait_for_output(const std::string& text) {
  wait(output_, text);
  return output_.text;
}

const std::string& StartedServer::wait_for_log(const std::string& text, std::size_t from) {
  wait(log_, text, from);
  return log_.text;
}

void StartedServer::wait(const Stream& stream, const std::string& text, std::size_t from) {
  const auto limit = Clock::now() + longest_wait;
  while (!stream.ended && (text.empty() || stream.text.find(text, from) == std::string::npos)) {
    std::array<Stream*, 2> streams{&output_, &log_};
    std::array<pollfd, 2> polled{};
    for (std::size_t i = 0; i < streams.size(); ++i) {
      polled[i] = {streams[i]->ended ? -1 : streams[i]->descriptor, POLLIN, 0};
    }
    if (::poll(polled.data(), polled.size(), left_until(limit)) <= 0) return;
    for (std::size_t i = 0; i < streams.size(); ++i) {
      if (polled[i].revents == 0) continue;
      std::array<char, 4096> piece;
      const ssize_t count = ::read(streams[i]->descriptor, piece.data(), piece.size());
      if (count > 0) streams[i]->text.append(piece.data(), static_cast<std::size_t>(count));
      if (count <= 0) streams[i]->ended = true;
    }
  }
}

int StartedServer::wait_until_ready() {
  const std::string& line = wait_for_output("\n");
  if (!line.starts_with("ready ")) return -1;
  return std::stoi(line.substr(line.rfind(':') + 1));
}

void StartedServer::signal(int number) const { ::kill(process_, number); }

int StartedServer::wait_for_end() {
  // Its end closes both.
  wait(output_, {});
  wait(log_, {});
  if (!output_.ended || !log_.ended) return -1;
  int status = 0;
  ::waitpid(process_, &status, 0);
  process_ = -1;
  return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

void write_configuration(const TemporaryDirectory& folder, const std::string& text) {
  std::ofstream(folder.path() / "server.toml") << text;
}

}  // namespace lineweir::test

// Whatever ends the program while it asks for a password, the terminal shows again what is typed.

#include <doctest/doctest.h>
#include <pty.h>
#include <signal.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <termios.h>
#include <unistd.h>

#include <array>
#include <string>

#include "admin/admin_desk.h"

namespace {

// The program on a terminal that isn't its session's, so that its end alone changes nothing there.
class AskingProgram {
 public:
  explicit AskingProgram(const std::string& socket) {
    REQUIRE(::openpty(&screen_, &terminal_, nullptr, nullptr, nullptr) == 0);
    std::array<std::string, 6> words = {
        LINEWEIR_ADMIN_PROGRAM, "--socket", socket, "user", "password", "ann"};
    std::array<char*, 7> pointers{};
    for (std::size_t i = 0; i < words.size(); ++i) pointers[i] = words[i].data();
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
      posix_spawn_file_actions_adddup2(&actions, terminal_, stream);
    }
    const int failure =
        ::posix_spawn(&process_, pointers[0], &actions, nullptr, pointers.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    REQUIRE(failure == 0);
  }
  ~AskingProgram() {
    ::close(screen_);
    ::close(terminal_);
  }
  AskingProgram(const AskingProgram&) = delete;
  AskingProgram& operator=(const AskingProgram&) = delete;

  void wait_until_it_asks() const {
    std::string shown;
    std::array<char, 100> piece{};
    while (!shown.ends_with(": ")) {
      const ssize_t count = ::read(screen_, piece.data(), piece.size());
      REQUIRE(count > 0);
      shown.append(piece.data(), static_cast<std::size_t>(count));
    }
  }
  bool shows_typing() const {
    termios now{};
    REQUIRE(::tcgetattr(terminal_, &now) == 0);
    return (now.c_lflag & ECHO) != 0;
  }
  // The signal that has ended it.
  int end_by(int signal) const {
    ::kill(process_, signal);
    int status = 0;
    ::waitpid(process_, &status, 0);
    return WIFSIGNALED(status) ? WTERMSIG(status) : 0;
  }

 private:
  int screen_ = -1;
  int terminal_ = -1;
  pid_t process_ = -1;
};

}  // namespace

TEST_CASE("A signal that ends the program at the password gives the terminal its echo back") {
  const rlimit no_core{};
  ::setrlimit(RLIMIT_CORE, &no_core);
  const LineServer server([](const std::string&) { return R"({"ok": true})"; });
  for (const int signal : {SIGINT, SIGTERM, SIGHUP, SIGQUIT}) {
    CAPTURE(signal);
    const AskingProgram program(server.path());
    program.wait_until_it_asks();
    CHECK_FALSE(program.shows_typing());
    CHECK(program.end_by(signal) == signal);
    CHECK(program.shows_typing());
  }
}

#include "admin/password_entry.h"

#include <signal.h>
#include <termios.h>
#include <unistd.h>

#include <array>
#include <cstdio>
#include <iostream>
#include <string_view>

#include "admin/trouble.h"

namespace lineweir::admin {
namespace {

constexpr std::array ending_signals = {SIGINT, SIGTERM, SIGHUP, SIGQUIT};

// As the terminal was; a signal's handler can't be given it.
termios terminal_before;  // NOLINT

extern "C" void restore_and_end(int signal_number) {
  ::tcsetattr(STDIN_FILENO, TCSANOW, &terminal_before);
  ::signal(signal_number, SIG_DFL);
  ::raise(signal_number);
}

// The terminal shows nothing that is typed for as long as this object lives, and the program's end
// by a signal gives it its echo back.
class NoEcho {
 public:
  NoEcho() {
    if (::tcgetattr(STDIN_FILENO, &terminal_before) != 0) throw Trouble("There is no terminal.");
    struct sigaction ends {};
    ends.sa_handler = restore_and_end;
    for (std::size_t i = 0; i < ending_signals.size(); ++i) {
      ::sigaction(ending_signals[i], &ends, &before_[i]);
    }
    termios silent = terminal_before;
    silent.c_lflag &= ~static_cast<tcflag_t>(ECHO);
    ::tcsetattr(STDIN_FILENO, TCSAFLUSH, &silent);
  }
  ~NoEcho() {
    ::tcsetattr(STDIN_FILENO, TCSANOW, &terminal_before);
    for (std::size_t i = 0; i < ending_signals.size(); ++i) {
      ::sigaction(ending_signals[i], &before_[i], nullptr);
    }
  }
  NoEcho(const NoEcho&) = delete;
  NoEcho& operator=(const NoEcho&) = delete;

 private:
  std::array<struct sigaction, ending_signals.size()> before_{};
};

void say(std::string_view text) {
  std::cerr << text;
  std::cerr.flush();
}

}  // namespace

std::string read_password_line() {
  std::string line;
  if (!std::getline(std::cin, line)) throw Trouble("There is no password on the standard input.");
  if (line.ends_with('\r')) line.pop_back();
  return line;
}

std::string ask_password(const std::string& user) {
  if (::isatty(STDIN_FILENO) == 0) {
    throw Trouble("The password is asked for on a terminal; give it with --password-stdin.");
  }
  const NoEcho no_echo;
  say("Password of " + user + ": ");
  const std::string password = read_password_line();
  say("\nOnce more: ");
  const std::string again = read_password_line();
  say("\n");
  if (password != again) throw Trouble("The two passwords differ; nothing was changed.");
  return password;
}

}  // namespace lineweir::admin

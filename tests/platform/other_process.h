#pragma once

#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cstdlib>
#include <functional>

namespace lineweir::test {

// Another process, which runs a function and tells what it likes through a pipe. It ends with the
// function, or by a kill.
class OtherProcess {
 public:
  using Tell = std::function<void(int)>;

  explicit OtherProcess(
      const std::function<void(const Tell& tell, const std::function<void()>& await)>& run) {
    std::array<int, 2> told{};
    std::array<int, 2> asked{};
    if (::pipe(told.data()) != 0 || ::pipe(asked.data()) != 0) std::abort();
    process_ = ::fork();
    if (process_ == 0) {
      ::close(told[0]);
      ::close(asked[1]);
      run(
          [&](int number) {
            if (::write(told[1], &number, sizeof number) != sizeof number) ::_exit(3);
          },
          [&] {
            char any = 0;
            if (::read(asked[0], &any, 1) != 1) ::_exit(4);
          });
      ::_exit(0);
    }
    ::close(told[1]);
    ::close(asked[0]);
    told_ = told[0];
    asked_ = asked[1];
  }
  ~OtherProcess() {
    ::close(told_);
    ::close(asked_);
    wait();
  }
  OtherProcess(const OtherProcess&) = delete;
  OtherProcess& operator=(const OtherProcess&) = delete;

  // The next number that the process tells; -1 once it has ended.
  int next() const {
    int number = 0;
    return ::read(told_, &number, sizeof number) == sizeof number ? number : -1;
  }
  // The process goes on from its next `await`.
  void go_on() const { static_cast<void>(!::write(asked_, "x", 1)); }
  void kill() const { ::kill(process_, SIGKILL); }

  int wait() {
    if (process_ > 0) ::waitpid(process_, &status_, 0);
    process_ = -1;
    return status_;
  }

 private:
  pid_t process_ = -1;
  int told_ = -1;
  int asked_ = -1;
  int status_ = 0;
};

}  // namespace lineweir::test

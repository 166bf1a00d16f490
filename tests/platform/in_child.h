#pragma once

#include <doctest/doctest.h>
#include <sys/types.h>
#include <sys/wait.h>
#include <unistd.h>

#include <functional>

namespace lineweir::test {

// What the action gives, from 0 to 255, in a process of its own, which ends with it. For what can't
// be taken back, such as a limit or another user.
inline int in_child(const std::function<int()>& action) {
  const pid_t child = ::fork();
  if (child == 0) ::_exit(action());
  int status = 0;
  REQUIRE(::waitpid(child, &status, 0) == child);
  REQUIRE(WIFEXITED(status));
  return WEXITSTATUS(status);
}

// The same, as somebody who may not write and read everything, as root may.
inline int in_child_without_power(const std::function<int()>& action) {
  return in_child([&] {
    const uid_t nobody = 65534;
    if (::geteuid() == 0 && ::setuid(nobody) != 0) return 255;
    return action();
  });
}

}  // namespace lineweir::test

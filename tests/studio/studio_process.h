#pragma once

#include <sys/types.h>

#include <optional>
#include <string>
#include <vector>

#include "studio/descriptor.h"

// The real program, run beside the test. Ended at the latest with this object.
class StudioProcess {
 public:
  // Its standard output is read here; its standard error is the test's own.
  explicit StudioProcess(std::vector<std::string> arguments);
  ~StudioProcess();
  StudioProcess(const StudioProcess&) = delete;
  StudioProcess& operator=(const StudioProcess&) = delete;

  // The next line of its standard output without the line feed; nothing at the end or after ten
  // seconds without one.
  std::optional<std::string> line();

  // The device that its first line names.
  std::string device();

  void signal(int number);

  // Its exit code once it has ended, or -1 if a signal has ended it.
  int wait();

 private:
  pid_t process_ = -1;
  lineweir::studio::Descriptor output_;
  std::string unread_;
};

#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <string_view>

namespace lineweir::serverd {

// The service manager that started the program, if one did and listens to it.
class ServiceManager {
 public:
  // By the environment, as systemd sets it.
  ServiceManager();

  // "READY=1", "STOPPING=1", "WATCHDOG=1", … Never waits.
  void tell(std::string_view state) const;

  // It ends a program that doesn't tell its watchdog something this often.
  std::optional<std::chrono::milliseconds> watchdog() const { return watchdog_; }

 private:
  std::string socket_;
  std::optional<std::chrono::milliseconds> watchdog_;
};

}  // namespace lineweir::serverd

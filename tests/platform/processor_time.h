#pragma once

#include <sys/resource.h>

#include <chrono>

namespace lineweir {

// What this process has used of the processor so far, in the program and for it in the system.
inline std::chrono::microseconds processor_time() {
  rusage usage{};
  ::getrusage(RUSAGE_SELF, &usage);
  return std::chrono::seconds(usage.ru_utime.tv_sec + usage.ru_stime.tv_sec) +
         std::chrono::microseconds(usage.ru_utime.tv_usec + usage.ru_stime.tv_usec);
}

}  // namespace lineweir

#include "platform/process/memory_dump.h"

#include <sys/prctl.h>

#include <cstdlib>
#include <string_view>

namespace lineweir::platform {
namespace {

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr bool is_watched = true;
#elif defined(__has_feature)
constexpr bool is_watched = __has_feature(address_sanitizer) || __has_feature(thread_sanitizer);
#else
constexpr bool is_watched = false;
#endif

bool are_dumps_wanted() {
  const char* const wanted = std::getenv("LINEWEIR_MEMORY_DUMPS");
  return wanted != nullptr && std::string_view(wanted) == "yes";
}

}  // namespace

void keep_memory_out_of_dumps() {
  if (is_watched || are_dumps_wanted()) return;
  ::prctl(PR_SET_DUMPABLE, 0, 0, 0, 0);
}

}  // namespace lineweir::platform

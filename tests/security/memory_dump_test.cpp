#define DOCTEST_CONFIG_IMPLEMENT_WITH_MAIN
#include "platform/process/memory_dump.h"

#include <doctest/doctest.h>
#include <stdlib.h>
#include <sys/prctl.h>

using lineweir::platform::keep_memory_out_of_dumps;

TEST_CASE("A process's memory is dumped for none but those who ask for it") {
  ::setenv("LINEWEIR_MEMORY_DUMPS", "yes", 1);
  keep_memory_out_of_dumps();
  CHECK(::prctl(PR_GET_DUMPABLE, 0, 0, 0, 0) == 1);
  ::setenv("LINEWEIR_MEMORY_DUMPS", "no", 1);
  keep_memory_out_of_dumps();
#if !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__)
  CHECK(::prctl(PR_GET_DUMPABLE, 0, 0, 0, 0) == 0);
#endif
}

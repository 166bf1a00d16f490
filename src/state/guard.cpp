#include "state/guard.h"

#include <exception>
#include <new>
#include <string>

#include "state/trace.h"

namespace lineweir {
namespace {

constexpr int out_of_memory = 7;
constexpr int internal_error = 51;

}  // namespace

Failure current_failure() {
  try {
    throw;
  } catch (const Failure& failure) {
    return failure;
  } catch (const std::bad_alloc&) {
    return Failure(out_of_memory, "Out of memory");
  } catch (const std::exception& error) {
    return Failure(internal_error, std::string("Internal error: ") + error.what());
  } catch (...) {
    return Failure(internal_error, "Internal error");
  }
}

std::string description_of(const Letters& letters, const Failure& failure) {
  return letters.from_utf8(failure.what());
}

void report_failure(Trace& trace, std::string_view handler, const Failure& failure) {
  trace.WriteTrace(std::string(handler) + " Error - " + description_of(trace.letters(), failure));
}

}  // namespace lineweir

#include "state/stored_path.h"

#include "base/failure.h"

namespace lineweir {

void require_storable(std::string_view path, std::size_t longest) {
  if (path.size() <= longest) return;
  throw Failure(failure_number::invalid_argument,
                "The path has " + std::to_string(path.size()) + " characters and only " +
                    std::to_string(longest) + " can be stored; choose a shorter one.");
}

}  // namespace lineweir

// A journal's bytes, whatever they are: pieces, and the changes in them.

#include <cstddef>
#include <cstdint>
#include <cstdlib>

#include "platform/change_journal/change_code.h"
#include "platform/change_journal/journal_pieces.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace lineweir::platform;
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
  for (const std::string_view piece : whole_pieces(bytes)) decoded(piece);
  // The checksum would keep all but a few from what reads a change.
  if (const auto change = decoded(bytes)) {
    if (decoded(encoded(*change)) != change) std::abort();
  }
  return 0;
}

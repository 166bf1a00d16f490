// Files of drafts of any bytes. What is read of them is written and read again as it was.

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "callerdata/draft_file.h"
#include "letters/letters.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace lineweir;
  const std::string text(reinterpret_cast<const char*>(data), size);
  const std::size_t half = text.size() / 2;
  const auto drafts =
      drafts_of_files(utf8_letters(), {text, text.substr(0, half), text.substr(half)});
  for (const EntryDraft& draft : drafts) {
    if (draft.line < 0 || !draft.ended) std::abort();
  }
  const auto again = drafts_of_files(utf8_letters(), {draft_file_text(utf8_letters(), drafts)});
  if (again != drafts) std::abort();
  return 0;
}

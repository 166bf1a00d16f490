#include "callerdata/entry_notice.h"

#include <string_view>

namespace lineweir {
namespace {

// As much of a text as tells which one it is.
constexpr std::size_t quoted_length = 30;

std::string quoted(std::string_view text) {
  if (text.empty()) return "emptied";
  const bool whole = text.size() <= quoted_length;
  return '"' + std::string(text.substr(0, quoted_length)) + (whole ? "\"" : "...\"");
}

}  // namespace

std::string notice_text(const EntryNotice& notice, const EntryWork& work,
                        const std::function<std::string(int entry)>& heading) {
  std::string elsewhere;
  for (const int entry : notice.elsewhere) {
    const auto field = static_cast<std::size_t>(entry - 1);
    if (!work.touched(field)) continue;
    elsewhere += elsewhere.empty() ? "Changed elsewhere: " : ", ";
    elsewhere += heading(entry) + " " + quoted(work.had[field]);
  }
  if (notice.full == 0) return elsewhere;
  const std::string full = heading(notice.full) + " takes no more than " +
                           std::to_string(entry_room(notice.full)) + " characters";
  return elsewhere.empty() ? full : elsewhere + "\r\n" + full;
}

}  // namespace lineweir

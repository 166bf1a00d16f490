#include "callerdata/entry_notice.h"

#include <string_view>

namespace lineweir {
namespace {

// As much of a text as tells which one it is.
constexpr std::size_t quoted_length = 30;

std::string quoted_in_short(std::string_view text) {
  if (text.empty()) return "emptied";
  const bool whole = text.size() <= quoted_length;
  return '"' + std::string(text.substr(0, quoted_length)) + (whole ? "\"" : "...\"");
}

std::string_view end_text(CallEnd end) {
  switch (end) {
    case CallEnd::HungUp:
      return "The caller has hung up";
    case CallEnd::GroupLeft:
      return "The caller is in the studio group that was left";
    case CallEnd::LineGone:
      return "The caller is on a line that isn't shown any more";
  }
  return {};
}

std::string elsewhere_text(const EntryNotice& notice, const EntryWork& work,
                           const std::function<std::string(int entry)>& heading) {
  std::string text;
  for (const int entry : notice.elsewhere) {
    const auto field = static_cast<std::size_t>(entry - 1);
    if (!work.touched(field)) continue;
    text += text.empty() ? "Changed elsewhere: " : ", ";
    text += heading(entry) + " " + quoted_in_short(work.had[field]);
  }
  return text;
}

}  // namespace

std::string notice_text(const EntryNotice& notice, const EntryWork& work,
                        const std::function<std::string(int entry)>& heading) {
  std::string text;
  const auto add = [&](std::string_view line) {
    if (!text.empty() && !line.empty()) text += "\r\n";
    text += line;
  };
  if (notice.end) add(end_text(*notice.end));
  add(elsewhere_text(notice, work, heading));
  if (notice.full != 0) {
    add(heading(notice.full) + " takes no more than " + std::to_string(entry_room(notice.full)) +
        " characters");
  }
  add(notice.remark);
  return text;
}

}  // namespace lineweir

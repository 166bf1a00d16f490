#include "driver/usage.h"

#include "driver/words.h"

namespace lineweir::driver {
namespace {

bool is_literal(std::string_view word) { return word.front() >= 'a' && word.front() <= 'z'; }

}  // namespace

UsageMatch match_usage(std::string_view usage, const std::vector<std::string>& words) {
  UsageMatch result;
  std::size_t next = 0;
  for (const std::string& wanted : split_words_plainly(usage)) {
    if (wanted == "...") {
      while (next < words.size()) result.parameters.push_back(words[next++]);
    } else if (next == words.size()) {
      if (!wanted.starts_with('[')) return result;
    } else if (!is_literal(wanted)) {
      result.parameters.push_back(words[next++]);
    } else if (words[next] == wanted) {
      ++result.literals;
      ++next;
    } else {
      return result;
    }
  }
  result.whole = next == words.size();
  return result;
}

}  // namespace lineweir::driver

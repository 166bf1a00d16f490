#include "practice/practice_band.h"

#include "practice/practice_results.h"

namespace lineweir::practice {
namespace {

constexpr std::string_view handset_letters = "PO";

}  // namespace

std::string show_text(const LevelRule& level, Moment played) {
  const int now =
      static_cast<int>(std::chrono::duration_cast<std::chrono::seconds>(played).count());
  int ends = 0;
  for (const ShowPart& part : level.parts) {
    ends += part.seconds;
    if (now >= ends) continue;
    return std::string(level.name) + " show. " + std::string(part.name) + ": " +
           minutes_text(ends - now) + " left; " + minutes_text(show_seconds(level) - now) +
           " to the end.";
  }
  return {};
}

std::string words_on(const PracticeBox& box, int line) {
  const Caller* caller = box.caller_on(line);
  const bool talks = handset_letters.find(box.lines().letter(line)) != std::string::npos;
  return caller != nullptr && talks ? '"' + std::string(caller->words) + '"' : std::string();
}

std::string words_text(const PracticeBox& box) {
  std::string text;
  for (int line = 0; line < PracticeBox::line_count; ++line) {
    const std::string words = words_on(box, line);
    if (words.empty()) continue;
    if (!text.empty()) text += ' ';
    text += "Line " + std::to_string(line + 1) + " says: " + words;
  }
  return text;
}

}  // namespace lineweir::practice

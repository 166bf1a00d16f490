#include "desktop/spoken_lines.h"

#include <QStringList>
#include <string_view>

#include "base/text.h"
#include "callerdata/known_caller_text.h"
#include "core/console.h"
#include "desktop/core_text.h"
#include "lines/status_letters.h"

namespace lineweir {
namespace {

constexpr std::string_view other_letter = "taken";

// As many changes as are told one by one.
constexpr std::size_t most_told = 4;

QString spoken_change(const Console& console, int line) {
  const std::string_view name = trimmed(console.lines.CallerData(line)[CallerField::CallerName]);
  const bool known = !name.empty() && !is_empty(console.lines.StatusLetter(line));
  QString subject = QStringLiteral("Line %1").arg(line + 1);
  if (known) subject += QStringLiteral(", %1,").arg(shown_text(console.Lineweir, name));
  return subject + QStringLiteral(" is ") + spoken_state(console, line);
}

// Null where nobody is on the line, or nothing is known of him.
const CallerKnown* known_caller(const Console& console, int line) {
  const bool anybody =
      line < console.lines.LineCount && !is_empty(console.lines.StatusLetter(line));
  return anybody ? console.known_callers.on_line(line) : nullptr;
}

}  // namespace

QString spoken_state(const Console& console, int line) {
  const StatusLetter* letter = status_letter(console.lines.StatusLetter(line));
  const std::string_view spoken = letter == nullptr ? other_letter : letter->spoken;
  QString words = QString::fromLatin1(spoken.data(), static_cast<qsizetype>(spoken.size()));
  // Until the next one is chosen the choice stands, though its caller is on air by now.
  const bool waits = letter == nullptr || letter->look.may_be_next;
  if (waits && console.lines.TheNextCall == line) words += QStringLiteral(", next caller");
  return words;
}

QString spoken_wait(const Console& console, int line) {
  const auto waited = console.row_states.waited(line);
  if (!waited) return {};
  const auto count = [](long long number, const QString& unit) {
    return QStringLiteral("%1 %2%3").arg(number).arg(unit,
                                                     number == 1 ? QString() : QStringLiteral("s"));
  };
  const auto minutes = waited->count() / 60;
  QString words = QStringLiteral("Waiting for ");
  if (minutes > 0) words += count(minutes, QStringLiteral("minute")) + u' ';
  return words + count(waited->count() % 60, QStringLiteral("second"));
}

CallerFlag shown_flag(const Console& console, int line) {
  const CallerKnown* known = known_caller(console, line);
  return known == nullptr ? CallerFlag::None : known->flag;
}

QString spoken_memory(const Console& console, int line) {
  const CallerKnown* known = known_caller(console, line);
  if (known == nullptr) return {};
  std::string words;
  for (const std::string& part : {flag_text(*known), calls_text(*known), person_text(*known)}) {
    if (!part.empty()) words += (words.empty() ? "" : "\n") + part;
  }
  return shown_text(console.Lineweir, words);
}

QString spoken_changes(const Console& console, const std::vector<int>& lines) {
  if (lines.size() > most_told) {
    return QStringLiteral("%1 lines have changed").arg(lines.size());
  }
  QStringList changes;
  for (const int line : lines) changes += spoken_change(console, line);
  return changes.join(QStringLiteral(". "));
}

QString spoken_ringing(const std::vector<int>& lines) {
  QStringList numbers;
  for (const int line : lines) numbers.push_back(QString::number(line + 1));
  if (numbers.size() == 1) return QStringLiteral("Line %1 is ringing").arg(numbers.first());
  const QString last = numbers.takeLast();
  return QStringLiteral("Lines %1 and %2 are ringing").arg(numbers.join(QLatin1String(", ")), last);
}

}  // namespace lineweir

#include "desktop/spoken_lines.h"

#include <QStringList>
#include <algorithm>
#include <array>

#include "core/console.h"

namespace lineweir {
namespace {

struct LetterWords {
  char letter;
  const char* words;
};
constexpr std::array letters = {
    LetterWords{' ', "idle"},
    LetterWords{'F', "idle"},
    LetterWords{'R', "ringing"},
    LetterWords{'S', "ready"},
    LetterWords{'H', "held"},
    LetterWords{'P', "at phone 1"},
    LetterWords{'O', "at phone 2"},
    LetterWords{'E', "taken by other equipment"},
    LetterWords{'N', "on air, main hybrid"},
    LetterWords{'C', "on air, conference hybrid"},
    LetterWords{'L', "locked on air, main hybrid"},
    LetterWords{'K', "locked on air, conference hybrid"},
    LetterWords{'Y', "locked"},
    LetterWords{'B', "set busy"},
};
constexpr const char* other_letter = "taken";

}  // namespace

QString spoken_state(const Console& console, int line) {
  const auto* row =
      std::ranges::find(letters, console.lines.StatusLetter(line), &LetterWords::letter);
  QString words = QString::fromLatin1(row == letters.end() ? other_letter : row->words);
  if (console.lines.TheNextCall == line) words += QStringLiteral(", next caller");
  return words;
}

QString spoken_ringing(const std::vector<int>& lines) {
  QStringList numbers;
  for (const int line : lines) numbers.push_back(QString::number(line + 1));
  if (numbers.size() == 1) return QStringLiteral("Line %1 is ringing").arg(numbers.first());
  const QString last = numbers.takeLast();
  return QStringLiteral("Lines %1 and %2 are ringing").arg(numbers.join(QLatin1String(", ")), last);
}

}  // namespace lineweir

#include "desktop/units_in_words.h"

#include <QStringList>
#include <array>
#include <cmath>

namespace lineweir {
namespace {

constexpr double twips_per_millimetre = 1440 / 25.4;

struct Unit {
  int seconds;
  const char* one;
  const char* many;
};

constexpr std::array units = {Unit{3600, "hour", "hours"}, Unit{60, "minute", "minutes"},
                              Unit{1, "second", "seconds"}};

}  // namespace

QString duration_in_words(int seconds) {
  QStringList parts;
  int left = seconds;
  for (const Unit& unit : units) {
    const int count = left / unit.seconds;
    left %= unit.seconds;
    const bool nothing_else = unit.seconds == 1 && parts.isEmpty();
    if (count == 0 && !nothing_else) continue;
    parts +=
        QStringLiteral("%1 %2").arg(count).arg(QLatin1String(count == 1 ? unit.one : unit.many));
  }
  return parts.join(u' ');
}

QString millimetres_of(int twips) {
  return QStringLiteral("%1 mm").arg(std::lround(twips / twips_per_millimetre));
}

}  // namespace lineweir

#include "platform/qt/qt_system_clock.h"

#include <QDateTime>
#include <cerrno>
#include <system_error>

#include "base/failure.h"

namespace lineweir::platform {

QtSystemClock::QtSystemClock()
    : QtSystemClock([](const timespec& time) {
        return ::clock_settime(CLOCK_REALTIME, &time) == 0 ? 0 : errno;
      }) {}

DateTime QtSystemClock::now() const {
  const QDateTime moment = QDateTime::currentDateTime();
  const QDate date = moment.date();
  const QTime time = moment.time();
  return {date.year(), date.month(), date.day(), time.hour(), time.minute(), time.second()};
}

void QtSystemClock::set(const DateTime& moment) {
  const QDate date(moment.year, moment.month, moment.day);
  const QTime time(moment.hour, moment.minute, moment.second);
  const QDateTime local(date, time);
  if (!date.isValid() || !time.isValid() || !local.isValid()) {
    throw Failure(failure_number::invalid_argument, "There is no such date or time.");
  }

  const int error = set_time_(timespec{static_cast<time_t>(local.toSecsSinceEpoch()), 0});
  if (error == 0) return;
  if (error == EPERM) {
    throw Failure(failure_number::permission_denied,
                  "The computer's clock can't be set: ask the administrator to let this program "
                  "set it (capability CAP_SYS_TIME).");
  }
  throw Failure(
      failure_number::permission_denied,
      "The computer's clock can't be set: " + std::generic_category().message(error) + ".");
}

}  // namespace lineweir::platform

#include "dbus/private_bus.h"

#include <stdexcept>

namespace lineweir::test {
namespace {

constexpr const char* bus_address = "DBUS_SESSION_BUS_ADDRESS";

}  // namespace

PrivateBus::PrivateBus() : address_before_(qgetenv(bus_address)) {
  daemon_.start(QStringLiteral("dbus-daemon"),
                {QStringLiteral("--session"), QStringLiteral("--nofork"),
                 QStringLiteral("--nopidfile"), QStringLiteral("--print-address")});
  while (!daemon_.canReadLine()) {
    if (daemon_.state() == QProcess::NotRunning || !daemon_.waitForReadyRead(10'000)) {
      throw std::runtime_error("dbus-daemon doesn't start");
    }
  }
  qputenv(bus_address, daemon_.readLine().trimmed());
}

PrivateBus::~PrivateBus() {
  kill();
  qputenv(bus_address, address_before_);
}

void PrivateBus::kill() {
  daemon_.kill();
  daemon_.waitForFinished();
}

}  // namespace lineweir::test

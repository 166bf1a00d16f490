#include "dbus/private_bus.h"

#include <doctest/doctest.h>

namespace lineweir::test {
namespace {

constexpr const char* bus_address = "DBUS_SESSION_BUS_ADDRESS";

}  // namespace

PrivateBus::PrivateBus() : address_before_(qgetenv(bus_address)) {
  daemon_.start(QStringLiteral("dbus-daemon"),
                {QStringLiteral("--session"), QStringLiteral("--nofork"),
                 QStringLiteral("--nopidfile"), QStringLiteral("--print-address")});
  REQUIRE(daemon_.waitForStarted());
  while (!daemon_.canReadLine()) REQUIRE(daemon_.waitForReadyRead(10'000));
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

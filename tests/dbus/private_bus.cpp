#include "dbus/private_bus.h"

#include <QFile>
#include <stdexcept>

namespace lineweir::test {
namespace {

constexpr const char* bus_address = "DBUS_SESSION_BUS_ADDRESS";
const QString of_a_user = QStringLiteral("--session");

}  // namespace

PrivateBus::PrivateBus() : address_before_(qgetenv(bus_address)) {
  start(of_a_user, {});
  qputenv(bus_address, address_);
}

PrivateBus::PrivateBus(const QByteArray& configuration) : address_before_(qgetenv(bus_address)) {
  if (!configuration_.open()) throw std::runtime_error("there is no place for a temporary file");
  configuration_.write(configuration);
  configuration_.close();
  start(QStringLiteral("--config-file=") + configuration_.fileName(), {});
  qputenv(bus_address, address_);
}

void PrivateBus::start_again() {
  // Its address names the socket, and behind a comma which bus it was.
  const QByteArray path = address_.left(address_.indexOf(','));
  QFile::remove(QString::fromUtf8(path.mid(path.indexOf('=') + 1)));
  start(of_a_user, {QStringLiteral("--address=") + QString::fromUtf8(path)});
  qputenv(bus_address, path);
}

void PrivateBus::start(const QString& configuration, const QStringList& more) {
  QStringList arguments = {configuration, QStringLiteral("--nofork"), QStringLiteral("--nopidfile"),
                           QStringLiteral("--print-address")};
  arguments += more;
  daemon_.start(QStringLiteral("dbus-daemon"), arguments);
  while (!daemon_.canReadLine()) {
    if (daemon_.state() == QProcess::NotRunning || !daemon_.waitForReadyRead(10'000)) {
      throw std::runtime_error("dbus-daemon doesn't start");
    }
  }
  address_ = daemon_.readLine().trimmed();
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

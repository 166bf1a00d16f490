#include "platform/qt/qt_serial_port.h"

#include <sys/ioctl.h>
#include <unistd.h>

#include <QElapsedTimer>
#include <QFileInfo>
#include <QSignalBlocker>
#include <cerrno>
#include <cstdlib>
#include <ctime>
#include <system_error>

#include "base/failure.h"

namespace lineweir::platform {

namespace {

constexpr int first_port = 1;
constexpr int last_port = 4;

[[noreturn]] void fail_to_open(int number, const std::string& device, const std::string& reason) {
  throw Failure(number, "Can't open " + device + ": " + reason);
}

// The system answers alike when the device may not be used and when somebody has it open.
bool may_use(const QString& device) {
  return ::access(QFile::encodeName(device).constData(), R_OK | W_OK) == 0;
}

}  // namespace

std::string device_of_comm_port(int number) {
  const std::string variable = "LINEWEIR_COM" + std::to_string(number);
  const char* device = std::getenv(variable.c_str());
  if (device != nullptr && *device != '\0') return device;
  return "/dev/ttyS" + std::to_string(number - 1);
}

QtSerialPort::QtSerialPort(EventLoop& loop, int bits_per_second, int comm_port)
    : bits_per_second_(bits_per_second),
      comm_port_(comm_port),
      tell_received_(loop,
                     [this] {
                       if (port_.bytesAvailable() > 0) on_comm(comm_event_receive);
                     }),
      tell_lost_(loop, [this] { on_lost(lost_description_); }) {
  port_.setReadBufferSize(most_unread);
  QObject::connect(&port_, &QSerialPort::readyRead, &port_, [this] { tell_received_.post(); });
  QObject::connect(&port_, &QSerialPort::errorOccurred, &port_,
                   [this](QSerialPort::SerialPortError error) { error_occurred(error); });
}

QtSerialPort::~QtSerialPort() { close(); }

void QtSerialPort::set_comm_port(int number) {
  if (is_open()) throw Failure(failure_number::port_already_open, "The port is already open");
  comm_port_ = number;
}

void QtSerialPort::open() {
  if (is_open()) throw Failure(failure_number::port_already_open, device_ + " is already open");
  if (comm_port_ < first_port || comm_port_ > last_port) {
    throw Failure(failure_number::bad_port_number,
                  "There is no port " + std::to_string(comm_port_));
  }

  tell_lost_.cancel();
  device_ = device_of_comm_port(comm_port_);
  // Links are followed so that two names of one device can't both be opened.
  const QString real = QFileInfo(QFile::decodeName(device_.c_str())).canonicalFilePath();
  if (real.isEmpty()) {
    fail_to_open(failure_number::port_hardware_missing, device_,
                 std::generic_category().message(ENOENT));
  }

  port_.setPortName(real);
  port_.setBaudRate(bits_per_second_);
  port_.setDataBits(QSerialPort::Data8);
  port_.setParity(QSerialPort::NoParity);
  port_.setStopBits(QSerialPort::OneStop);
  port_.setFlowControl(QSerialPort::NoFlowControl);
  open_error_ = QSerialPort::NoError;
  if (port_.open(QIODevice::ReadWrite)) return;

  switch (open_error_) {
    case QSerialPort::DeviceNotFoundError:
      fail_to_open(failure_number::port_hardware_missing, device_,
                   port_.errorString().toStdString());
    case QSerialPort::PermissionError:
      if (may_use(real)) {
        fail_to_open(failure_number::port_already_open, device_,
                     std::generic_category().message(EBUSY));
      }
      fail_to_open(failure_number::device_unavailable, device_,
                   std::generic_category().message(EACCES));
    default:
      fail_to_open(failure_number::device_unavailable, device_, port_.errorString().toStdString());
  }
}

void QtSerialPort::close() {
  if (!is_open()) return;
  // Waiting for the line would pass on what it meets on the way, an error or new data.
  const QSignalBlocker no_signals(port_);
  flush();
  tell_received_.cancel();
  port_.close();
}

// The characters go from the program to the system, and from there to the line; closing, or the
// settings of the next opening, would cut off or spoil what is still on the way.
void QtSerialPort::flush() {
  QElapsedTimer elapsed;
  elapsed.start();
  while (port_.bytesToWrite() > 0) {
    const auto left = longest_flush.count() - elapsed.elapsed();
    if (left <= 0 || !port_.waitForBytesWritten(static_cast<int>(left))) return;
  }
  int unsent = 0;
  while (::ioctl(port_.handle(), TIOCOUTQ, &unsent) == 0 && unsent > 0 &&
         elapsed.elapsed() < longest_flush.count()) {
    const timespec step{0, 2'000'000};
    ::nanosleep(&step, nullptr);
  }
}

std::string QtSerialPort::input() {
  if (!is_open()) return {};
  return port_.readAll().toStdString();
}

void QtSerialPort::discard_input() {
  if (!is_open()) return;
  port_.clear(QSerialPort::Input);
  tell_received_.cancel();
}

void QtSerialPort::output(std::string_view characters) {
  if (!is_open()) throw Failure(failure_number::port_not_open, "The port is not open");
  const auto count = static_cast<qint64>(characters.size());
  if (port_.bytesToWrite() + count > most_unsent) {
    throw Failure(failure_number::device_unavailable, device_ + " takes no more characters");
  }
  if (port_.write(characters.data(), count) != count) {
    throw Failure(failure_number::device_unavailable, "Can't write to " + device_);
  }
}

void QtSerialPort::error_occurred(QSerialPort::SerialPortError error) {
  if (!is_open()) {
    open_error_ = error;
    return;
  }
  switch (error) {
    // A device whose other end is gone reports one of these without end until it is closed. The
    // port's error text is then the text of some earlier error.
    case QSerialPort::ReadError:
    case QSerialPort::WriteError:
    case QSerialPort::ResourceError:
      port_.close();
      tell_received_.cancel();
      lost_description_ = device_ + " was lost: the device or its other end has gone.";
      tell_lost_.post();
      return;
    // Devices without modem lines report an operation that they don't know, and work.
    default:
      return;
  }
}

}  // namespace lineweir::platform

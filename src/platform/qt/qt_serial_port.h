#pragma once

#include <QSerialPort>
#include <string>

#include "platform/qt/posted_call.h"
#include "platform/serial_port.h"

namespace lineweir::platform {

// What is opened as the port of that number, from 1.
std::string device_of_comm_port(int number);

// A serial port of the computer: 8 data bits, no parity, 1 stop bit, no flow control. Port n is the
// device that the environment variable LINEWEIR_COMn names when the port is opened, otherwise
// /dev/ttyS(n-1).
class QtSerialPort final : public SerialPort {
 public:
  // Characters that may wait to be sent. What goes beyond is dropped, with a Failure of number 68.
  static constexpr qint64 most_unsent = 64 * 1024;
  // Characters kept until they are taken. What goes beyond waits in the system and is lost there.
  static constexpr qint64 most_unread = 64 * 1024;
  // How long a close may wait for the line to take what was sent before.
  static constexpr Milliseconds longest_flush{200};

  // The loop must outlive this object.
  QtSerialPort(EventLoop& loop, int bits_per_second, int comm_port);
  ~QtSerialPort() override;

  int comm_port() const override { return comm_port_; }
  void set_comm_port(int number) override;
  bool is_open() const override { return port_.isOpen(); }
  void open() override;
  void close() override;
  std::string input() override;
  void discard_input() override;
  void output(std::string_view characters) override;

 private:
  void error_occurred(QSerialPort::SerialPortError error);
  void flush();

  int bits_per_second_;
  int comm_port_;
  std::string device_;
  std::string lost_description_;
  // The signal's argument of the last failed opening; the port's own error outlives a new opening.
  QSerialPort::SerialPortError open_error_ = QSerialPort::NoError;
  PostedCall tell_received_;
  PostedCall tell_lost_;
  // Below the calls that its signals post, so that it goes first.
  QSerialPort port_;
};

}  // namespace lineweir::platform

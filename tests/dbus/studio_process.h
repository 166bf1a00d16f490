#pragma once

#include <signal.h>

#include <QProcess>
#include <QStringList>
#include <stdexcept>

namespace lineweir::test {

// The program of studio_main.cpp. It ends with this object.
class StudioProcess {
 public:
  StudioProcess() {
    process_.start(QStringLiteral(LINEWEIR_TEST_STUDIO), QStringList());
    if (next_line() != "ready") throw std::runtime_error("the test's studio doesn't start");
  }
  ~StudioProcess() { kill(); }
  StudioProcess(const StudioProcess&) = delete;
  StudioProcess& operator=(const StudioProcess&) = delete;

  void tell(const QByteArray& line) {
    process_.write(line + "\n");
    process_.waitForBytesWritten(1000);
  }
  QByteArray next_line() {
    while (!process_.canReadLine()) {
      if (!process_.waitForReadyRead(10'000)) return {};
    }
    return process_.readLine().trimmed();
  }
  // What it has said so far and nobody has read.
  bool has_said_something() {
    process_.waitForReadyRead(0);
    return process_.canReadLine();
  }

  void kill() {
    process_.kill();
    process_.waitForFinished();
  }
  void stop() const { ::kill(static_cast<pid_t>(process_.processId()), SIGSTOP); }
  void go_on() const { ::kill(static_cast<pid_t>(process_.processId()), SIGCONT); }

 private:
  QProcess process_;
};

}  // namespace lineweir::test

// A studio's server on the user's bus, for tests that kill and stop it. What it is told on its
// input, a line each, it does:
//
//   status TEXT    the lines' states from now on; they are pushed to the client too
//   push TEXT      the same by push alone
//   die MEMBER     ends without an answer when that member is called
//   flood COUNT RATE   pushes changing states, RATE of them a second, and then says "flooded"
//
// It says "ready" when it stands on the bus, and each command word that it gets.

#include <unistd.h>

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QSocketNotifier>
#include <QTimer>
#include <cstdio>
#include <iostream>
#include <string>

#include "dbus/object_server.h"

namespace {

void say(const QString& line) {
  std::fputs((line + QLatin1Char('\n')).toUtf8().constData(), stdout);
  std::fflush(stdout);
}

class Studio {
 public:
  Studio() : server_([this](const auto& use) { return answer(use); }) {}

  void obey(const std::string& line) {
    const std::size_t space = line.find(' ');
    const std::string word = line.substr(0, space);
    const QString rest =
        QString::fromStdString(space == std::string::npos ? "" : line.substr(space + 1));
    if (word == "status") status_ = rest;
    if (word == "status" || word == "push") {
      server_.call_back(QStringLiteral("ReturnCommand"), {rest});
    } else if (word == "die") {
      dies_in_ = rest;
    } else if (word == "flood") {
      left_ = rest.section(QLatin1Char(' '), 0, 0).toInt();
      rate_ = rest.section(QLatin1Char(' '), 1, 1).toInt();
      sent_ = 0;
      clock_.start();
      pour();
    }
  }

 private:
  QVariant answer(const lineweir::test::ObjectServer::Use& use) {
    if (use.member == dies_in_) ::_exit(1);
    if (use.member == QLatin1String("AddObjectReference") ||
        use.member == QLatin1String("DropObjectReference")) {
      return true;
    }
    if (use.member == QLatin1String("OutputSerialPort")) return status_;
    if (use.member == QLatin1String("GetDimType")) return 1;
    if (use.member == QLatin1String("GetStudioNames")) return QStringLiteral("Morning\x03");
    if (use.member == QLatin1String("GetLineNumbers"))
      return QStringLiteral("0102030405060708090A");
    if (use.member.startsWith(QLatin1String("Get")) || use.member == QLatin1String("gettimes")) {
      return QString();
    }
    if (use.member == QLatin1String("InputSerialPort") &&
        !use.arguments.value(1).toString().isEmpty()) {
      say(use.arguments.value(1).toString());
    }
    return {};
  }

  void pour() {
    const auto due = std::min<qint64>(left_, clock_.elapsed() * rate_ / 1000);
    while (sent_ < due) {
      const bool ringing = ++sent_ % 2 == 1;
      server_.call_back(QStringLiteral("ReturnCommand"),
                        {ringing ? QStringLiteral("R00F01F02F03F04F05F06F07F08F09") : status_});
    }
    if (sent_ < left_) {
      QTimer::singleShot(5, [this] { pour(); });
    } else {
      say(QStringLiteral("flooded"));
    }
  }

  QString status_ = QStringLiteral("F00F01F02F03F04F05F06F07F08F09");
  QString dies_in_;
  lineweir::test::ObjectServer server_;
  qint64 left_ = 0;
  qint64 sent_ = 0;
  qint64 rate_ = 1;
  QElapsedTimer clock_;
};

}  // namespace

int main(int argc, char** argv) {
  QCoreApplication application(argc, argv);
  Studio studio;
  say(QStringLiteral("ready"));
  QSocketNotifier input(0, QSocketNotifier::Read);
  std::string waiting;
  QObject::connect(&input, &QSocketNotifier::activated, &application, [&] {
    char bytes[4096];
    const auto count = ::read(0, bytes, sizeof bytes);
    if (count <= 0) return QCoreApplication::quit();
    waiting.append(bytes, static_cast<std::size_t>(count));
    for (std::size_t end; (end = waiting.find('\n')) != std::string::npos;) {
      studio.obey(waiting.substr(0, end));
      waiting.erase(0, end + 1);
    }
  });
  return QCoreApplication::exec();
}

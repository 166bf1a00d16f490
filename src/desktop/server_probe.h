#pragma once

#include <QTcpSocket>
#include <QTimer>
#include <functional>

#include "desktop/diagnosis.h"

namespace lineweir {

// Whether somebody listens where the settings have the server. Nothing is sent; the connection is
// closed at once.
class ServerProbe {
 public:
  // Told once, from the loop, within two seconds.
  std::function<void(const std::string& failure)> on_answer;

  ServerProbe();

  // A probe that is under way is given up.
  void start(const ServerSeen& server);

 private:
  void answer(const QString& failure);

  QTcpSocket socket_;
  QTimer limit_;
};

}  // namespace lineweir

#pragma once

#include <QTcpSocket>
#include <QTimer>
#include <functional>
#include <memory>
#include <vector>

#include "desktop/diagnosis.h"

namespace lineweir {

// Whether somebody listens at a server. Nothing is sent; the connection is closed at once.
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

// The same of all servers that the settings name, at the same time.
class ServerProbes {
 public:
  // Told once, from the loop, within two seconds: the servers with what was seen of them.
  std::function<void(const std::vector<ServerSeen>& servers)> on_answers;

  // At least one server. Probes that are under way are given up.
  void start(std::vector<ServerSeen> servers);

 private:
  std::vector<ServerSeen> servers_;
  std::size_t answers_ = 0;
  std::vector<std::unique_ptr<ServerProbe>> probes_;
};

}  // namespace lineweir

#include "desktop/server_probe.h"

#include <utility>

#include "platform/qt/server_address.h"

namespace lineweir {
namespace {

constexpr int longest_wait_ms = 2000;

}  // namespace

ServerProbe::ServerProbe() {
  limit_.setSingleShot(true);
  QObject::connect(&limit_, &QTimer::timeout, &limit_,
                   [this] { answer(QStringLiteral("no answer within two seconds.")); });
  QObject::connect(&socket_, &QTcpSocket::connected, &limit_, [this] { answer({}); });
  QObject::connect(&socket_, &QTcpSocket::errorOccurred, &limit_,
                   [this] { answer(socket_.errorString() + QLatin1Char('.')); });
}

void ServerProbe::start(const ServerSeen& server) {
  limit_.stop();
  socket_.abort();
  const auto address = platform::server_address(server.host);
  limit_.start(longest_wait_ms);
  socket_.connectToHost(QString::fromStdString(address.host), static_cast<quint16>(server.port));
}

void ServerProbe::answer(const QString& failure) {
  if (!limit_.isActive()) return;
  limit_.stop();
  socket_.abort();
  if (on_answer) on_answer(failure.toStdString());
}

void ServerProbes::start(std::vector<ServerSeen> servers) {
  servers_ = std::move(servers);
  answers_ = 0;
  probes_.clear();
  for (std::size_t i = 0; i < servers_.size(); ++i) {
    probes_.push_back(std::make_unique<ServerProbe>());
    probes_.back()->on_answer = [this, i](const std::string& failure) {
      servers_[i].failure = failure;
      if (++answers_ == servers_.size() && on_answers) on_answers(servers_);
    };
  }
  for (std::size_t i = 0; i < servers_.size(); ++i) probes_[i]->start(servers_[i]);
}

}  // namespace lineweir

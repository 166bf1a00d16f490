#include "dbus/object_server.h"

#include <QDBusConnectionInterface>
#include <QDBusObjectPath>
#include <stdexcept>

namespace lineweir::test {
namespace {

QString new_name() {
  static int servers = 0;
  return QStringLiteral("studio-%1").arg(++servers);
}

}  // namespace

ObjectServer::ObjectServer(Answer answer)
    : answer_(std::move(answer)),
      connection_name_(new_name()),
      connection_(QDBusConnection::connectToBus(qEnvironmentVariable("DBUS_SESSION_BUS_ADDRESS"),
                                                connection_name_)) {
  const bool stands =
      connection_.registerVirtualObject(QStringLiteral("/"), this, QDBusConnection::SubPath) &&
      connection_.registerService(QStringLiteral("quorlink.Server"));
  if (!stands) throw std::runtime_error("the test's server can't have its name on the bus");
}

ObjectServer::~ObjectServer() { QDBusConnection::disconnectFromBus(connection_name_); }

QString ObjectServer::introspect(const QString&) const { return {}; }

bool ObjectServer::handleMessage(const QDBusMessage& message, const QDBusConnection& connection) {
  QVariantList arguments = message.arguments();
  if (!arguments.isEmpty() && arguments.front().canConvert<QDBusObjectPath>() &&
      arguments.front().typeId() != QMetaType::QString) {
    client_ = message.service();
    client_object_ = arguments.front().value<QDBusObjectPath>().path();
    arguments.front() = client_object_.mid(1);
  }
  const QVariant answer = answer_({message.path().mid(1), message.member(), arguments});
  if (answer.typeId() == qMetaTypeId<QDBusError>()) {
    const auto error = answer.value<QDBusError>();
    connection.send(message.createErrorReply(error.name(), error.message()));
  } else {
    connection.send(answer.isValid() ? message.createReply(answer) : message.createReply());
  }
  return true;
}

QString ObjectServer::only_client() const {
  const QStringList names = connection_.interface()->registeredServiceNames();
  for (const QString& name : names) {
    if (name.startsWith(QLatin1Char(':')) && name != connection_.baseService()) return name;
  }
  return {};
}

QDBusMessage ObjectServer::callback(const QString& method, const QVariantList& arguments) const {
  QDBusMessage message =
      QDBusMessage::createMethodCall(client_.isEmpty() ? only_client() : client_, client_object_,
                                     QStringLiteral("quorlink.CBClientClass"), method);
  message.setArguments(arguments);
  return message;
}

void ObjectServer::call_back(const QString& method, const QVariantList& arguments) {
  connection_.asyncCall(callback(method, arguments));
}

bool ObjectServer::call_back_and_wait(const QString& method, const QVariantList& arguments) {
  return connection_.call(callback(method, arguments), QDBus::Block, 4000).type() ==
         QDBusMessage::ReplyMessage;
}

}  // namespace lineweir::test

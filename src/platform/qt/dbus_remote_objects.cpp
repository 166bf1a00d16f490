#include "platform/qt/dbus_remote_objects.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusPendingCallWatcher>
#include <QDBusServiceWatcher>
#include <QDBusVirtualObject>
#include <algorithm>
#include <array>
#include <optional>

#include "client_interface.h"
#include "platform/qt/dbus_values.h"

namespace lineweir::platform {
namespace {

const QString service = QStringLiteral("quorlink.Server");
const QString callback_path = QStringLiteral("/CBClientClass");
const QString callback_interface = QStringLiteral("quorlink.CBClientClass");

// Those whose first argument names an object of the caller's.
constexpr std::array<std::string_view, 2> members_with_object = {"AddObjectReference",
                                                                 "DropObjectReference"};

// The methods of the console's object. What comes with other arguments is handed on all the same,
// to be reported.
struct CallbackMethod {
  QLatin1String name;
  QLatin1String signature;
};
constexpr std::array callback_methods = {
    CallbackMethod{QLatin1String("ReturnCallerData"), QLatin1String("sii")},
    CallbackMethod{QLatin1String("ReturnCommand"), QLatin1String("s")},
    CallbackMethod{QLatin1String("ReturnMessageData"), QLatin1String("siii")},
    CallbackMethod{QLatin1String("ReturnNextCall"), QLatin1String("ii")},
};

// Together they notice within three seconds that nobody answers.
constexpr Milliseconds between_pings{1000};
constexpr int ping_limit = 1500;
// A console that was itself so late has stood still, and may have been given up meanwhile.
constexpr Milliseconds longest_standstill{4000};

// A server's answer to a client that it has given up and calls back no more.
const QString gone_error = QStringLiteral("quorlink.Error.Gone");

QDBusConnection connect_to_bus(const QString& name) {
  if (qEnvironmentVariable("LINEWEIR_BUS") == QLatin1String("system")) {
    return QDBusConnection::connectToBus(QDBusConnection::SystemBus, name);
  }
  // The library reads the address of the user's bus once in a process.
  const QString address = qEnvironmentVariable("DBUS_SESSION_BUS_ADDRESS");
  return address.isEmpty() ? QDBusConnection::connectToBus(QDBusConnection::SessionBus, name)
                           : QDBusConnection::connectToBus(address, name);
}

// Each console of a process has a connection, and so a name on the bus, of its own.
QString new_connection_name() {
  static int connections = 0;
  return QStringLiteral("lineweir-%1").arg(++connections);
}

}  // namespace

// The console's own object. The other program has its answer before the call is handled, so that it
// may call while it is being called.
class DBusRemoteObjects::Callback final : public QDBusVirtualObject {
 public:
  Callback(Bus& bus) : bus_(bus) {}

  QString introspect(const QString&) const override {
    return QString::fromLatin1(client_interface);
  }
  bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override;

 private:
  Bus& bus_;
};

class DBusRemoteObjects::Bus : public QObject {
 public:
  explicit Bus(DBusRemoteObjects& owner)
      : owner_(owner),
        name_(new_connection_name()),
        connection_(connect_to_bus(name_)),
        watcher_(service, connection_, QDBusServiceWatcher::WatchForOwnerChange) {
    connection_.registerVirtualObject(callback_path, &callback_);
    connect(&watcher_, &QDBusServiceWatcher::serviceOwnerChanged, this,
            [this](const QString&, const QString& before, const QString& now) {
              server_ = now;
              // A new one knows nothing of what was told to the old one.
              if (!before.isEmpty()) set_answers(false);
              if (!now.isEmpty() && held_ > 0) ping();
            });
  }
  ~Bus() override {
    stop();
    QDBusConnection::disconnectFromBus(name_);
  }

  // The objects' owner goes: nobody is told anything any more.
  void stop() {
    stopped_ = true;
    cancel_ping();
    connection_.unregisterObject(callback_path);
  }

  bool connected() const { return connection_.isConnected(); }

  void find_server() {
    QDBusConnectionInterface* bus = connection_.interface();
    if (bus == nullptr || !connected())
      throw Failure(failure_number::no_such_class, "There is no bus");
    const auto owner = [&] {
      return wait_for(bus->asyncCall(QStringLiteral("GetNameOwner"), service))
          .arguments()
          .value(0)
          .toString();
    };
    const QDBusMessage known = wait_for(bus->asyncCall(QStringLiteral("NameHasOwner"), service));
    // Where nobody has the name the bus may know whom to start for it.
    if (!known.arguments().value(0).toBool()) {
      wait_for(bus->asyncCall(QStringLiteral("StartServiceByName"), service, 0U));
    }
    server_ = owner();
  }

  QDBusPendingCall send(const QString& path, const QString& interface, std::string_view member,
                        const std::vector<RemoteValue>& arguments) {
    QDBusMessage message = QDBusMessage::createMethodCall(
        service, path, interface,
        QString::fromUtf8(member.data(), static_cast<qsizetype>(member.size())));
    message.setArguments(bus_arguments(member, arguments));
    // One that has gone is not started by being used: it would know nothing of this console.
    message.setAutoStartService(false);
    return connection_.asyncCall(message, static_cast<int>(answer_limit.count()));
  }

  // Lets the loop run until the answer is there. What fails is a Failure.
  QDBusMessage wait_for(const QDBusPendingCall& call) {
    QDBusPendingCallWatcher wake(call);
    EventLoop& loop = owner_.loop_;
    // The bus tells of its own limit; this one is for a bus that doesn't.
    const Milliseconds limit = loop.now() + answer_limit + Milliseconds{500};
    while (!wake.isFinished() && !stopped_ && loop.now() < limit) loop.yield();
    if (!wake.isFinished()) throw Failure(failure_number::no_answer, "The server gave no answer");
    if (wake.isError()) throw failure(wake.error());
    return wake.reply();
  }

  void tell_failure(const QDBusPendingCall& call, RemoteObject::Failed failed) {
    auto* end = new QDBusPendingCallWatcher(call, this);
    connect(end, &QDBusPendingCallWatcher::finished, this, [this, end, failed = std::move(failed)] {
      end->deleteLater();
      if (!end->isError() || stopped_) return;
      const Failure reason = failure(end->error());
      if (failed) failed(reason);
    });
  }

  // An object is held, or not any more.
  void hold() {
    if (++held_ == 1) {
      answers_ = true;
      ping_soon();
    }
  }
  void let_go() {
    if (--held_ == 0) cancel_ping();
  }

  void called(const QString& sender, const QString& method, const QVariantList& arguments) {
    // Without an object the console has nothing to do with the server any more.
    if (stopped_ || held_ == 0 || sender != server_) return;
    std::vector<RemoteValue> values;
    for (const QVariant& argument : arguments) {
      values.push_back(value_of(owner_.letters_, argument));
    }
    owner_.loop_.schedule(Milliseconds{0},
                          [bus = weak_, name = method.toStdString(), values = std::move(values)] {
                            if (const auto alive = bus.lock(); alive && !alive->stopped_) {
                              alive->owner_.on_callback(name, values);
                            }
                          });
  }

  RemoteValue value(const QVariant& value) const { return value_of(owner_.letters_, value); }
  void know(const std::shared_ptr<Bus>& self) { weak_ = self; }

 private:
  QVariantList bus_arguments(std::string_view member, const std::vector<RemoteValue>& arguments) {
    QVariantList values;
    const bool names_object =
        std::ranges::find(members_with_object, member) != members_with_object.end();
    for (const RemoteValue& argument : arguments) {
      const bool is_object = names_object && values.isEmpty();
      values.push_back(is_object ? QVariant::fromValue(QDBusObjectPath(callback_path))
                                 : bus_value(owner_.letters_, argument));
    }
    return values;
  }

  // A server that has given this console up is taken anew.
  Failure failure(const QDBusError& error) {
    if (error.name() == gone_error) set_answers(false);
    return failure_of(error);
  }

  void set_answers(bool answers) {
    if (answers_ == answers || held_ == 0 || stopped_) return;
    answers_ = answers;
    owner_.loop_.schedule(Milliseconds{0}, [bus = weak_, answers] {
      if (const auto alive = bus.lock(); alive && !alive->stopped_) {
        alive->owner_.on_presence(answers);
      }
    });
  }

  // A bus that has gone is gone for this connection; another one may have its address.
  static bool stands_on_another_bus() {
    const QString name = new_connection_name();
    const QDBusConnection connection = connect_to_bus(name);
    const bool stands = connection.isConnected() && connection.interface() != nullptr &&
                        connection.interface()->isServiceRegistered(service);
    QDBusConnection::disconnectFromBus(name);
    return stands;
  }

  void ping_soon() {
    cancel_ping();
    const Milliseconds due = owner_.loop_.now() + between_pings;
    next_ping_ = owner_.loop_.schedule(between_pings, [this, due] {
      next_ping_.reset();
      if (owner_.loop_.now() - due > longest_standstill) set_answers(false);
      ping();
    });
  }
  void cancel_ping() {
    if (next_ping_) owner_.loop_.cancel(*next_ping_);
    next_ping_.reset();
  }
  void ping() {
    cancel_ping();
    if (!connected()) {
      set_answers(stands_on_another_bus());
      return ping_soon();
    }
    QDBusMessage question = QDBusMessage::createMethodCall(
        service, QStringLiteral("/"), QStringLiteral("org.freedesktop.DBus.Peer"),
        QStringLiteral("Ping"));
    question.setAutoStartService(false);
    auto* answer = new QDBusPendingCallWatcher(connection_.asyncCall(question, ping_limit), this);
    connect(answer, &QDBusPendingCallWatcher::finished, this, [this, answer] {
      answer->deleteLater();
      if (held_ == 0 || stopped_) return;
      set_answers(!answer->isError());
      ping_soon();
    });
  }

  DBusRemoteObjects& owner_;
  QString name_;
  QDBusConnection connection_;
  QDBusServiceWatcher watcher_;
  Callback callback_{*this};
  std::weak_ptr<Bus> weak_;
  // The name on the bus of the program that has the service.
  QString server_;
  int held_ = 0;
  bool answers_ = true;
  bool stopped_ = false;
  std::optional<EventLoop::CallId> next_ping_;
};

bool DBusRemoteObjects::Callback::handleMessage(const QDBusMessage& message,
                                                const QDBusConnection& connection) {
  if (message.interface() != callback_interface && !message.interface().isEmpty()) return false;
  const auto method = std::ranges::find(callback_methods, message.member(), &CallbackMethod::name);
  if (method == callback_methods.end()) return false;
  if (message.signature() != method->signature) {
    connection.send(message.createErrorReply(QDBusError::InvalidArgs, method->signature));
  } else if (message.isReplyRequired()) {
    connection.send(message.createReply());
  }
  bus_.called(message.service(), message.member(), message.arguments());
  return true;
}

class DBusRemoteObjects::Object final : public RemoteObject {
 public:
  Object(std::shared_ptr<Bus> bus, const std::string& name)
      : bus_(std::move(bus)),
        path_(QStringLiteral("/") + QString::fromStdString(name)),
        interface_(QStringLiteral("quorlink.") + QString::fromStdString(name)) {
    bus_->hold();
  }
  ~Object() override {
    *gone_ = true;
    bus_->let_go();
  }
  Object(const Object&) = delete;
  Object& operator=(const Object&) = delete;

  RemoteValue call(std::string_view member, const std::vector<RemoteValue>& arguments) override {
    // This object may go while it is waited for.
    const std::shared_ptr<Bus> bus = bus_;
    const std::shared_ptr<bool> gone = gone_;
    const QDBusMessage reply = bus->wait_for(bus->send(path_, interface_, member, arguments));
    if (*gone) throw Failure(failure_number::object_not_set, "The remote objects were let go");
    const QVariantList results = reply.arguments();
    if (results.isEmpty()) return {};
    const RemoteValue result = bus->value(results.front());
    if (std::holds_alternative<std::monostate>(result)) {
      throw Failure(failure_number::type_mismatch, "Type mismatch");
    }
    return result;
  }

  void tell(std::string_view member, const std::vector<RemoteValue>& arguments,
            Failed failed) override {
    bus_->tell_failure(bus_->send(path_, interface_, member, arguments), std::move(failed));
  }

 private:
  std::shared_ptr<Bus> bus_;
  QString path_;
  QString interface_;
  std::shared_ptr<bool> gone_ = std::make_shared<bool>(false);
};

DBusRemoteObjects::DBusRemoteObjects(EventLoop& loop, const Letters& letters)
    : loop_(loop), letters_(letters) {}

DBusRemoteObjects::~DBusRemoteObjects() {
  if (bus_) bus_->stop();
}

std::unique_ptr<RemoteObject> DBusRemoteObjects::create(const std::string& class_name) {
  // A bus that has gone is gone for good; there may be another one.
  if (!bus_ || !bus_->connected()) {
    bus_ = std::make_shared<Bus>(*this);
    bus_->know(bus_);
  }
  const std::shared_ptr<Bus> bus = bus_;
  bus->find_server();
  return std::make_unique<Object>(bus, class_name.substr(class_name.rfind('.') + 1));
}

}  // namespace lineweir::platform

// The objects that a server publishes on a real bus: what clients of any kind reach through them,
// and what becomes of those who don't do their part.

#include <doctest/doctest.h>
#include <sdbus-c++/sdbus-c++.h>
#include <unistd.h>

#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusPendingCall>
#include <QDBusVirtualObject>
#include <QFile>
#include <QXmlStreamReader>
#include <algorithm>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "dbus/private_bus.h"
#include "dbus/service_ground.h"
#include "letters/code_page_letters.h"
#include "letters/code_pages.h"
#include "platform/qt/dbus_remote_objects.h"
#include "platform/qt/dbus_values.h"
#include "platform/qt/qt_event_loop.h"
#include "platform/sdbus/sdbus_remote_service.h"
#include "platform/waiting.h"
#include "support/failure_number.h"
#include "support/listen.h"
#include "support/skipping_loop.h"

using namespace lineweir;
using namespace lineweir::platform;
using lineweir::test::failure_number_of;
using lineweir::test::PrivateBus;

namespace {

struct Call {
  std::string caller;
  std::string member;
  RemoteArguments arguments;
};

struct ServiceDesk {
  ServiceDesk() {
    service.on_call = [this](const std::string& caller, const std::string& member,
                             const RemoteArguments& arguments) -> std::optional<RemoteArgument> {
      calls.push_back({caller, member, arguments});
      return answer ? answer(calls.back()) : RemoteArgument(true);
    };
    service.on_gone = [this](const std::string& caller) { gone.push_back(caller); };
    service.on_published = [this](bool stands, const std::string&) { published.push_back(stands); };
  }

  void publish() {
    service.publish(RemoteBus::Session);
    REQUIRE(wait([this] { return published == std::vector<bool>{true}; }));
  }
  bool wait(const std::function<bool()>& condition) { return wait_until(loop, condition); }

  PrivateBus bus;
  QtEventLoop loop;
  CodePageLetters letters{default_code_page()};
  test::QtDescriptorWatch watch;
  test::QtPoster poster;
  std::vector<Call> calls;
  std::function<std::optional<RemoteArgument>(const Call& call)> answer;
  std::vector<std::string> gone;
  std::vector<bool> published;
  SdbusRemoteService service{{loop, watch, poster, letters}};
};

struct PublishedDesk : ServiceDesk {
  PublishedDesk() { publish(); }
};

// A program of any kind on the bus, with an object that may be there or not.
class Client final : public QDBusVirtualObject {
 public:
  explicit Client(EventLoop& loop) : loop_(loop) {
    connection_.registerVirtualObject(QStringLiteral("/mine"), this);
  }
  ~Client() override { leave(); }

  void leave() { QDBusConnection::disconnectFromBus(name_); }
  std::string name() const { return connection_.baseService().toStdString(); }
  QDBusConnection& connection() { return connection_; }

  QDBusPendingCall send(const char* object, const char* member, const QVariantList& arguments) {
    QDBusMessage call = QDBusMessage::createMethodCall(
        QStringLiteral("quorlink.Server"), QLatin1String("/") + QLatin1String(object),
        QLatin1String("quorlink.") + QLatin1String(object), QLatin1String(member));
    call.setArguments(arguments);
    return connection_.asyncCall(call, 5000);
  }
  QDBusMessage call(const char* object, const char* member, const QVariantList& arguments) {
    const QDBusPendingCall pending = send(object, member, arguments);
    while (!pending.isFinished()) loop_.yield();
    return pending.reply();
  }
  QString error(const char* object, const char* member, const QVariantList& arguments) {
    return call(object, member, arguments).errorName().section(QLatin1Char('.'), -1);
  }
  QString add() {
    return error("CBServerClass", "AddObjectReference",
                 {QVariant::fromValue(QDBusObjectPath("/mine")), 1});
  }

  QString introspect(const QString&) const override { return {}; }
  bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override {
    heard.push_back(message.member() + QLatin1Char(' ') + message.signature());
    heard_arguments.push_back(message.arguments());
    if (silent) return true;
    connection.send(error_name.isEmpty() ? message.createReply()
                                         : message.createErrorReply(error_name, "no"));
    return true;
  }

  QStringList heard;
  std::vector<QVariantList> heard_arguments;
  bool silent = false;
  // What each call is answered with; nothing where it is obeyed.
  QString error_name;

 private:
  static QString new_name() {
    static int clients = 0;
    return QStringLiteral("client-%1").arg(++clients);
  }

  EventLoop& loop_;
  QString name_ = new_name();
  QDBusConnection connection_ =
      QDBusConnection::connectToBus(qEnvironmentVariable("DBUS_SESSION_BUS_ADDRESS"), name_);
};

// A bus on which nothing is allowed that no policy allows, as on the system's.
struct SystemDesk {
  ~SystemDesk() {
    service.reset();
    qunsetenv("DBUS_SYSTEM_BUS_ADDRESS");
    qunsetenv("LINEWEIR_BUS");
  }

  // The policy of the package, for the user of this test.
  static QByteArray policy() {
    QFile file(QStringLiteral(LINEWEIR_POLICY));
    REQUIRE(file.open(QIODevice::ReadOnly));
    const QByteArray whole = file.readAll();
    const auto begin = whole.indexOf("<policy");
    QByteArray part = whole.mid(begin, whole.indexOf("</busconfig>") - begin);
    part.replace("user=\"lineweir\"", "user=\"" + QByteArray::number(::getuid()) + '"');
    part.replace("group=\"lineweir-console\"", "group=\"" + QByteArray::number(::getgid()) + '"');
    return part;
  }

  void start(const QByteArray& policies) {
    bus.emplace(R"(<!DOCTYPE busconfig PUBLIC "-//freedesktop//DTD D-Bus Bus Configuration 1.0//EN"
 "http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd">
<busconfig>
  <type>system</type>
  <auth>EXTERNAL</auth>
  <listen>unix:tmpdir=/tmp</listen>
  <policy context="default">
    <allow user="*"/>
    <deny own="*"/>
    <deny send_type="method_call"/>
    <allow send_type="signal"/>
    <allow send_requested_reply="true" send_type="method_return"/>
    <allow send_requested_reply="true" send_type="error"/>
    <allow receive_type="method_call"/>
    <allow receive_type="method_return"/>
    <allow receive_type="error"/>
    <allow receive_type="signal"/>
    <allow send_destination="org.freedesktop.DBus" send_interface="org.freedesktop.DBus"/>
  </policy>
)" + policies + "</busconfig>");
    qputenv("DBUS_SYSTEM_BUS_ADDRESS", bus->address());
    qputenv("LINEWEIR_BUS", "system");
    service.emplace(RemoteServiceGround{loop, watch, poster, letters});
    service->on_published = [this](bool stands, const std::string&) {
      published.push_back(stands);
    };
    service->on_call = [this](const std::string& by, const std::string&, const RemoteArguments&) {
      caller = by;
      return RemoteArgument(true);
    };
  }

  std::optional<PrivateBus> bus;
  QtEventLoop loop;
  CodePageLetters letters{default_code_page()};
  test::QtDescriptorWatch watch;
  test::QtPoster poster;
  std::vector<bool> published;
  std::string caller;
  std::optional<SdbusRemoteService> service;
};

// Methods of an interface as its description tells them: name, types and names of the arguments.
using Methods = std::map<QString, QStringList>;

Methods methods_of(const QString& description, const QString& interface) {
  Methods methods;
  QXmlStreamReader xml(description);
  QString in;
  QString method;
  while (!xml.atEnd()) {
    if (xml.readNext() != QXmlStreamReader::StartElement) continue;
    const auto value = [&](const char* name) {
      return xml.attributes().value(QLatin1String(name)).toString();
    };
    if (xml.name() == QLatin1String("interface")) in = value("name");
    if (in != interface) continue;
    if (xml.name() == QLatin1String("method")) methods[method = value("name")];
    if (xml.name() == QLatin1String("arg")) {
      methods[method] << value("name") + ' ' + value("type") + ' ' + value("direction");
    }
  }
  CHECK_FALSE(xml.hasError());
  return methods;
}

}  // namespace

TEST_SUITE("a service on a bus") {
  TEST_CASE_FIXTURE(PublishedDesk, "its objects describe themselves as the interfaces' files do") {
    Client client(loop);
    for (const char* object : {"SerialInput", "CBServerClass"}) {
      CAPTURE(object);
      QDBusMessage question =
          QDBusMessage::createMethodCall("quorlink.Server", QLatin1String("/") + object,
                                         "org.freedesktop.DBus.Introspectable", "Introspect");
      const QDBusPendingCall pending = client.connection().asyncCall(question);
      while (!pending.isFinished()) loop.yield();
      const QString interface = QLatin1String("quorlink.") + object;
      QFile file(QStringLiteral(LINEWEIR_INTERFACES "/") + interface + ".xml");
      REQUIRE(file.open(QIODevice::ReadOnly));
      const Methods told = methods_of(QString::fromUtf8(file.readAll()), interface);
      CHECK_FALSE(told.empty());
      CHECK(methods_of(pending.reply().arguments().value(0).toString(), interface) == told);
    }
  }

  TEST_CASE_FIXTURE(PublishedDesk, "each member is heard with its arguments and has its result") {
    Client client(loop);
    answer = [](const Call& call) -> RemoteArgument {
      if (call.member == "GetDimType") return 4;
      if (call.member == "AddObjectReference") return true;
      if (call.member == "DropObjectReference") return false;
      if (call.member.starts_with("Get") || call.member.ends_with("SerialPort")) {
        return std::string("F00");
      }
      return call.member == "gettimes" ? RemoteArgument(std::string("12:00")) : true;
    };
    const QVariant object = QVariant::fromValue(QDBusObjectPath("/mine"));
    struct Row {
      const char* on;
      const char* member;
      QVariantList sent;
      RemoteArguments heard;
      QVariant result;
    };
    const std::vector<Row> rows = {
        {"SerialInput", "InputSerialPort", {2, "N05"}, {2, std::string("N05")}, {}},
        {"SerialInput", "OutputSerialPort", {2}, {2}, "F00"},
        {"SerialInput", "GetDimType", {2}, {2}, 4},
        {"SerialInput", "GetLineNumbers", {2}, {2}, "F00"},
        {"SerialInput", "GetStudioNames", {}, {}, "F00"},
        {"SerialInput", "GetStudioStatus", {2}, {2}, "F00"},
        {"SerialInput", "gettimes", {2}, {2}, "12:00"},
        {"SerialInput", "SetNextCall", {-1, 2}, {-1, 2}, {}},
        {"SerialInput", "CallerDataServer", {1, 2, "a\x02"}, {1, 2, std::string("a\x02")}, {}},
        {"SerialInput",
         "MessageGroupData",
         {2, 255, 16777215, "Ann\x03Hi"},
         {2, 255, 16777215, std::string("Ann\x03Hi")},
         {}},
        {"CBServerClass", "AddObjectReference", {object, 2}, {std::string("/mine"), 2}, true},
        {"CBServerClass", "DropObjectReference", {object, 2}, {std::string("/mine"), 2}, false},
    };
    CHECK(rows.size() == remote_members.size());
    for (const Row& row : rows) {
      CAPTURE(row.member);
      calls.clear();
      const QDBusMessage reply = client.call(row.on, row.member, row.sent);
      CHECK(reply.type() == QDBusMessage::ReplyMessage);
      CHECK(reply.arguments().value(0) == row.result);
      REQUIRE(calls.size() == 1);
      CHECK(calls[0].caller == client.name());
      CHECK(calls[0].member == row.member);
      CHECK(calls[0].arguments == row.heard);
    }
  }

  TEST_CASE_FIXTURE(PublishedDesk, "what isn't a member's is refused, and nobody hears of it") {
    Client client(loop);
    CHECK(client.error("SerialInput", "GetDimType", {"1"}) == "InvalidArgs");
    CHECK(client.error("SerialInput", "GetDimType", {}) == "InvalidArgs");
    CHECK(client.error("SerialInput", "GetDimType", {1, 2}) == "InvalidArgs");
    CHECK(client.error("CBServerClass", "AddObjectReference", {"/mine", 1}) == "InvalidArgs");
    CHECK(client.error("SerialInput", "Nothing", {}) == "UnknownMethod");
    CHECK(client.error("SerialInput", "AddObjectReference", {}) == "UnknownMethod");
    CHECK(client.error("Nothing", "GetDimType", {1}) == "UnknownObject");
    CHECK(client.error("SerialInput", "CallerDataServer", {1, 1, QString(32768, 'a')}) ==
          "InvalidArgs");
    CHECK(client.error("SerialInput", "CallerDataServer", {1, 1, QString(1'000'000, 'a')}) ==
          "InvalidArgs");
    CHECK(calls.empty());
    CHECK(client.error("SerialInput", "CallerDataServer", {1, 1, QString(32767, 'a')}) == "");
    CHECK(calls.size() == 1);
  }

  TEST_CASE_FIXTURE(PublishedDesk, "a call that the server refuses is an error of its own") {
    Client client(loop);
    answer = [](const Call&) { return std::optional<RemoteArgument>(); };
    CHECK(client.error("SerialInput", "OutputSerialPort", {251}) == "AccessDenied");
    CHECK(client.error("SerialInput", "SetNextCall", {1, 251}) == "AccessDenied");
    answer = [](const Call&) { return RemoteArgument(true); };
    CHECK(client.error("SerialInput", "OutputSerialPort", {1}) == "Failed");
  }

  TEST_CASE_FIXTURE(PublishedDesk, "every letter survives the way there and back") {
    std::string all;
    for (int code = 1; code < 256; ++code) all += static_cast<char>(code);
    answer = [&](const Call&) { return RemoteArgument(all); };
    DBusRemoteObjects objects(loop, letters);
    std::vector<RemoteValue> heard;
    listen(objects.on_callback,
           [&](const std::string&, const std::vector<RemoteValue>& values) { heard = values; });
    const auto input = objects.create("Quorlink.SerialInput");
    CHECK(input->call("OutputSerialPort", {std::int64_t{1}}) == RemoteValue(all));
    input->tell("CallerDataServer", {std::int64_t{1}, std::int64_t{1}, all}, {});
    CHECK(wait([&] { return calls.size() == 2; }));
    CHECK(calls[1].arguments.at(2) == RemoteArgument(all));
    service.tell(calls[1].caller, "/CBClientClass", "ReturnCommand",
                 {std::string("\0", 1) + all + std::string("\0", 1)});
    CHECK(wait([&] { return !heard.empty(); }));
    CHECK(heard == std::vector<RemoteValue>{all});
  }

  TEST_CASE_FIXTURE(PublishedDesk, "a console's object is called with its types, in the order") {
    DBusRemoteObjects objects(loop, letters);
    std::vector<std::pair<std::string, std::vector<RemoteValue>>> heard;
    listen(objects.on_callback,
           [&](const std::string& member, const std::vector<RemoteValue>& values) {
             heard.emplace_back(member, values);
           });
    const auto registration = objects.create("Quorlink.CBServerClass");
    CHECK(registration->call("AddObjectReference", {"CBClientClass", std::int64_t{3}}) ==
          RemoteValue(true));
    CHECK(registration->call("DropObjectReference", {"CBClientClass", std::int64_t{3}}) ==
          RemoteValue(true));
    REQUIRE(calls.size() == 2);
    CHECK(calls[0].arguments == RemoteArguments{std::string("/CBClientClass"), 3});
    CHECK(calls[1].arguments == RemoteArguments{std::string("/CBClientClass"), 3});
    const std::string console = calls[0].caller;
    service.tell(console, "/CBClientClass", "ReturnCallerData", {std::string("a"), 1, 3});
    service.tell(console, "/CBClientClass", "ReturnMessageData", {std::string("m"), 3, 255, -1});
    for (int line = 0; line < 500; ++line) {
      service.tell(console, "/CBClientClass", "ReturnNextCall", {line, 3});
    }
    CHECK(wait([&] { return heard.size() == 502; }));
    CHECK(heard[0].first == "ReturnCallerData");
    CHECK(heard[0].second == std::vector<RemoteValue>{"a", std::int64_t{1}, std::int64_t{3}});
    CHECK(heard[1].second ==
          std::vector<RemoteValue>{"m", std::int64_t{3}, std::int64_t{255}, std::int64_t{-1}});
    for (std::size_t line = 0; line < 500; ++line) {
      CHECK(heard[line + 2].second.at(0) == RemoteValue(static_cast<std::int64_t>(line)));
    }
  }

  TEST_CASE_FIXTURE(PublishedDesk,
                    "what is told before and within a call is there before its answer") {
    const auto connection = sdbus::createSessionBusConnectionWithAddress(
        qgetenv("DBUS_SESSION_BUS_ADDRESS").toStdString());
    std::vector<int> heard;
    const auto object = sdbus::createObject(*connection, "/mine");
    object->registerMethod("ReturnNextCall")
        .onInterface("quorlink.CBClientClass")
        .implementedAs([&](std::int32_t line, std::int32_t) { heard.push_back(line); });
    object->finishRegistration();
    const auto server = sdbus::createProxy(*connection, "quorlink.Server", "/SerialInput");
    // The answer of a call, as a 0 among the lines.
    const auto call = [&] {
      server->callMethodAsync("OutputSerialPort")
          .onInterface("quorlink.SerialInput")
          .withArguments(std::int32_t{1})
          .uponReplyInvoke([&](const sdbus::Error*, const std::string&) { heard.push_back(0); });
    };
    const auto wait_for_calls = [&](std::size_t count) {
      REQUIRE(wait([&] { return calls.size() == count; }));
      run_for(loop, Milliseconds{20});
    };
    const std::string name = connection->getUniqueName();
    answer = [&](const Call&) {
      service.tell(name, "/mine", "ReturnNextCall", {51, 1});
      return RemoteArgument(std::string("N00"));
    };
    call();
    wait_for_calls(1);
    for (int line = 1; line <= 50; ++line) {
      service.tell(name, "/mine", "ReturnNextCall", {line, 1});
    }
    call();
    wait_for_calls(2);
    while (connection->processPendingRequest()) {
    }
    std::vector<int> expected = {51, 0};
    for (int line = 1; line <= 51; ++line) expected.push_back(line);
    expected.push_back(0);
    CHECK(heard == expected);
  }

  TEST_CASE_FIXTURE(PublishedDesk, "a caller who leaves is gone, once") {
    std::optional<Client> client(loop);
    client->call("SerialInput", "GetStudioNames", {});
    const std::string name = client->name();
    const Client stranger(loop);
    service.tell(name, "/mine", "ReturnNextCall", {1, 1});
    client.reset();
    CHECK(wait([&] { return !gone.empty(); }));
    service.tell(name, "/mine", "ReturnNextCall", {1, 1});
    run_for(loop, Milliseconds{50});
    CHECK(gone == std::vector<std::string>{name});
  }

  TEST_CASE_FIXTURE(PublishedDesk, "a caller without the object that he names is given up") {
    Client client(loop);
    CHECK(client.add() == "");
    service.tell(client.name(), "/another", "ReturnNextCall", {1, 1});
    run_for(loop, Milliseconds{50});
    CHECK(gone.empty());
    service.tell(client.name(), "/another", "ReturnNextCall", {1, 1});
    CHECK(wait([&] { return gone == std::vector<std::string>{client.name()}; }));
    SUBCASE("and hears so from whatever he calls, until he registers anew") {
      calls.clear();
      CHECK(client.error("SerialInput", "GetDimType", {1}) == "Gone");
      CHECK(client.error("SerialInput", "InputSerialPort", {1, "N05"}) == "Gone");
      CHECK(calls.empty());
      CHECK(client.add() == "");
      CHECK(client.error("SerialInput", "InputSerialPort", {1, "N05"}) == "");
      CHECK(calls.size() == 2);
      service.tell(client.name(), "/mine", "ReturnNextCall", {7, 1});
      CHECK(wait([&] { return client.heard == QStringList{"ReturnNextCall ii"}; }));
    }
    SUBCASE("and isn't gone again when he leaves") {
      client.leave();
      run_for(loop, Milliseconds{50});
      CHECK(gone.size() == 1);
    }
  }

  TEST_CASE_FIXTURE(PublishedDesk, "one whom no call reaches is given up, one who refuses isn't") {
    const auto tell_twice = [&](const Client& client) {
      for (int line = 0; line < 2; ++line) {
        service.tell(client.name(), "/mine", "ReturnNextCall", {line, 1});
      }
    };
    for (const char* error :
         {"NoReply", "Timeout", "TimedOut", "UnknownObject", "UnknownMethod", "UnknownInterface",
          "ServiceUnknown", "NameHasNoOwner", "LimitsExceeded"}) {
      CAPTURE(error);
      Client client(loop);
      client.error_name = QLatin1String("org.freedesktop.DBus.Error.") + QLatin1String(error);
      CHECK(client.add() == "");
      gone.clear();
      tell_twice(client);
      CHECK(wait([&] { return gone == std::vector<std::string>{client.name()}; }));
    }
    Client refusing(loop);
    refusing.error_name = QStringLiteral("org.freedesktop.DBus.Error.Failed");
    CHECK(refusing.add() == "");
    gone.clear();
    tell_twice(refusing);
    tell_twice(refusing);
    CHECK(wait([&] { return refusing.heard.size() == 4; }));
    run_for(loop, Milliseconds{50});
    CHECK(gone.empty());
  }

  TEST_CASE_FIXTURE(PublishedDesk, "one who doesn't answer is held to a bound, the others hear") {
    Client mute(loop);
    mute.silent = true;
    Client other(loop);
    CHECK(mute.add() == "");
    CHECK(other.add() == "");
    const std::string text(1000, 'a');
    for (int count = 0; count < 100; ++count) {
      service.tell(mute.name(), "/mine", "ReturnCommand", {text});
      service.tell(other.name(), "/mine", "ReturnNextCall", {count, 1});
    }
    CHECK(wait([&] { return other.heard.size() == 100; }));
    CHECK(gone == std::vector<std::string>{mute.name()});
    CHECK(mute.heard.size() == 1);
  }

  TEST_CASE_FIXTURE(PublishedDesk, "one who calls too often is shut out, the others are heard") {
    Client busy(loop);
    Client other(loop);
    CHECK(busy.add() == "");
    std::vector<QDBusPendingCall> sent;
    for (int count = 0; count < 3000; ++count) {
      sent.push_back(busy.send("SerialInput", "InputSerialPort", {1, "N05"}));
    }
    CHECK(other.error("SerialInput", "GetDimType", {1}) == "Failed");
    CHECK(wait([&] { return sent.back().isFinished(); }));
    CHECK(sent.back().error().name() == "org.freedesktop.DBus.Error.LimitsExceeded");
    CHECK_FALSE(sent.front().isError());
    CHECK(gone == std::vector<std::string>{busy.name()});
    CHECK(calls.size() < 2000);
    CHECK(busy.add() == "LimitsExceeded");
  }

  TEST_CASE_FIXTURE(PublishedDesk, "there is room for so many callers") {
    std::vector<std::unique_ptr<Client>> clients;
    for (std::size_t count = 0; count < SdbusRemoteService::most_callers; ++count) {
      clients.push_back(std::make_unique<Client>(loop));
      CHECK(clients.back()->add() == "");
    }
    Client another(loop);
    CHECK(another.add() == "LimitsExceeded");
    clients.pop_back();
    CHECK(wait([&] { return gone.size() == 1; }));
    CHECK(another.add() == "");
  }

  TEST_CASE_FIXTURE(ServiceDesk, "a bus that goes takes the callers along, and is found again") {
    publish();
    {
      Client client(loop);
      CHECK(client.add() == "");
      bus.kill();
      CHECK(wait([&] { return gone == std::vector<std::string>{client.name()}; }));
    }
    CHECK(published == std::vector<bool>{true, false});
    bus.start_again();
    CHECK(wait([&] { return published == std::vector<bool>{true, false, true}; }));
    Client client(loop);
    CHECK(client.add() == "");
  }

  TEST_CASE_FIXTURE(ServiceDesk, "a name that is another's is waited for") {
    std::optional<Client> holder(loop);
    CHECK(holder->connection().registerService("quorlink.Server"));
    service.publish(RemoteBus::Session);
    CHECK(wait([&] { return published == std::vector<bool>{false}; }));
    holder.reset();
    CHECK(wait([&] { return published == std::vector<bool>{false, true}; }));
  }

  TEST_CASE_FIXTURE(ServiceDesk, "a bus that isn't there is told once") {
    bus.kill();
    service.publish(RemoteBus::Session);
    CHECK(wait([&] { return !published.empty(); }));
    run_for(loop, Milliseconds{800});
    CHECK(published == std::vector<bool>{false});
  }

  TEST_CASE_FIXTURE(PublishedDesk, "a console works with it, and misses it when it goes") {
    DBusRemoteObjects objects(loop, letters);
    std::vector<bool> presence;
    listen(objects.on_presence, [&](bool answers) { presence.push_back(answers); });
    answer = [](const Call&) { return RemoteArgument(4); };
    const auto input = objects.create("Quorlink.SerialInput");
    CHECK(input->call("GetDimType", {std::int64_t{1}}) == RemoteValue(std::int64_t{4}));
    CHECK(failure_number_of([&] { input->call("Nothing", {}); }) == 438);
    bus.kill();
    CHECK(wait([&] { return presence == std::vector<bool>{false}; }));
  }

  TEST_CASE_FIXTURE(PublishedDesk, "a console that was given up learns of it and begins anew") {
    test::SkippingLoop time(loop);
    DBusRemoteObjects objects(time, letters);
    std::vector<bool> presence;
    listen(objects.on_presence, [&](bool answers) { presence.push_back(answers); });
    const auto registration = objects.create("Quorlink.CBServerClass");
    const auto input = objects.create("Quorlink.SerialInput");
    registration->call("AddObjectReference", {"CBClientClass", std::int64_t{1}});
    const std::vector<bool> missed_and_back = {false, true};
    SUBCASE("from an answer") {
      const std::string text(SdbusRemoteService::queue_bound, 'a');
      service.tell(calls[0].caller, "/CBClientClass", "ReturnCommand", {text});
      CHECK(wait([&] { return gone.size() == 1; }));
      input->tell("InputSerialPort", {std::int64_t{1}, "N05"}, {});
      CHECK(wait([&] { return presence == missed_and_back; }));
      CHECK(calls.size() == 1);
      registration->call("AddObjectReference", {"CBClientClass", std::int64_t{1}});
      input->call("InputSerialPort", {std::int64_t{1}, "N05"});
      CHECK(calls.size() == 3);
    }
    SUBCASE("from its own standstill") {
      time.skip(Milliseconds{900});
      run_for(loop, Milliseconds{300});
      CHECK(presence.empty());
      time.skip(Milliseconds{6000});
      CHECK(wait([&] { return presence == missed_and_back; }));
    }
  }
}

TEST_SUITE("a service on the system's bus") {
  TEST_CASE_FIXTURE(SystemDesk, "the policy's file lets it have the name and call its clients") {
    start(policy());
    service->publish(RemoteBus::System);
    REQUIRE(wait_until(loop, [&] { return !published.empty(); }));
    CHECK(published == std::vector<bool>{true});
    DBusRemoteObjects objects(loop, letters);
    std::vector<std::string> heard;
    listen(objects.on_callback, [&](const std::string& member, const std::vector<RemoteValue>&) {
      heard.push_back(member);
    });
    const auto registration = objects.create("Quorlink.CBServerClass");
    CHECK(registration->call("AddObjectReference", {"CBClientClass", std::int64_t{1}}) ==
          RemoteValue(true));
    service->tell(caller, "/CBClientClass", "ReturnNextCall", {1, 1});
    CHECK(wait_until(loop, [&] { return heard == std::vector<std::string>{"ReturnNextCall"}; }));
  }

  TEST_CASE_FIXTURE(SystemDesk, "without it nobody has the name") {
    start({});
    service->publish(RemoteBus::System);
    REQUIRE(wait_until(loop, [&] { return !published.empty(); }));
    CHECK(published == std::vector<bool>{false});
  }
}

TEST_SUITE("how often a caller calls") {
  TEST_CASE("a caller may do much at once, and goes on at the rate of a busy hand") {
    CallMeter meter;
    for (long count = 0; count < CallMeter::at_once; ++count) {
      REQUIRE(meter.hears(Milliseconds{0}));
    }
    Milliseconds now{0};
    for (int count = 0; count < 10'000; ++count) {
      now += Milliseconds{5};
      REQUIRE(meter.hears(now));
    }
  }

  TEST_CASE("who calls more is shut out until he was quiet") {
    CallMeter meter;
    long heard = 0;
    while (meter.hears(Milliseconds{0})) ++heard;
    CHECK(heard == CallMeter::at_once);
    CHECK_FALSE(meter.hears(Milliseconds{4000}));
    CHECK_FALSE(meter.hears(Milliseconds{8000}));
    CHECK(meter.hears(Milliseconds{13'000}));
  }
}

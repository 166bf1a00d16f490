// The transport of remote objects on a real bus: what goes over it, and what happens when the other
// side doesn't do its part.

#include <doctest/doctest.h>

#include <QDBusConnectionInterface>
#include <QDBusError>
#include <QDBusPendingCall>
#include <QThread>
#include <QXmlStreamReader>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "dbus/object_server.h"
#include "dbus/private_bus.h"
#include "dbus/studio_process.h"
#include "letters/code_page_letters.h"
#include "letters/code_pages.h"
#include "platform/qt/dbus_remote_objects.h"
#include "platform/qt/dbus_values.h"
#include "platform/qt/qt_event_loop.h"
#include "platform/waiting.h"
#include "support/failure_number.h"
#include "support/listen.h"

using namespace lineweir;
using namespace lineweir::platform;
using lineweir::test::failure_number_of;
using lineweir::test::ObjectServer;
using lineweir::test::PrivateBus;
using lineweir::test::StudioProcess;

namespace {

using Values = std::vector<RemoteValue>;

struct BusDesk {
  BusDesk() {
    listen(objects.on_callback, [this](const std::string& method, const Values& arguments) {
      callbacks.emplace_back(method, arguments);
    });
    listen(objects.on_presence, [this](bool answers) { presence.push_back(answers); });
  }

  PrivateBus bus;
  QtEventLoop loop;
  CodePageLetters letters{default_code_page()};
  DBusRemoteObjects objects{loop, letters};
  std::vector<std::pair<std::string, Values>> callbacks;
  std::vector<bool> presence;
};

// A server in this process that answers what the test says.
struct AnsweringDesk : BusDesk {
  QVariant answer;
  std::vector<ObjectServer::Use> uses;
  ObjectServer server{[this](const ObjectServer::Use& use) {
    uses.push_back(use);
    return answer;
  }};
  std::unique_ptr<RemoteObject> input = objects.create("Quorlink.SerialInput");
};

// A server on a thread of its own.
class ServerThread final : public QThread {
 public:
  explicit ServerThread(
      std::function<QVariant(ObjectServer& server, const ObjectServer::Use&)> answer)
      : answer_(std::move(answer)) {
    start();
    while (!stands_) msleep(1);
  }
  ~ServerThread() override {
    quit();
    wait();
  }

 protected:
  void run() override {
    ObjectServer* self = nullptr;
    ObjectServer server([&](const ObjectServer::Use& use) { return answer_(*self, use); });
    self = &server;
    stands_ = true;
    exec();
  }

 private:
  std::function<QVariant(ObjectServer&, const ObjectServer::Use&)> answer_;
  std::atomic<bool> stands_ = false;
};

std::string all_letters() {
  std::string all;
  for (int code = 1; code < 256; ++code) all += static_cast<char>(code);
  return all;
}

}  // namespace

TEST_SUITE("remote objects on a bus") {
  TEST_CASE_FIXTURE(AnsweringDesk, "members and their arguments arrive as they are named") {
    answer = QStringLiteral("F00");
    CHECK(input->call("OutputSerialPort", {std::int64_t{3}}) == RemoteValue("F00"));
    answer = 4;
    CHECK(input->call("GetDimType", {std::int64_t{3}}) == RemoteValue(std::int64_t{4}));
    answer = true;
    const auto registration = objects.create("Quorlink.CBServerClass");
    CHECK(registration->call("AddObjectReference", {"CBClientClass", std::int64_t{3}}) ==
          RemoteValue(true));
    answer = {};
    CHECK(input->call("MessageGroupData", {std::int64_t{3}, std::int64_t{255}, std::int64_t{-1},
                                           "Ann"}) == RemoteValue());
    REQUIRE(uses.size() == 4);
    CHECK(uses[0].object == "SerialInput");
    CHECK(uses[0].member == "OutputSerialPort");
    CHECK(uses[0].arguments == QVariantList{3});
    CHECK(uses[2].object == "CBServerClass");
    CHECK(uses[2].arguments == QVariantList{"CBClientClass", 3});
    CHECK(uses[3].arguments == QVariantList{3, 255, -1, "Ann"});
  }

  TEST_CASE_FIXTURE(AnsweringDesk, "every letter survives the way there and back") {
    const std::string all = all_letters();
    for (const CodePage* page : {&default_code_page(), find_code_page("windows-1250"),
                                 find_code_page("windows-1251"), find_code_page("windows-1253")}) {
      CAPTURE(page->name);
      const CodePageLetters other(*page);
      DBusRemoteObjects client(loop, other);
      const auto object = client.create("Quorlink.SerialInput");
      uses.clear();
      answer = bus_value(other, all);
      CHECK(object->call("CallerDataServer", {std::int64_t{1}, std::int64_t{1}, all}) ==
            RemoteValue(all));
      CHECK(value_of(other, uses.at(0).arguments.at(2)) == RemoteValue(all));
      std::vector<RemoteValue> heard;
      listen(client.on_callback,
             [&](const std::string&, const Values& arguments) { heard = arguments; });
      const auto registration = client.create("Quorlink.CBServerClass");
      registration->call("AddObjectReference", {"CBClientClass", std::int64_t{1}});
      server.call_back("ReturnCommand", {answer});
      CHECK(wait_until(loop, [&] { return !heard.empty(); }));
      CHECK(heard == Values{all});
    }
    // The bus has no code 0.
    input->call("InputSerialPort", {std::int64_t{1}, std::string("N\0"
                                                                 "05",
                                                                 4)});
    CHECK(uses.back().arguments.at(1) == "N05");
  }

  TEST_CASE_FIXTURE(BusDesk, "a server that isn't there is number 429") {
    CHECK(failure_number_of([&] { objects.create("Quorlink.SerialInput"); }) == 429);
    bus.kill();
    CHECK(failure_number_of([&] { objects.create("Quorlink.SerialInput"); }) == 429);
  }

  TEST_CASE_FIXTURE(AnsweringDesk, "a member that the server refuses is number 438") {
    answer = QVariant::fromValue(QDBusError(QDBusError::UnknownMethod, "no such member"));
    CHECK(failure_number_of([&] { input->call("Nothing", {}); }) == 438);
    std::vector<int> failed;
    input->tell("Nothing", {}, [&](const Failure& failure) { failed.push_back(failure.number()); });
    CHECK(failed.empty());
    CHECK(wait_until(loop, [&] { return !failed.empty(); }));
    CHECK(failed == std::vector<int>{438});
  }

  TEST_CASE_FIXTURE(AnsweringDesk,
                    "an answer of another type fails, and so does a number too large") {
    answer = 1.5;
    CHECK(failure_number_of([&] { input->call("GetDimType", {std::int64_t{1}}); }) == 13);
    answer = QVariant::fromValue<qulonglong>(7);
    CHECK(failure_number_of([&] { input->call("GetDimType", {std::int64_t{1}}); }) == 13);
    answer = {};
    CHECK(input->call("GetDimType", {std::int64_t{1}}) == RemoteValue());
    CHECK(failure_number_of([&] { input->call("GetDimType", {std::int64_t{1} << 40}); }) == 6);
  }

  TEST_CASE_FIXTURE(AnsweringDesk,
                    "what is told arrives in its order, with what is called behind it") {
    for (int number = 0; number < 1000; ++number) {
      input->tell("InputSerialPort", {std::int64_t{number}, "N05"}, {});
    }
    input->call("OutputSerialPort", {std::int64_t{1000}});
    REQUIRE(uses.size() == 1001);
    for (int number = 0; number <= 1000; ++number) {
      CHECK(uses[static_cast<std::size_t>(number)].arguments.at(0) == number);
    }
  }

  TEST_CASE_FIXTURE(AnsweringDesk, "the server's calls arrive from the loop, in their order") {
    answer = true;
    objects.create("Quorlink.CBServerClass")
        ->call("AddObjectReference", {"CBClientClass", std::int64_t{1}});
    for (int number = 0; number < 1000; ++number) {
      server.call_back("ReturnNextCall", {number, 1});
    }
    CHECK(wait_until(loop, [&] { return callbacks.size() == 1000; }));
    for (std::size_t place = 0; place < callbacks.size(); ++place) {
      CHECK(callbacks[place].first == "ReturnNextCall");
      CHECK(callbacks[place].second.at(0) == RemoteValue(static_cast<std::int64_t>(place)));
    }
  }

  TEST_CASE_FIXTURE(BusDesk, "a server that calls back while it is called has its answer") {
    std::atomic<bool> answered = false;
    const ServerThread thread([&](ObjectServer& server, const ObjectServer::Use& use) {
      if (use.member == "OutputSerialPort") {
        answered = server.call_back_and_wait("ReturnCommand", {"R00"});
      }
      return QVariant(true);
    });
    const auto registration = objects.create("Quorlink.CBServerClass");
    registration->call("AddObjectReference", {"CBClientClass", std::int64_t{1}});
    const auto input = objects.create("Quorlink.SerialInput");
    CHECK(input->call("OutputSerialPort", {std::int64_t{1}}) == RemoteValue(true));
    CHECK(answered);
    CHECK(wait_until(loop, [&] { return callbacks.size() == 1; }));
  }

  TEST_CASE_FIXTURE(AnsweringDesk,
                    "the console's object tells what it is, and refuses what it isn't") {
    QDBusConnection asking =
        QDBusConnection::connectToBus(qEnvironmentVariable("DBUS_SESSION_BUS_ADDRESS"), "asking");
    QStringList clients = asking.interface()->registeredServiceNames().value().filter(":");
    const auto ask = [&](const QString& interface, const QString& member,
                         const QVariantList& arguments) {
      std::vector<QDBusMessage> answers;
      for (const QString& name : clients) {
        QDBusMessage call =
            QDBusMessage::createMethodCall(name, "/CBClientClass", interface, member);
        call.setArguments(arguments);
        QDBusPendingCall pending = asking.asyncCall(call);
        while (!pending.isFinished()) loop.yield();
        answers.push_back(pending.reply());
      }
      return answers;
    };
    QStringList consoles;
    for (const QDBusMessage& reply : ask("org.freedesktop.DBus.Introspectable", "Introspect", {})) {
      QXmlStreamReader xml(reply.arguments().value(0).toString());
      QStringList methods;
      while (!xml.atEnd()) {
        if (xml.readNext() == QXmlStreamReader::StartElement &&
            xml.name() == QLatin1String("method")) {
          methods.push_back(xml.attributes().value("name").toString());
        }
      }
      if (methods.contains("ReturnNextCall") && !xml.hasError()) consoles << reply.service();
    }
    REQUIRE(consoles.size() == 1);
    clients = consoles;
    const auto error_of = [&](const QString& method, const QVariantList& arguments) {
      return ask("quorlink.CBClientClass", method, arguments).front().errorName();
    };
    const std::map<QString, QVariantList> methods = {
        {"ReturnCallerData", {"a", 1, 3}},
        {"ReturnCommand", {"R00"}},
        {"ReturnMessageData", {"m", 3, 255, -1}},
        {"ReturnNextCall", {1, 3}},
    };
    for (const auto& [method, arguments] : methods) {
      CAPTURE(method.toStdString());
      CHECK(error_of(method, arguments) == "");
      CHECK(error_of(method, {1.5}) == "org.freedesktop.DBus.Error.InvalidArgs");
    }
    CHECK(error_of("Nothing", {}).startsWith("org.freedesktop.DBus.Error.Unknown"));
    QDBusConnection::disconnectFromBus("asking");
  }

  TEST_CASE_FIXTURE(AnsweringDesk, "nobody but the server is heard") {
    answer = true;
    objects.create("Quorlink.CBServerClass")
        ->call("AddObjectReference", {"CBClientClass", std::int64_t{1}});
    QDBusConnection stranger =
        QDBusConnection::connectToBus(qEnvironmentVariable("DBUS_SESSION_BUS_ADDRESS"), "stranger");
    const QStringList names = stranger.interface()->registeredServiceNames();
    for (const QString& name : names) {
      if (!name.startsWith(':')) continue;
      QDBusMessage call = QDBusMessage::createMethodCall(name, "/CBClientClass",
                                                         "quorlink.CBClientClass", "ReturnCommand");
      call.setArguments({"U05"});
      stranger.asyncCall(call);
    }
    server.call_back("ReturnCommand", {"R00"});
    CHECK(wait_until(loop, [&] { return !callbacks.empty(); }));
    run_for(loop, Milliseconds{100});
    QDBusConnection::disconnectFromBus("stranger");
    REQUIRE(callbacks.size() == 1);
    CHECK(callbacks[0].second == Values{"R00"});
  }

  TEST_CASE_FIXTURE(BusDesk, "a server that is killed in a call gives no answer, and is missed") {
    StudioProcess studio;
    const auto input = objects.create("Quorlink.SerialInput");
    studio.stop();
    loop.schedule(Milliseconds{100}, [&] { studio.kill(); });
    CHECK(failure_number_of([&] { input->call("OutputSerialPort", {std::int64_t{1}}); }) == 462);
    CHECK(wait_until(loop, [&] { return presence == std::vector<bool>{false}; }));
    const StudioProcess again;
    CHECK(wait_until(loop, [&] { return presence == std::vector<bool>{false, true}; }));
    // What was held leads to the new one.
    CHECK(input->call("GetDimType", {std::int64_t{1}}) == RemoteValue(std::int64_t{1}));
  }

  TEST_CASE_FIXTURE(BusDesk, "a server that stands still is missed, and heard when it goes on") {
    const StudioProcess studio;
    const auto input = objects.create("Quorlink.SerialInput");
    studio.stop();
    CHECK(wait_until(loop, [&] { return presence == std::vector<bool>{false}; }));
    studio.go_on();
    CHECK(wait_until(loop, [&] { return presence == std::vector<bool>{false, true}; }));
  }

  TEST_CASE_FIXTURE(BusDesk, "a bus that goes is missed") {
    const StudioProcess studio;
    const auto input = objects.create("Quorlink.SerialInput");
    bus.kill();
    CHECK(wait_until(loop, [&] { return presence == std::vector<bool>{false}; }));
    CHECK(failure_number_of([&] { input->call("GetDimType", {std::int64_t{1}}); }) == 462);
  }

  TEST_CASE_FIXTURE(BusDesk, "an object may go while its answer is waited for") {
    const StudioProcess studio;
    auto input = objects.create("Quorlink.SerialInput");
    studio.stop();
    loop.schedule(Milliseconds{50}, [&] {
      input.reset();
      studio.go_on();
    });
    RemoteObject& held = *input;
    CHECK(failure_number_of([&] { held.call("GetDimType", {std::int64_t{1}}); }) == 91);
  }
}

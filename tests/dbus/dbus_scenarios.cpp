// Runs each scenario that speaks of remote objects with a bus in between: what the console does to
// an object goes over the bus to a server that does what the script says, and the server's calls
// come back over it.

#define DOCTEST_CONFIG_IMPLEMENT
#include <doctest/doctest.h>

#include <QCoreApplication>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <memory>
#include <optional>
#include <sstream>

#include "dbus/object_server.h"
#include "dbus/private_bus.h"
#include "driver/interpreter.h"
#include "letters/code_page_letters.h"
#include "letters/code_pages.h"
#include "platform/disk/disk_files.h"
#include "platform/qt/dbus_remote_objects.h"
#include "platform/qt/dbus_values.h"
#include "platform/qt/qt_event_loop.h"
#include "platform/sqlite/sqlite_engine.h"
#include "platform/temporary_directory.h"
#include "support/listen.h"

namespace lineweir::test {
namespace {

namespace fs = std::filesystem;
using platform::RemoteValue;

class BusInBetween final : public platform::RemoteObjects {
 public:
  BusInBetween(platform::ScriptedRemoteObjects& script, const Letters& letters)
      : script_(script), letters_(letters), client_(loop_, letters) {
    listen(client_.on_callback, [this](const std::string& method, const auto& arguments) {
      arrived_ = true;
      on_callback(method, arguments);
    });
  }

  std::unique_ptr<platform::RemoteObject> create(const std::string& class_name) override {
    follow_script();
    return std::make_unique<Object>(*this, client_.create(class_name));
  }

  int uses() const { return uses_; }

 private:
  class Object final : public platform::RemoteObject {
   public:
    Object(BusInBetween& bus, std::unique_ptr<platform::RemoteObject> object)
        : bus_(bus), object_(std::move(object)) {}

    RemoteValue call(std::string_view member, const std::vector<RemoteValue>& arguments) override {
      bus_.follow_script();
      return object_->call(member, arguments);
    }
    // The script's time stands still, so that the end is waited for.
    void tell(std::string_view member, const std::vector<RemoteValue>& arguments,
              Failed /*failed*/) override {
      call(member, arguments);
    }

   private:
    BusInBetween& bus_;
    std::unique_ptr<platform::RemoteObject> object_;
  };

  void follow_script() {
    if (script_.present() && !server_) {
      server_.emplace([this](const ObjectServer::Use& use) { return answer(use); });
    } else if (!script_.present()) {
      server_.reset();
    }
    script_.on_callback.forget_handler();
    listen(script_.on_callback, [this](const std::string& method, const auto& arguments) {
      carry_back(method, arguments);
    });
  }

  QVariant answer(const ObjectServer::Use& use) {
    ++uses_;
    std::vector<RemoteValue> arguments;
    for (const QVariant& argument : use.arguments) {
      arguments.push_back(platform::value_of(letters_, argument));
    }
    const auto object = script_.create("Quorlink." + use.object.toStdString());
    return platform::bus_value(letters_, object->call(use.member.toStdString(), arguments));
  }

  void carry_back(const std::string& method, const std::vector<RemoteValue>& arguments) {
    ++uses_;
    QVariantList values;
    for (const RemoteValue& argument : arguments) {
      values.push_back(platform::bus_value(letters_, argument));
    }
    arrived_ = false;
    server_->call_back(QString::fromStdString(method), values);
    while (!arrived_) loop_.yield();
  }

  platform::ScriptedRemoteObjects& script_;
  const Letters& letters_;
  platform::QtEventLoop loop_;
  platform::DBusRemoteObjects client_;
  std::optional<ObjectServer> server_;
  bool arrived_ = false;
  int uses_ = 0;
};

// What fails is told there in the words of the script's own objects.
constexpr std::string_view not_for_a_bus = "command_that_fails_is_reported_in_the_end";

bool speaks_of_remote_objects(const fs::path& script) {
  if (script.stem() == not_for_a_bus) return false;
  std::ostringstream text;
  text << std::ifstream(script, std::ios::binary).rdbuf();
  return text.str().find("\nremote ") != std::string::npos ||
         text.str().find("console_with_remote_objects") != std::string::npos;
}

TEST_CASE("the scenarios of remote objects hold over a bus too") {
  const CodePageLetters letters(default_code_page());
  int scripts = 0;
  int uses = 0;
  for (const auto& entry : fs::directory_iterator(LINEWEIR_SCENARIOS)) {
    if (entry.path().extension() != ".txt" || !speaks_of_remote_objects(entry.path())) continue;
    const PrivateBus bus;
    const TemporaryDirectory folder;
    platform::GuardedFiles guard;
    platform::DiskFiles files(folder.path(), letters, &guard);
    platform::SqliteEngine databases(folder.path(), letters, std::chrono::milliseconds::zero(),
                                     &guard, platform::BatchWork::AtOnce);
    // It outlives the console, whose objects are its own.
    std::unique_ptr<BusInBetween> between;
    driver::Session session(files, databases, letters);
    between = std::make_unique<BusInBetween>(session.platform().remote_objects, letters);
    session.platform().other_remote_objects = between.get();
    std::ifstream script(entry.path(), std::ios::binary);
    std::ostringstream replies;
    const bool well =
        driver::carry_out_all(session, script, entry.path().string(), replies, std::cerr);
    CAPTURE(entry.path().filename().string());
    CHECK(well);
    ++scripts;
    uses += between->uses();
  }
  CHECK(scripts > 15);
  CHECK(uses > 70);
}

}  // namespace
}  // namespace lineweir::test

int main(int argc, char** argv) {
  const QCoreApplication application(argc, argv);
  doctest::Context context(argc, argv);
  return context.run();
}

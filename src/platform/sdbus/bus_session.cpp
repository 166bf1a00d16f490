#include "platform/sdbus/bus_session.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <utility>

namespace lineweir::platform {
namespace {

constexpr std::array<const char*, 2> published = {"SerialInput", "CBServerClass"};

std::unique_ptr<sdbus::IConnection> connect(RemoteBus bus) {
  return bus == RemoteBus::System ? sdbus::createSystemBusConnection()
                                  : sdbus::createSessionBusConnection();
}

std::vector<std::string> names_of(const RemoteMember& member) {
  return {member.argument_names.begin(),
          member.argument_names.begin() + static_cast<std::ptrdiff_t>(member.arguments.size())};
}

}  // namespace

BusSession::BusSession(RemoteBus bus) : connection_(connect(bus)) {
  connection_->setMethodCallTimeout(std::chrono::seconds(5));
  publish();
  listen();
  // Whoever sees the name finds the objects.
  connection_->requestName(name);
}

void BusSession::publish() {
  for (const char* object_name : published) {
    auto object = sdbus::createObject(*connection_, std::string("/") + object_name);
    for (const RemoteMember& member : remote_members) {
      if (member.object != object_name) continue;
      const std::vector<std::string> result_names(member.result.size(),
                                                  std::string(member.result_name));
      object->registerMethod(std::string("quorlink.") + object_name, std::string(member.name),
                             std::string(member.arguments), names_of(member),
                             std::string(member.result), result_names,
                             [this, &member](sdbus::MethodCall call) {
                               if (on_call) on_call(member, std::move(call));
                             });
    }
    object->finishRegistration();
    objects_.push_back(std::move(object));
  }
}

void BusSession::listen() {
  constexpr const char* of_the_bus =
      "type='signal',sender='org.freedesktop.DBus',path='/org/freedesktop/DBus',"
      "interface='org.freedesktop.DBus',";
  connection_->addMatch(
      std::string(of_the_bus) + "member='NameOwnerChanged',arg2=''",
      [this](sdbus::Message& message) {
        std::string left;
        message >> left;
        if (on_left) on_left(left);
      },
      sdbus::floating_slot);
  connection_->addMatch(
      std::string(of_the_bus) + "member='NameLost',arg0='" + name + "'",
      [this](sdbus::Message&) {
        if (on_name_lost) on_name_lost();
      },
      sdbus::floating_slot);
}

}  // namespace lineweir::platform

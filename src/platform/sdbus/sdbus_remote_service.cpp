#include "platform/sdbus/sdbus_remote_service.h"

#include <poll.h>
#include <sdbus-c++/Error.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <mutex>
#include <string_view>
#include <utility>

#include "platform/sdbus/remote_arguments.h"

namespace lineweir::platform {
namespace {

constexpr const char* client_interface = "quorlink.CBClientClass";
constexpr std::string_view registration = "AddObjectReference";

constexpr const char* access_denied = "org.freedesktop.DBus.Error.AccessDenied";
constexpr const char* failed = "org.freedesktop.DBus.Error.Failed";
constexpr const char* invalid_arguments = "org.freedesktop.DBus.Error.InvalidArgs";
constexpr const char* limits_exceeded = "org.freedesktop.DBus.Error.LimitsExceeded";

// Errors that tell that a call did not arrive, or that nobody knows whether it did.
constexpr std::array<std::string_view, 9> unreached = {
    "org.freedesktop.DBus.Error.NoReply",        "org.freedesktop.DBus.Error.Timeout",
    "org.freedesktop.DBus.Error.TimedOut",       "org.freedesktop.DBus.Error.UnknownObject",
    "org.freedesktop.DBus.Error.UnknownMethod",  "org.freedesktop.DBus.Error.UnknownInterface",
    "org.freedesktop.DBus.Error.ServiceUnknown", "org.freedesktop.DBus.Error.NameHasNoOwner",
    "org.freedesktop.DBus.Error.LimitsExceeded",
};

// Others on the loop have their turn after so many messages.
constexpr int messages_at_once = 50;

void reply_error(const sdbus::MethodCall& call, const char* name, const char* words) {
  call.createErrorReply(sdbus::Error(name, words)).send();
}

}  // namespace

// What the thread that makes a connection knows of the service, which may go meanwhile.
struct SdbusRemoteService::Opening {
  std::mutex mutex;
  SdbusRemoteService* service = nullptr;
  Poster* poster = nullptr;
};

SdbusRemoteService::SdbusRemoteService(RemoteServiceGround ground)
    : ground_(ground), opening_(std::make_shared<Opening>()) {
  opening_->service = this;
  opening_->poster = &ground_.poster;
}

SdbusRemoteService::~SdbusRemoteService() {
  {
    const std::lock_guard lock(opening_->mutex);
    opening_->service = nullptr;
    opening_->poster = nullptr;
  }
  on_gone = nullptr;
  on_published = nullptr;
  lose({});
  if (next_try_) ground_.loop.cancel(*next_try_);
  // What was told last is to arrive; a bus that takes nothing is left.
  crew_.wait(std::chrono::seconds(1));
}

void SdbusRemoteService::publish(RemoteBus bus) {
  bus_ = bus;
  open();
}

void SdbusRemoteService::open() {
  crew_.start([opening = opening_, bus = bus_] {
    std::shared_ptr<BusSession> session;
    std::string why;
    try {
      session = std::make_shared<BusSession>(bus);
    } catch (const sdbus::Error& error) {
      why = error.getMessage();
    }
    const std::lock_guard lock(opening->mutex);
    if (opening->poster == nullptr) return;
    opening->poster->post([opening, session, why] {
      // Set and cleared on the loop only.
      if (opening->service != nullptr) opening->service->opened(session, why);
    });
  });
}

void SdbusRemoteService::opened(std::shared_ptr<BusSession> session, const std::string& why) {
  if (!session) {
    if (on_published && told_ != why) on_published(false, why);
    told_ = why;
    return try_again_later();
  }
  session_ = std::move(session);
  session_->on_call = [this](const RemoteMember& member, sdbus::MethodCall call) {
    called(member, std::move(call));
  };
  session_->on_left = [this](const std::string& caller) { left(caller); };
  session_->on_name_lost = [this] { broken_ = "another program has taken the name"; };
  pause_ = first_pause;
  told_.reset();
  if (on_published) on_published(true, {});
  process();
}

void SdbusRemoteService::lose(const std::string& why) {
  if (!session_) return;
  ground_.watch.stop();
  waits_ = false;
  if (next_process_) ground_.loop.cancel(*next_process_);
  next_process_.reset();
  broken_.reset();
  due_.clear();
  for (auto& [name, caller] : callers_) {
    if (!caller.given_up) gone_.push_back(name);
  }
  callers_.clear();
  // Its end may wait for the bus.
  crew_.start([session = std::exchange(session_, nullptr)]() mutable { session.reset(); });
  tell_gone();
  if (on_published) on_published(false, why);
  told_ = why;
  try_again_later();
}

void SdbusRemoteService::try_again_later() {
  next_try_ = ground_.loop.schedule(pause_, [this] {
    next_try_.reset();
    open();
  });
  pause_ = std::min(2 * pause_, longest_pause);
}

void SdbusRemoteService::process() {
  for (int count = 0; count < messages_at_once; ++count) {
    bool more = false;
    processing_ = true;
    try {
      more = session_->process();
    } catch (const sdbus::Error& error) {
      broken_ = error.getMessage();
    }
    processing_ = false;
    follow_up();
    if (broken_) return lose(std::string(*broken_));
    if (!more) return wait_for_bus();
  }
  process_soon(Milliseconds{0});
}

void SdbusRemoteService::process_soon(Milliseconds delay) {
  const Milliseconds due = ground_.loop.now() + delay;
  if (next_process_ && next_process_due_ <= due) return;
  if (next_process_) ground_.loop.cancel(*next_process_);
  next_process_due_ = due;
  next_process_ = ground_.loop.schedule(delay, [this] {
    next_process_.reset();
    process();
  });
}

void SdbusRemoteService::wait_for_bus() {
  const sdbus::IConnection::PollData data = session_->poll_data();
  const bool to_write = (data.events & POLLOUT) != 0;
  if (!waits_ || waits_to_write_ != to_write) {
    waits_ = true;
    waits_to_write_ = to_write;
    ground_.watch.wait(data.fd, to_write, [this] {
      waits_ = false;
      process();
    });
  }
  if (const auto wait = data.getRelativeTimeout()) {
    process_soon(std::chrono::ceil<Milliseconds>(*wait));
  }
}

void SdbusRemoteService::follow_up() {
  for (const std::string& name : std::exchange(due_, {})) {
    const auto caller = callers_.find(name);
    if (caller == callers_.end()) continue;
    std::erase_if(caller->second.told, [](const auto& told) { return told->over; });
    tell_next(name, caller->second);
  }
  tell_gone();
}

void SdbusRemoteService::tell_gone() {
  for (const std::string& name : std::exchange(gone_, {})) {
    if (on_gone) on_gone(name);
  }
}

void SdbusRemoteService::called(const RemoteMember& member, sdbus::MethodCall call) {
  const std::string caller = call.getSender();
  const std::optional<sdbus::Error> refused = refusal(member, caller);
  // Nothing may pass the library, through which this was called.
  try {
    if (refused) {
      call.createErrorReply(*refused).send();
    } else {
      obey(member, caller, call);
    }
  } catch (const sdbus::Error& error) {
    broken_ = error.getMessage();
  }
}

std::optional<sdbus::Error> SdbusRemoteService::refusal(const RemoteMember& member,
                                                        const std::string& caller) {
  auto known = callers_.find(caller);
  if (known == callers_.end()) {
    if (callers_.size() >= most_callers) {
      return sdbus::Error(limits_exceeded, "The server has too many clients");
    }
    known = callers_.try_emplace(caller).first;
  }
  RemoteCaller& somebody = known->second;
  if (!somebody.meter.hears(ground_.loop.now())) {
    give_up(caller, somebody);
    return sdbus::Error(limits_exceeded, "Too many calls");
  }
  if (somebody.given_up && member.name != registration) {
    return sdbus::Error(gone_error, "The server calls this client no more; register anew");
  }
  return std::nullopt;
}

void SdbusRemoteService::obey(const RemoteMember& member, const std::string& caller,
                              sdbus::MethodCall& call) {
  const std::optional<RemoteArguments> arguments =
      arguments_of(call, member.arguments, ground_.letters);
  if (!arguments) return reply_error(call, invalid_arguments, "The text is too long");
  tell_gone();
  if (member.name == registration) {
    callers_[caller].given_up = false;
    callers_[caller].failures = 0;
  }
  const std::optional<RemoteArgument> result =
      on_call ? on_call(caller, std::string(member.name), *arguments) : std::nullopt;
  tell_all(caller, callers_[caller]);
  if (!result) return reply_error(call, access_denied, "The server refuses this call");
  if (member.result.empty()) return call.createReply().send();
  if (member.result.front() != type_of(*result)) {
    return reply_error(call, failed, "The server has no answer");
  }
  auto reply = call.createReply();
  append(reply, *result, ground_.letters);
  reply.send();
}

void SdbusRemoteService::left(const std::string& caller) {
  const auto known = callers_.find(caller);
  if (known == callers_.end()) return;
  if (!known->second.given_up) gone_.push_back(caller);
  callers_.erase(known);
}

void SdbusRemoteService::give_up(const std::string& name, RemoteCaller& caller) {
  if (caller.given_up) return;
  caller.given_up = true;
  caller.waiting.clear();
  caller.room = 0;
  gone_.push_back(name);
  due_.push_back(name);
}

void SdbusRemoteService::tell(const std::string& caller, const std::string& object,
                              const std::string& member, const RemoteArguments& arguments) {
  const auto known = callers_.find(caller);
  if (!session_ || known == callers_.end() || known->second.given_up) return;
  RemoteCaller& client = known->second;
  client.room += room_of(arguments);
  client.waiting.push_back({object, member, arguments});
  if (client.room > queue_bound) give_up(caller, client);
  if (processing_) return due_.push_back(caller);
  tell_next(caller, client);
  if (broken_ || client.given_up) return process_soon(Milliseconds{0});
  wait_for_bus();
}

void SdbusRemoteService::tell_next(const std::string& name, RemoteCaller& caller) {
  if (!caller.told.empty() || caller.waiting.empty()) return;
  const RemoteCaller::Telling next = std::move(caller.waiting.front());
  caller.waiting.pop_front();
  caller.room -= room_of(next.arguments);
  call(name, caller, next);
}

void SdbusRemoteService::tell_all(const std::string& name, RemoteCaller& caller) {
  for (const RemoteCaller::Telling& telling : std::exchange(caller.waiting, {})) {
    call(name, caller, telling);
  }
  caller.room = 0;
}

void SdbusRemoteService::call(const std::string& name, RemoteCaller& caller,
                              const RemoteCaller::Telling& telling) {
  if (broken_) return;
  try {
    auto told = std::make_unique<RemoteCaller::Told>();
    told->object = session_->object_of(name, telling.object);
    sdbus::MethodCall call = told->object->createMethodCall(client_interface, telling.member);
    for (const RemoteArgument& argument : telling.arguments) {
      append(call, argument, ground_.letters);
    }
    told->object->callMethod(
        call,
        [this, name, answer = told.get()](sdbus::MethodReply&, const sdbus::Error* error) {
          answered(name, *answer, error);
        },
        answer_limit);
    caller.told.push_back(std::move(told));
  } catch (const sdbus::Error& error) {
    broken_ = error.getMessage();
  }
}

void SdbusRemoteService::answered(const std::string& name, RemoteCaller::Told& told,
                                  const sdbus::Error* error) {
  told.over = true;
  due_.push_back(name);
  RemoteCaller& caller = callers_.at(name);
  if (error == nullptr || std::ranges::find(unreached, error->getName()) == unreached.end()) {
    caller.failures = 0;
  } else if (++caller.failures >= failures_bound) {
    give_up(name, caller);
  }
}

}  // namespace lineweir::platform

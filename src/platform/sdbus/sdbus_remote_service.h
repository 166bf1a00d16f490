#pragma once

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "letters/letters.h"
#include "platform/descriptor_watch.h"
#include "platform/event_loop.h"
#include "platform/poster.h"
#include "platform/remote_service.h"
#include "platform/sdbus/bus_session.h"
#include "platform/sdbus/remote_caller.h"
#include "platform/threaded/work_crew.h"

namespace lineweir::platform {

// What the service runs on. All outlive it.
struct RemoteServiceGround {
  EventLoop& loop;
  DescriptorWatch& watch;
  // Brings the connection, which is made on a thread of its own, to the loop.
  Poster& poster;
  // Of the texts.
  const Letters& letters;
};

// The objects /SerialInput and /CBServerClass of quorlink.Server on the bus. A bus that isn't
// there, has gone or has given the name to another is tried again, with growing pauses; all callers
// are gone then.
//
// A caller is given up, and told as gone, when his object doesn't answer, when too much waits for
// him, or when he calls too often. Whatever he calls fails then with the error `gone_error` until
// he registers with AddObjectReference.
class SdbusRemoteService final : public RemoteService {
 public:
  static constexpr const char* gone_error = "quorlink.Error.Gone";
  static constexpr std::size_t queue_bound = 64 * 1024;
  static constexpr std::size_t most_callers = 100;
  static constexpr Milliseconds answer_limit{5000};
  static constexpr int failures_bound = 2;
  static constexpr Milliseconds first_pause{500};
  static constexpr Milliseconds longest_pause{30'000};

  explicit SdbusRemoteService(RemoteServiceGround ground);
  ~SdbusRemoteService() override;
  SdbusRemoteService(const SdbusRemoteService&) = delete;
  SdbusRemoteService& operator=(const SdbusRemoteService&) = delete;

  // Whether the objects stand on the bus now, and if not, why: told at each change, and for the
  // first try.
  std::function<void(bool published, const std::string& why)> on_published;

  // Connects to the bus. The handlers are set before.
  void publish(RemoteBus bus);

  void tell(const std::string& caller, const std::string& object, const std::string& member,
            const RemoteArguments& arguments) override;

 private:
  struct Opening;
  using Callers = std::map<std::string, RemoteCaller>;

  void open();
  void opened(std::shared_ptr<BusSession> session, const std::string& why);
  // The bus can't be reached any more, or the name isn't this program's.
  void lose(const std::string& why);
  void try_again_later();

  void process();
  void process_soon(Milliseconds delay);
  void wait_for_bus();
  // What a message has left to do that can't be done while it is handled.
  void follow_up();
  void tell_gone();

  void called(const RemoteMember& member, sdbus::MethodCall call);
  void obey(const RemoteMember& member, const std::string& caller, sdbus::MethodCall& call);
  // Nothing where the caller is heard; otherwise what he is told.
  std::optional<sdbus::Error> refusal(const RemoteMember& member, const std::string& caller);
  void left(const std::string& caller);
  void give_up(const std::string& name, RemoteCaller& caller);

  // Of what waits for the caller the next one, if he has answered, or all of it.
  void tell_next(const std::string& name, RemoteCaller& caller);
  void tell_all(const std::string& name, RemoteCaller& caller);
  void call(const std::string& name, RemoteCaller& caller, const RemoteCaller::Telling& telling);
  void answered(const std::string& name, RemoteCaller::Told& told, const sdbus::Error* error);

  RemoteServiceGround ground_;
  RemoteBus bus_ = RemoteBus::Session;
  WorkCrew crew_;
  std::shared_ptr<Opening> opening_;
  std::shared_ptr<BusSession> session_;
  Callers callers_;
  std::vector<std::string> gone_;
  // Those who have something left to be done for them behind the message.
  std::vector<std::string> due_;
  // Why the session is no good, found while a message is handled.
  std::optional<std::string> broken_;
  bool processing_ = false;
  bool waits_ = false;
  bool waits_to_write_ = false;
  std::optional<EventLoop::CallId> next_process_;
  Milliseconds next_process_due_{0};
  std::optional<EventLoop::CallId> next_try_;
  Milliseconds pause_ = first_pause;
  std::optional<std::string> told_;
};

}  // namespace lineweir::platform

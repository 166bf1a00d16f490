#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "core/console.h"
#include "platform/qt/qt_client_socket.h"
#include "platform/qt/qt_event_loop.h"
#include "platform/qt/qt_system_clock.h"
#include "platform/scripted/scripted_platform.h"
#include "seat/seat_entrance.h"
#include "seat/simulated_person.h"

namespace lineweir::endurance {

// One of many consoles at a server, whose files are in its memory, and who sits there.
class CrowdSeat {
 public:
  enum class Work { None, Screen, Host };
  struct Place {
    seat::SeatLogin login;
    // Of the server's certificate, which is trusted.
    std::string fingerprint;
    int group = 1;
    Work work = Work::None;
    std::uint64_t seed = 1;
  };

  // The loop outlives the seat. It logs in by itself, and again after a cut.
  CrowdSeat(platform::QtEventLoop& loop, const Place& place);
  ~CrowdSeat();
  CrowdSeat(const CrowdSeat&) = delete;
  CrowdSeat& operator=(const CrowdSeat&) = delete;

  // Nobody works until `work`.
  void rest() { rests_ = true; }
  void work() { rests_ = false; }

  bool is_in() const { return entrance_.is_in() && console_.Lineweir.no_link.get().empty(); }
  // Of each line its letter and its caller's name, such as "S Ann".
  std::vector<std::string> rows();

 private:
  void look();

  platform::QtClientSocket socket_;
  platform::QtSystemClock clock_;
  platform::ScriptedPlatform workstation_;
  Console console_;
  seat::SeatEntrance entrance_;
  std::unique_ptr<seat::SimulatedPerson> person_;
  platform::EventLoop& loop_;
  platform::EventLoop::CallId next_look_ = 0;
  platform::Milliseconds linked_at_{0};
  bool sits_ = false;
  bool rests_ = false;
  bool is_looking_ = false;
};

}  // namespace lineweir::endurance

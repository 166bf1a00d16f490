#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "server/server_room.h"
#include "simulation/server_site.h"
#include "simulation/studio_people.h"

namespace lineweir::simulation {

struct StudioRunOptions {
  std::uint64_t seed = 1;
  Milliseconds bad_weather = std::chrono::minutes(6);
};

// A whole studio with its real server: 3 to 40 consoles with people at them, the exchange with its
// callers, a network that delays for up to a minute, splits, cuts and half-opens, a store that
// stalls and fails, seats that vanish and a server that loses its power, all by a seed. Then the
// weather turns fair and all hands rest: every console must show what the server knows, every call
// must be in the store once, and nothing may have gone to a group that it wasn't for.
class StudioRun {
 public:
  explicit StudioRun(const StudioRunOptions& options);
  ~StudioRun();

  void run();

  const std::string& transcript() const { return transcript_.text(); }
  const std::vector<std::string>& faults() const { return faults_; }
  std::size_t seats() const { return people_.seats().size(); }
  std::size_t calls() const { return calls_; }
  long rows_compared() const { return rows_compared_; }
  long frames() const { return site_.frames_watched(); }

 private:
  void befall();
  void heal_store_later();
  void tend();
  void pass(Milliseconds time);
  void begin_fair_weather();
  // Whether all have been settled for a while.
  bool comes_to_rest();
  bool is_settled();
  void look_at(Seat& seat);
  void end_all_calls();
  void check_calls();
  void fault(const std::string& what);

  StudioRunOptions options_;
  platform::VirtualEventLoop loop_;
  Transcript transcript_{loop_};
  exchange::Dice dice_;
  Network network_;
  ServerSite site_;
  StudioPeople people_{loop_, network_, transcript_};
  Milliseconds next_fate_{0};
  std::vector<std::string> faults_;
  std::size_t calls_ = 0;
  long rows_compared_ = 0;
};

}  // namespace lineweir::simulation

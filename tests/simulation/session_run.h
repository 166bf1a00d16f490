#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "simulation/scripted_server.h"
#include "simulation/seat.h"

namespace lineweir::simulation {

// One console and its server on a bad network, in virtual time and by a seed: the connection
// stalls, is refused, cut at any byte or cut unseen, the server answers late, in any order or
// never, and a user connects again by hand as soon as he is asked to, and goes from group to group.
// Whenever the link stands and nothing is on its way, the console must show what the server has
// last told it.
class SessionRun {
 public:
  explicit SessionRun(std::uint64_t seed);

  // Minutes of bad weather, then one of fair weather, at whose end the link must stand.
  void run(int minutes);

  const std::string& transcript() const { return transcript_.text(); }
  const std::vector<std::string>& faults() const { return faults_; }
  long comparisons() const { return comparisons_; }
  int frames_sent() const { return server_.frames_sent(); }

 private:
  void let_user_act();
  void look();
  void compare(const ToldState& told);
  void expect(std::string_view what, const std::string& shown, const std::string& told);
  void fault(const std::string& what);

  platform::VirtualEventLoop loop_;
  Transcript transcript_{loop_};
  exchange::Dice dice_;
  Network network_;
  ScriptedServer server_;
  Seat seat_;
  std::vector<std::string> faults_;
  std::size_t failures_seen_ = 0;
  long comparisons_ = 0;
};

}  // namespace lineweir::simulation

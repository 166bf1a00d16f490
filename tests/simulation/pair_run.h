#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "simulation/exchange_ledger.h"
#include "simulation/server_machine.h"
#include "simulation/studio_people.h"
#include "simulation/studio_told.h"
#include "simulation/takeover_witness.h"

namespace lineweir::simulation {

struct PairRunOptions {
  std::uint64_t seed = 1;
  Milliseconds bad_times = std::chrono::minutes(4);
};

// A studio of two servers over one store and one exchange, with people at consoles that know both
// addresses. All that can befall the servers does, by a seed: they are killed, stopped and cut off
// from the lease, the store, the exchange and consoles, in one direction or both; the store is away
// or slow, and clocks run wrong. Then all is mended, and once more a server falls in a studio at
// rest. Never may two servers serve at once, nor may anything be lost, doubled or told otherwise
// that could be kept.
class PairRun {
 public:
  explicit PairRun(const PairRunOptions& options);
  ~PairRun();

  void run();

  const std::string& transcript() const { return transcript_.text(); }
  const std::vector<std::string>& faults() const { return faults_; }
  std::size_t calls() const { return ledger_.calls(); }
  long leads() const { return leads_; }
  long frames() const { return witness_->frames(); }
  long compared() const { return witness_->compared(); }
  long rows_compared() const { return rows_compared_; }

 private:
  void build_machines();
  void look();
  void befall();
  void cut(const std::string& what, Cable& cable);
  void part_console(std::size_t seat);
  void harm_store();
  void later(Milliseconds longest, std::function<void()> mend);
  void mend_all();
  void pass(Milliseconds time);
  bool comes_to_rest();
  bool is_settled();
  ServerMachine* leader();
  ServerMachine& any_machine();
  void look_at_consoles();
  void look_at_takeover();
  void check_workers();
  void check_store();
  void fault(const std::string& what);

  PairRunOptions options_;
  platform::VirtualEventLoop loop_;
  Transcript transcript_{loop_};
  exchange::Dice dice_;
  Network network_;
  platform::LeaseOffice office_{loop_};
  platform::ScriptedStore store_{loop_};
  ExchangeRoom room_;
  ExchangeLedger ledger_;
  server::ServerOptions server_options_;
  // By how much the machines' clocks may differ.
  Milliseconds clocks_differ_;
  std::unique_ptr<TakeoverWitness> witness_;
  std::array<std::unique_ptr<ServerMachine>, 2> machines_;
  StudioPeople people_{loop_, network_, transcript_};
  Milliseconds next_fate_{0};
  Milliseconds store_well_from_{0};
  bool store_is_harmed_ = false;
  long leads_ = 0;
  // Of the next call, by consoles.
  long choices_ = 0;
  long rows_compared_ = 0;
  std::vector<std::string> faults_;
};

}  // namespace lineweir::simulation

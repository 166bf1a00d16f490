#pragma once

#include <array>
#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "simulation/exchange_ledger.h"
#include "simulation/server_machine.h"

namespace lineweir::simulation {

// Looks at the frames between consoles and the servers of one studio: only one server may serve at
// a time, and the next one must tell what the one before has told and could keep.
class TakeoverWitness {
 public:
  // All outlive it. What the clocks of two machines tell may differ by `tolerance`.
  TakeoverWitness(const ExchangeLedger& ledger, const platform::EventLoop& world,
                  Milliseconds tolerance);

  void sent(const ServerMachine& machine, const ServerPacket& packet);
  void received(const ServerPacket& packet);

  // Each with the time. Taken away by the call.
  std::vector<std::string> take_faults() { return std::exchange(faults_, {}); }
  // How often something that was told before a takeover was held against what is told behind it.
  long compared() const { return compared_; }
  long frames() const { return frames_; }

 private:
  static constexpr std::size_t lines = 10;

  // Something that a server has told.
  struct Kept {
    std::string text;
    platform::Epoch epoch = 0;
    // When it was first told.
    Milliseconds at{0};
    // What it hangs on, as it was then.
    std::string ground;
    bool changed_by_hand = false;
  };

  // What a text hangs on, as it is now: where that has changed the text may have changed with it.
  using Ground = std::function<std::string(const std::string& text)>;

  void tell(const std::string& what, std::optional<Kept>& kept, const ServerMachine& machine,
            const std::string& text, const Ground& ground);
  void look_at_clocks(const ServerMachine& machine, const ServerPacket& packet);
  void fault(const std::string& what);

  const ExchangeLedger& ledger_;
  const platform::EventLoop& world_;
  Milliseconds tolerance_;
  platform::Epoch highest_ = 0;
  std::array<std::optional<Kept>, lines> data_;
  std::optional<Kept> next_call_;
  std::optional<Kept> message_;
  std::vector<std::string> faults_;
  long compared_ = 0;
  long frames_ = 0;
};

}  // namespace lineweir::simulation

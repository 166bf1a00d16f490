#pragma once

#include <cstdint>

#include "exchange/caller_process.h"
#include "exchange/exchange.h"
#include "exchange/switchboard.h"
#include "platform/event_loop.h"

namespace lineweir::exchange {

struct SimulatedExchangeOptions {
  int line_count = 10;
  CallerOptions callers = {};
  std::uint64_t seed = 1;
};

// An exchange without telephones: it obeys at once, and callers come and go by chance or when they
// are told to. Nobody hangs up but the people outside and whoever drops them.
class SimulatedExchange final : public Exchange {
 public:
  // The loop outlives the exchange.
  SimulatedExchange(platform::EventLoop& loop, const SimulatedExchangeOptions& options);
  ~SimulatedExchange() override;
  SimulatedExchange(const SimulatedExchange&) = delete;
  SimulatedExchange& operator=(const SimulatedExchange&) = delete;

  int line_count() const override { return lines_.line_count(); }
  char letter(int line) const override { return lines_.letter(line); }
  bool is_reached() const override { return true; }
  void obey(std::string_view word) override;
  void take_to_position(int line, int position) override;
  bool arrive(int line, std::string number) override;
  bool leave(int line) override;

  // From now on nobody comes or goes by chance.
  void quieten();

 private:
  Moment now() const { return loop_.now() - began_; }
  void tell(const LineChanges& changes, const std::string& number);
  void live();
  void schedule_life();
  std::string number_of_a_caller();

  platform::EventLoop& loop_;
  Moment began_;
  Switchboard lines_;
  CallerProcess callers_;
  Dice dice_;
  bool is_quiet_ = false;
  platform::EventLoop::CallId next_life_ = 0;
};

}  // namespace lineweir::exchange

#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "exchange/simulated_exchange.h"
#include "simulation/network.h"
#include "simulation/server_cable.h"

namespace lineweir::simulation {

class ExchangeLink;

// The one exchange of a studio, to which several servers have their ways. Its callers come and go
// whether a server is there or not.
class ExchangeRoom {
 public:
  ExchangeRoom(platform::VirtualEventLoop& world,
               const exchange::SimulatedExchangeOptions& options);
  ExchangeRoom(const ExchangeRoom&) = delete;
  ExchangeRoom& operator=(const ExchangeRoom&) = delete;

  platform::VirtualEventLoop& world() { return world_; }
  exchange::SimulatedExchange& exchange() { return exchange_; }
  std::string letters() const;

  // Hears of every change; set by the owner.
  std::function<void(exchange::LineChange change, char before)> on_change;

 private:
  friend class ExchangeLink;

  platform::VirtualEventLoop& world_;
  exchange::SimulatedExchange exchange_;
  std::string letters_;
  std::vector<ExchangeLink*> links_;
};

// A server's way to it: asks for the letters of all lines at the start and each second, and is told
// of the changes between.
class ExchangeLink final : public exchange::Exchange {
 public:
  static constexpr Milliseconds asked_every{1000};
  static constexpr Milliseconds lost_after{2500};

  // `loop` is the server's process. `before_sending` runs before words go out, and may destroy the
  // link.
  ExchangeLink(ExchangeRoom& room, platform::EventLoop& loop, const Cable& cable,
               std::function<void()> before_sending);
  ~ExchangeLink() override;

  int line_count() const override { return static_cast<int>(letters_.size()); }
  char letter(int line) const override { return letters_[static_cast<std::size_t>(line)]; }
  bool is_reached() const override { return reached_; }
  void obey(std::string_view word) override;
  void take_to_position(int line, int position) override;
  bool arrive(int, std::string) override { return false; }
  bool leave(int) override { return false; }

 private:
  friend class ExchangeRoom;

  void ask();
  void hear(exchange::LineChange change, const std::string& number);
  void take(exchange::LineChange change, const std::string& number);
  void order(std::function<void(exchange::SimulatedExchange&)> work);
  void answered();
  void set_reached(bool reached);
  void later(Milliseconds delay, std::function<void()> call);
  void from_exchange(std::function<void()> call);

  ExchangeRoom& room_;
  platform::EventLoop& loop_;
  const Cable& cable_;
  std::function<void()> before_sending_;
  std::string letters_;
  bool reached_ = false;
  Milliseconds answered_at_{0};
  std::shared_ptr<bool> alive_ = std::make_shared<bool>(true);
};

}  // namespace lineweir::simulation

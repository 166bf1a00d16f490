#pragma once

#include "exchange/simulated_exchange.h"

namespace lineweir::server {

// The way from a server to an exchange that outlives it, as a real one does.
class Trunk final : public exchange::Exchange {
 public:
  // `watch` hears of each change before the server.
  explicit Trunk(exchange::SimulatedExchange& simulated,
                 std::function<void(exchange::LineChange)> watch = {})
      : exchange_(simulated), watch_(std::move(watch)) {
    exchange_.on_change = [this](exchange::LineChange change, const std::string& number) {
      if (watch_) watch_(change);
      if (on_change) on_change(change, number);
    };
  }
  ~Trunk() override { exchange_.on_change = nullptr; }

  int line_count() const override { return exchange_.line_count(); }
  char letter(int line) const override { return exchange_.letter(line); }
  bool is_reached() const override { return true; }
  void obey(std::string_view word) override { exchange_.obey(word); }
  void take_to_position(int line, int position) override {
    exchange_.take_to_position(line, position);
  }
  bool arrive(int line, std::string number) override { return exchange_.arrive(line, number); }
  bool leave(int line) override { return exchange_.leave(line); }

 private:
  exchange::SimulatedExchange& exchange_;
  std::function<void(exchange::LineChange)> watch_;
};

}  // namespace lineweir::server

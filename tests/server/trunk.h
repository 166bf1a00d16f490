#pragma once

#include <string>
#include <vector>

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
      if (on_change && told_all_) on_change(change, number);
    };
  }
  ~Trunk() override { exchange_.on_change = nullptr; }

  int line_count() const override { return exchange_.line_count(); }
  char letter(int line) const override { return told_all_ ? exchange_.letter(line) : 'F'; }
  bool is_reached() const override { return reached_; }
  bool has_told_all() const override { return told_all_; }
  void obey(std::string_view word) override {
    words.emplace_back(word);
    exchange_.obey(word);
  }
  void take_to_position(int line, int position) override {
    exchange_.take_to_position(line, position);
  }
  bool arrive(int line, std::string number) override { return exchange_.arrive(line, number); }
  bool leave(int line) override { return exchange_.leave(line); }

  // What the server has sent.
  std::vector<std::string> words;

  // The exchange isn't there, or is again. It tells its lines only behind that.
  void reach(bool reached) {
    reached_ = reached;
    if (!reached) told_all_ = false;
    if (on_reached) on_reached(reached);
  }
  void tell_all() {
    told_all_ = true;
    for (int line = 0; line < line_count(); ++line) {
      if (letter(line) != 'F' && on_change) on_change({line, letter(line)}, {});
    }
  }

 private:
  exchange::SimulatedExchange& exchange_;
  std::function<void(exchange::LineChange)> watch_;
  bool reached_ = true;
  bool told_all_ = true;
};

}  // namespace lineweir::server

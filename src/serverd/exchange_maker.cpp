#include "serverd/exchange_maker.h"

#include <cmath>
#include <string_view>

#include "exchange/box_exchange.h"
#include "exchange/simulated_exchange.h"
#include "platform/asio/serial_device.h"
#include "serverd/group_settings.h"

namespace lineweir::serverd {

namespace {

exchange::CallerOptions callers_of(double calls_per_minute) {
  // Who is made to call by hand stays until he is made to leave.
  if (calls_per_minute <= 0) return {.call_every = {}, .ring_patience = {}, .hold_patience = {}};
  constexpr double minute = 60'000;
  return {.call_every = exchange::Moment(std::llround(minute / calls_per_minute))};
}

// Opens the port of a box, and logs why it can't be opened: once for each reason, since it is tried
// again and again.
class PortOpener {
 public:
  PortOpener(platform::AsioLoop& loop, std::string device, std::string studio,
             const server::ServerLog& log)
      : loop_(loop), device_(std::move(device)), studio_(std::move(studio)), log_(log) {}

  std::unique_ptr<platform::Connection> operator()() {
    try {
      auto port = platform::open_serial_device(loop_, device_);
      told_.clear();
      return port;
    } catch (const std::exception& error) {
      if (told_ != error.what()) {
        log_(server::LogLevel::Error,
             studio_ + ": " + error.what() +
                 "; look whether the box is plugged in, and whether the server's account may use "
                 "the device (on Debian it must be in the group dialout)");
      }
      told_ = error.what();
      return nullptr;
    }
  }

 private:
  platform::AsioLoop& loop_;
  std::string device_;
  std::string studio_;
  const server::ServerLog& log_;
  std::string told_;
};

}  // namespace

std::unique_ptr<exchange::Exchange> make_exchange(const server::GroupOptions& group,
                                                  platform::AsioLoop& loop,
                                                  platform::RandomNumbers& random,
                                                  const server::ServerLog& log) {
  if (group.exchange.starts_with(exchange_at_box)) {
    return std::make_unique<exchange::BoxExchange>(
        loop, group.lines,
        PortOpener(loop, group.exchange.substr(exchange_at_box.size()), group.name, log));
  }
  constexpr double seeds = 1ULL << 53U;
  return std::make_unique<exchange::SimulatedExchange>(
      loop, exchange::SimulatedExchangeOptions{
                .line_count = group.lines,
                .callers = callers_of(group.calls_per_minute),
                .seed = static_cast<std::uint64_t>(random.next() * seeds)});
}

}  // namespace lineweir::serverd

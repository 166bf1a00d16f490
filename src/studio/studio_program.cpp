#include "studio/studio_program.h"

#include <poll.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <limits>
#include <optional>
#include <ostream>
#include <string>

#include "studio/boxed_exchange.h"
#include "studio/device_link.h"
#include "studio/output.h"
#include "studio/pseudo_terminal.h"
#include "studio/stop_signal.h"
#include "studio/studio_log.h"

namespace lineweir::studio {
namespace {

using Clock = std::chrono::steady_clock;

Moment since(Clock::time_point start) {
  return std::chrono::duration_cast<Moment>(Clock::now() - start);
}

// What poll() is to wait: -1 is for ever.
int wait_until(Moment due, Moment now) {
  if (due == never) return -1;
  const Moment::rep wait = std::max(due - now, Moment{0}).count();
  return static_cast<int>(std::min<Moment::rep>(wait, std::numeric_limits<int>::max()));
}

}  // namespace

void run_studio(const StudioOptions& options, std::ostream& out) {
  const StopSignal stop;
  PseudoTerminal terminal;
  std::optional<DeviceLink> link;
  if (!options.link.empty()) link.emplace(options.link, terminal.device());
  StudioLog log(options.log, out);
  out << "device " << terminal.device() << std::endl;

  const Clock::time_point start = Clock::now();
  BoxedExchange exchange(options.exchange);
  std::array<pollfd, 2> watched{
      {{terminal.descriptor(), POLLIN, 0}, {stop.descriptor(), POLLIN, 0}}};
  while (!exchange.is_over() && (watched[1].revents & POLLIN) == 0) {
    poll(watched.data(), watched.size(), wait_until(exchange.next_due(), since(start)));
    const Moment now = since(start);
    exchange.receive(terminal.read(), now);
    pass_output(exchange, terminal, log, now);
  }
}

}  // namespace lineweir::studio

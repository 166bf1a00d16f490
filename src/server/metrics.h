#pragma once

#include <string>

#include "server/context.h"
#include "server/login_desk.h"
#include "server/seat_book.h"

namespace lineweir::server {

struct QueueFigures {
  std::size_t connections = 0;
  std::size_t queued_bytes = 0;
  std::size_t longest_queue = 0;
};

// The figures in the text form that Prometheus reads.
std::string metrics_text(const Context& context, const SeatBook& seats, const Groups& groups,
                         const LoginDesk& logins, const QueueFigures& queues);

}  // namespace lineweir::server

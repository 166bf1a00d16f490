#pragma once

#include <functional>
#include <memory>

#include "exchange/exchange.h"
#include "platform/asio/asio_loop.h"
#include "platform/random_numbers.h"
#include "server/server_log.h"
#include "server/server_options.h"

namespace lineweir::serverd {

// Makes the exchange that a group's options name. All outlive what is made.
std::unique_ptr<exchange::Exchange> make_exchange(const server::GroupOptions& group,
                                                  platform::AsioLoop& loop,
                                                  platform::RandomNumbers& random,
                                                  const server::ServerLog& log);

}  // namespace lineweir::serverd

#pragma once

#include "letters/letters.h"
#include "platform/event_loop.h"
#include "platform/wall_clock.h"
#include "server/audit.h"
#include "server/call_book.h"
#include "server/caller_memory.h"
#include "server/figures.h"
#include "server/server_log.h"
#include "server/store_outbox.h"

namespace lineweir::server {

// What the parts of a server share. All outlive them.
struct Context {
  platform::EventLoop& loop;
  const platform::WallClock& clock;
  const Letters& letters;
  const ServerLog& log;
  Figures& figures;
  StoreOutbox& outbox;
  Audit& audit;
  CallBook& calls;
  CallerMemory& memory;
};

}  // namespace lineweir::server

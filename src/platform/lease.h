#pragma once

#include <cstdint>
#include <functional>
#include <optional>

#include "platform/event_loop.h"

namespace lineweir::platform {

// Counts the holders of a lease: each has a larger one than all before it.
using Epoch = std::int64_t;

// So long behind the moment in which a proof was asked for, and no longer, its holder may serve.
inline constexpr Milliseconds proof_holds{1000};

// The right to serve some studios, which one process of all that want it has at a time.
class Lease {
 public:
  struct Grant {
    Epoch epoch = 0;
    // The holder before may still rely on its last proof for so long.
    Milliseconds serve_after{0};
  };

  virtual ~Lease() = default;

  // Tries once. Nothing is told where another one has it, and where nobody can be asked. The next
  // is asked for only behind the answer, which comes within a bounded time.
  virtual void take(std::function<void(std::optional<Grant> grant)> done) = 0;

  // Whether this one still has it; false also where nobody can be asked. One that can't be asked
  // for 2 seconds has it no more.
  virtual void prove(std::function<void(bool held)> done) = 0;

  // The next one may serve at once.
  virtual void give_back() = 0;
};

}  // namespace lineweir::platform

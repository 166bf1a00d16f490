#pragma once

#include "platform/transfer/whole_store.h"

namespace lineweir::fuzz {

// A server begins with what a restored store holds while calls stand, and works for a while with a
// console on it. Aborts where it doesn't.
void serve_restored(const platform::StorePortion& records);

}  // namespace lineweir::fuzz

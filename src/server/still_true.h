#pragma once

#include <vector>

#include "platform/store_journal.h"

namespace lineweir::server {

// What of a journal is still to be written by the server of that epoch. All of it where no other
// one has led meanwhile. Otherwise only what has happened and ended: events, and calls that were
// over; what others may have changed since is theirs.
std::vector<platform::StoreChange> still_true(platform::StoreJournal::Left left,
                                              platform::Epoch epoch);

}  // namespace lineweir::server

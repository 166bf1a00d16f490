#pragma once

#include <cstdint>
#include <set>
#include <vector>

#include "platform/store_journal.h"

namespace lineweir::server {

// Whether no other server has led between the one that has left the journal and that of the epoch.
bool has_led_alone(const platform::StoreJournal::Left& left, platform::Epoch epoch);

// The store's call was only closed behind what the other server has kept of it.
bool was_only_closed(const platform::CallRecord& stored, const platform::CallRecord& left);

// What of a journal is still to be written by the server of that epoch. All of it where no other
// one has led meanwhile. Otherwise only what has happened and ended: events, and calls that were
// over and that the store doesn't know. What others may have changed since is theirs, and so is a
// call that stood for them, since the line may have rung again.
std::vector<platform::StoreChange> still_true(platform::StoreJournal::Left left,
                                              platform::Epoch epoch,
                                              const std::set<std::int64_t>& known_calls = {});

}  // namespace lineweir::server

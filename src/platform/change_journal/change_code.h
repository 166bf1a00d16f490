#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "platform/store_records.h"

namespace lineweir::platform {

// A change of the store as bytes: a CBOR array whose first element tells the kind ("account",
// "removal", "password", "lock", "rights", "seen", "profile", "call", "group", "flagged", "place",
// "event") and whose others are the fields in the order of store_records.h. Texts are CBOR texts of
// any bytes; the rights by group are an array of arrays of two, a call's steps one of arrays of
// three, a moment its number of milliseconds.
std::string encoded(const StoreChange& change);

// Nothing where the bytes are no such change, whatever they are.
std::optional<StoreChange> decoded(std::string_view bytes);

}  // namespace lineweir::platform

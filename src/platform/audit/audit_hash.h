#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "platform/store_records.h"

namespace lineweir::platform {

// The hash of an audit's entry: SHA-256, 64 digits of lower-case hexadecimal, over these bytes, one
// behind the other:
//
//   text    "lineweir audit 1"
//   text    the hash of the entry before, 64 digits; empty for the first entry
//   number  the entry's number
//   text    the event's id
//   number  its moment, milliseconds since the beginning of 1970, UTC
//   text    who
//   text    what was done
//   text    the rest in words
//
// A number is eight bytes, the highest first, in two's complement. A text is its length in bytes as
// a number, then its bytes as they stand. So no two entries give the same bytes.
std::string audit_hash(std::string_view previous_hash, std::int64_t number,
                       const AuditEvent& event);

}  // namespace lineweir::platform

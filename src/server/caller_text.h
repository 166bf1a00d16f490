#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "server/own_names.h"
#include "wire/server_packet_codec.h"

namespace lineweir::server {

// The caller data of a buffer as they are passed on: control characters are blanks, and no text is
// longer than its field, which has more room than a console's entry. The data of twenty lines and
// the longest message have room together in what may wait for a seat. What is missing is empty.
CallerDetails clean_caller_data(std::string_view buffer);
// The same of data that come from a store, which an operator or a restored backup may have changed.
CallerDetails clean_caller_data(CallerDetails data);

// The message of a buffer as it is passed on. Nothing for a buffer that holds none.
std::optional<std::string> clean_message(std::string_view buffer);

// Without control characters, and at most so long.
std::string clean_name(std::string_view text, std::size_t longest);

}  // namespace lineweir::server

#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "exchange/studio_event.h"
#include "studio/exchange_names.h"

namespace lineweir::studio {

// A script tells what happens and when, one event a line:
//
//   SECONDS call LINE | hangup LINE | busy LINE | idle LINE
//   SECONDS set LINE LETTER
//   SECONDS word WORD
//   SECONDS quit
//
// Words are parted by blanks or tabs. Lines that are empty or begin with # are skipped. The order
// is that of the times, and among equal times that of the file.
//
// Gives nothing on the first line that is not understood, and says "NAME:LINE: why" in `error`.
std::optional<std::vector<TimedEvent>> parse_script(std::string_view text, std::string_view name,
                                                    int line_count, std::string& error);

// The same from a file; `error` also tells of one that can't be read.
std::optional<std::vector<TimedEvent>> read_script(const std::string& path, int line_count,
                                                   std::string& error);

}  // namespace lineweir::studio
